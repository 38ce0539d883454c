#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "korelpre/headers/headerimage.h"
#include "lib_base/stringz.h"

namespace precomp {

class tXChgArray;
struct tSharedState;

/// Watches how a header is read and makes an image of it.
class tHeaderRecorder {
 public:
  /// From now on the processors that share this state report here what they do, until this object
  /// goes. `depth` is that of the includer. The contents of files are hashed only when the image is
  /// to be saved.
  tHeaderRecorder(tSharedState& shared, int depth, bool hashes);
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

  tSharedState& shared_;
  int depth_;
  bool hashes_;
  bool spoilt_ = false;
  int filesBefore_;
  std::int64_t bytesBefore_;
  std::deque<tString> texts_;  // what the notes refer to
  tHeaderNotes notes_;
  std::unordered_set<std::string> defined_;  // by the header itself
  std::unordered_set<std::string> testedNames_;
  std::vector<const tBaseXChg*> arrived_;
};

}  // namespace precomp
