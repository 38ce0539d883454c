#pragma once

#include <bitset>
#include <cstddef>
#include <deque>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "korelpre/lint/findings.h"

namespace precomp {

/// Finds out by the texts of a program whether what a header defines may be used outside of it and
/// of what it includes. Whatever is not certain counts as used.
class tHeaderUse {
 public:
  /// The files must outlive this object.
  explicit tHeaderUse(const std::deque<tLintedFile>& files);

  /// The file is needed whatever it defines.
  void addNeeded(const std::string& name);
  void addInclude(const std::string& includer, const std::string& included);
  /// To be called once, ahead of isNeeded().
  void readTexts();
  bool isNeeded(const std::string& name) const;

 private:
  /// The files that have a key, and the file that was seen to use it last.
  struct tOwners {
    std::vector<std::size_t> files;
    std::size_t user = std::string_view::npos;
  };

  void learnKeys(std::size_t file);
  void addKey(std::string_view key, bool abbreviates, std::size_t file);
  void readWords(std::size_t file);
  void take(std::string_view word, std::size_t file);
  std::set<std::size_t> reachedFrom(std::size_t file) const;

  const std::deque<tLintedFile>& files_;
  std::unordered_map<std::string, std::size_t> byName_;
  std::vector<bool> needed_;
  std::vector<std::set<std::size_t>> included_;
  std::bitset<65536> gate_;                             // by the first two bytes of keys
  std::unordered_map<std::string, tOwners> keys_;       // folded
  std::unordered_map<std::string, tOwners> starts_;     // of keys that may be abbreviated
  std::set<std::pair<std::size_t, std::size_t>> uses_;  // the owner of a key, and who uses it
};

}  // namespace precomp
