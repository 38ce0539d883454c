#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "korelpre/headers/headerimage.h"
#include "korelpre/headers/includecount.h"
#include "lib_base/stringz.h"

namespace precomp {

class tRuleSet;
class tXChgArray;

/// Watches how a header is read and makes an image of it.
class tHeaderRecorder {
 public:
  struct tSettings {
    int depth = 0;        // of the includer
    bool hashes = false;  // contents of files are hashed, since the image is to be saved
  };
  /// Until this object goes, whoever looks into `slot` finds it there and reports what it does.
  /// `included` counts on meanwhile. All must outlive this object.
  tHeaderRecorder(tHeaderRecorder*& slot, const tRuleSet& rules, const tIncludeCount& included,
                  tSettings settings);
  ~tHeaderRecorder();
  tHeaderRecorder(const tHeaderRecorder&) = delete;
  tHeaderRecorder& operator=(const tHeaderRecorder&) = delete;

  void fileRead(const tString& requested, const tString& path, const tString& resolved,
                std::string_view text, int depth);
  /// A conditional asked for a name.
  void tested(std::string_view name, bool defined);
  /// A #define is about to enter its rule, beside `known` ones of that name.
  void defining(std::string_view name, int known);
  void ruleEntered(const tBaseXChg* rule) { arrived_.push_back(rule); }
  /// Something happened that an image cannot tell of.
  void spoil() { spoilt_ = true; }

  /// Including the header writes this marker; they come in order.
  void marker(int line, std::string_view name);
  /// The image of what has been read, with or without what is needed to fill whole tables with it.
  /// Null when the header cannot be told by an image.
  std::shared_ptr<const tHeaderImage> finish(const std::unordered_set<std::string>& includedNames,
                                             bool wholeTables);

 private:
  std::vector<const tBaseXChg*> rulesOf(const tXChgArray& table) const;

  tHeaderRecorder*& slot_;
  const tRuleSet& rules_;
  const tIncludeCount& included_;
  const tIncludeCount before_;
  const tSettings settings_;
  bool spoilt_ = false;
  std::deque<tString> texts_;  // what the notes refer to
  tHeaderNotes notes_;
  std::unordered_set<std::string> defined_;  // by the header itself
  std::unordered_set<std::string> testedNames_;
  std::vector<const tBaseXChg*> arrived_;
};

}  // namespace precomp
