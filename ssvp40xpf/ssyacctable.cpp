// An image is checked completely before it is used: the positions of the rows and productions,
// every target state, production, token and nonterminal. It is then indexed into two arrays for
// direct lookup: action words by state and token, target states by state and nonterminal. Only
// tokens that occur get a column, so the arrays fit into the CPU cache.
#include "ssvp40xpf/ssyacctable.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>
#include <cstring>
#include <memory>

static_assert(std::endian::native == std::endian::little, "table images are little-endian");

namespace {

constexpr std::size_t kLargestArray = std::size_t{1} << 24;  // entries

bool isMagic(std::uint32_t word) {
  return word == sstable::kYaccMagic || word == 0 || word == 1;  // smaller ones are older versions
}

/// Converts a byte offset to a word index; SIZE_MAX unless `words` words from there lie inside an
/// image of `total` words.
std::size_t wordIndex(std::uint32_t offset, std::size_t words, std::size_t total) {
  const std::size_t index = offset / sstable::kWordSize;
  if (offset % sstable::kWordSize != 0) return SIZE_MAX;
  return index <= total && words <= total - index ? index : SIZE_MAX;
}

}  // namespace

SSYaccTable::SSYaccTable(const void* image, std::size_t size, const char* name)
    : SSObject(ssCorrelator("SSYT")), name_(name) {
  load(image, size);
}

SSYaccTable::SSYaccTable(const char* path) : SSObject(ssCorrelator("SSYT")), name_(path) {
  readFile(path);
}

void SSYaccTable::readFile(const char* path) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path, "rb"), std::fclose);
  if (!file) return raise(SSErrorYaccOpen, path);
  std::vector<char> image;
  std::array<char, 4096> piece;
  while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), file.get())) {
    image.insert(image.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(count));
  }
  load(image.data(), image.size());
}

void SSYaccTable::load(const void* image, std::size_t size) {
  if (size % sstable::kWordSize == 0) {
    words_.resize(size / sstable::kWordSize);
    if (size != 0) std::memcpy(words_.data(), image, size);
    if (readImage()) return;
  }
  rows_.clear();
  productions_.clear();
  raise(SSErrorYaccTable, name_.c_str());
}

bool SSYaccTable::readImage() {
  if (words_.size() < sstable::kYaccRowIndex || !isMagic(words_[sstable::kYaccHeaderMagic])) {
    return false;
  }
  const bool hasAutomata = (words_[sstable::kYaccCounts] >> 16) != 0;
  if (hasAutomata || !readProductions() || !readRows() || !assignColumns()) return false;
  actions_.assign(rows_.size() * actionColumns_, 0);
  gotos_.assign(rows_.size() * gotoColumns_, kNoGoto);
  for (std::size_t state = 0; state < rows_.size(); ++state) indexRow(state);
  return true;
}

bool SSYaccTable::readProductions() {
  const std::size_t count = words_[sstable::kYaccCounts] & 0xFFFF;
  const std::size_t at = wordIndex(words_[sstable::kYaccProductions], 2 * count, words_.size());
  if (at == SIZE_MAX) return false;
  productions_.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const SSYaccProduction production{words_[at + 2 * i], words_[at + 2 * i + 1]};
    const bool isStart = i == 0 && production.left == 0;
    if (!isStart && production.left - sstable::kFirstNonterminal > kLargestSymbol) return false;
    productions_.push_back(production);
  }
  return true;
}

bool SSYaccTable::readRows() {
  const std::size_t total = words_.size();
  const std::size_t count = words_[sstable::kYaccStateCount];
  if (count == 0 || count >= kNoGoto || count > total - sstable::kYaccRowIndex ||
      wordIndex(words_[sstable::kYaccFirstRow], sstable::kRowPairs, total) == SIZE_MAX) {
    return false;
  }
  for (std::size_t state = 0; state < count; ++state) {
    const std::size_t row =
        wordIndex(words_[sstable::kYaccRowIndex + state], sstable::kRowPairs, total);
    if (row == SIZE_MAX) return false;
    rows_.push_back(row);
  }
  std::vector<bool> checked(total);
  for (const std::size_t row : rows_) {
    if (!checked[row] && !rowIsSound(row)) return false;
    checked[row] = true;
  }
  return true;
}

bool SSYaccTable::rowIsSound(std::size_t row) const {
  const std::uint32_t flags = words_[row + sstable::kRowFlags];
  const std::uint64_t gotos = words_[row + sstable::kRowGotoCount];
  const std::uint64_t actions = words_[row + sstable::kRowActionCount];
  const bool hasErrorEntry = (flags & sstable::kRowErrorEntry) != 0;
  const std::uint64_t pairs = gotos + actions + (hasErrorEntry ? 1 : 0);
  const std::size_t first = row + sstable::kRowPairs;
  if (2 * pairs > words_.size() - first) return false;
  if ((flags & sstable::kRowEmpty) != 0 && pairs != 0) return false;
  const std::uint32_t* pair = words_.data() + first;
  for (std::uint64_t i = 0; i < actions; ++i, pair += 2) {
    if (!actionIsSound(pair[0], pair[1])) return false;
  }
  for (std::uint64_t i = 0; i < gotos; ++i, pair += 2) {
    if (!gotoIsSound(pair[0], pair[1])) return false;
  }
  return !hasErrorEntry || (pair[0] & sstable::kActionOperand) < rows_.size();
}

bool SSYaccTable::actionIsSound(std::uint32_t word, std::uint32_t token) const {
  if (token > kLargestSymbol && token != sstable::kTokenEof && token != sstable::kTokenError) {
    return false;
  }
  const std::uint32_t operand = word & sstable::kActionOperand;
  switch (word & ~sstable::kActionOperand) {
    case 0:
    case sstable::kActionAccept:
      return true;
    case sstable::kActionShift:
      return operand < rows_.size();
    case sstable::kActionReduce:
      return operand < productions_.size();
    default:
      return false;
  }
}

bool SSYaccTable::gotoIsSound(std::uint32_t word, std::uint32_t nonterminal) const {
  return (word & sstable::kActionOperand) < rows_.size() &&
         nonterminal - sstable::kFirstNonterminal <= kLargestSymbol;
}

bool SSYaccTable::assignColumns() {
  std::vector<bool> counted(words_.size());
  std::size_t longestActions = 0;
  std::size_t longestGotos = 0;
  actionColumns_ = 1;
  for (const std::size_t row : rows_) {
    if (counted[row]) continue;
    counted[row] = true;
    const std::size_t actions = words_[row + sstable::kRowActionCount];
    const std::size_t gotos = words_[row + sstable::kRowGotoCount];
    longestActions = std::max(longestActions, actions);
    longestGotos = std::max(longestGotos, gotos);
    const std::uint32_t* pair = words_.data() + row + sstable::kRowPairs;
    for (std::size_t i = 0; i < actions; ++i, pair += 2) {
      const std::size_t at = pair[1] + 2u;
      if (at >= columns_.size()) columns_.resize(at + 1);
      if (columns_[at] == 0) columns_[at] = static_cast<std::uint16_t>(actionColumns_++);
    }
    for (std::size_t i = 0; i < gotos; ++i, pair += 2) {
      gotoColumns_ = std::max<std::size_t>(gotoColumns_, pair[1] - sstable::kFirstNonterminal + 1);
    }
  }
  // A row with more pairs than there are symbols only repeats symbols.
  return longestActions <= actionColumns_ && longestGotos <= gotoColumns_ &&
         rows_.size() * actionColumns_ <= kLargestArray &&
         rows_.size() * gotoColumns_ <= kLargestArray;
}

void SSYaccTable::indexRow(std::size_t state) {
  const std::size_t row = rows_[state];
  const std::uint32_t actions = words_[row + sstable::kRowActionCount];
  const std::uint32_t gotos = words_[row + sstable::kRowGotoCount];
  // Of several pairs for one symbol the first wins, so they are entered in reverse order.
  const std::uint32_t* const pairs = words_.data() + row + sstable::kRowPairs;
  for (std::size_t i = actions; i-- != 0;) {
    const bool isError = (pairs[2 * i] & ~sstable::kActionOperand) == 0;
    actions_[state * actionColumns_ + column(pairs[2 * i + 1])] = isError ? 0 : pairs[2 * i];
  }
  const std::uint32_t* const targets = pairs + 2 * std::size_t{actions};
  for (std::size_t i = gotos; i-- != 0;) {
    gotos_[state * gotoColumns_ + (targets[2 * i + 1] - sstable::kFirstNonterminal)] =
        static_cast<std::uint16_t>(targets[2 * i] & sstable::kActionOperand);
  }
}

std::uint32_t SSYaccTable::errorEntry(unsigned state) const {
  if ((rowFlags(state) & sstable::kRowErrorEntry) == 0) return sstable::kNone;
  const std::size_t pairs =
      std::size_t{actionCount(state)} + words_[rows_[state] + sstable::kRowGotoCount];
  return words_[rows_[state] + sstable::kRowPairs + 2 * pairs] & sstable::kActionOperand;
}
