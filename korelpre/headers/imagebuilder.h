#pragma once

#include <memory>
#include <string>
#include <vector>

#include "korelpre/headers/headerimage.h"
#include "korelpre/rules/rulestream.h"

namespace precomp {

class tXChgArray;

/// Puts an image together.
class tImageBuilder {
 public:
  /// Adds a table, of which the image holds `rules` in this order. With `whole` set these are all
  /// that the table would hold without those of other headers. Call once for each, in the order of
  /// tHeaderImage::eTable.
  void addTable(const tXChgArray& table, std::vector<const tBaseXChg*> rules, bool whole);
  /// Null when something is too large for an image.
  std::shared_ptr<const tHeaderImage> finish(const tHeaderNotes& notes);

 private:
  struct tTable {
    const tXChgArray* table;
    std::vector<const tBaseXChg*> rules;
    bool whole;
  };

  void place(tImageTable& place, const tTable& table);
  void fillRules(char* image, const tImageTable& place, const tTable& table, tPCHStream& bodies);
  void fillOrder(char* image, const tImageTable& place, const tTable& table);
  void fillGates(char* image, const tImageTable& place, const tTable& table);
  void fillNames(char* image, const tImageTable& place, const tTable& table);
  std::uint32_t take(std::size_t bytes);

  std::vector<tTable> tables_;
  std::size_t size_ = 0;
  bool fits_ = true;
};

}  // namespace precomp
