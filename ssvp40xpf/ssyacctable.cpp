// An image is checked completely before it is used: the positions of the rows and productions,
// every target state, production, token and nonterminal. It is then laid out as two arrays for
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

SSYaccTable::SSYaccTable(const SSYaccIndex& index, const char* name)
    : SSObject(ssCorrelator("SSYT")), name_(name), index_(index) {}

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
  index_ = {};
  raise(SSErrorYaccTable, name_.c_str());
}

bool SSYaccTable::readImage() {
  if (words_.size() < sstable::kYaccRowIndex || !isMagic(words_[sstable::kYaccHeaderMagic])) {
    return false;
  }
  index_.words = words_.data();
  const bool hasAutomata = (words_[sstable::kYaccCounts] >> 16) != 0;
  if (hasAutomata || !readProductions() || !readRows() || !assignColumns()) return false;
  layOut();
  return true;
}

bool SSYaccTable::readProductions() {
  const std::size_t count = words_[sstable::kYaccCounts] & 0xFFFF;
  const std::size_t at = wordIndex(words_[sstable::kYaccProductions], 2 * count, words_.size());
  if (at == SIZE_MAX) return false;
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t left = words_[at + 2 * i + 1];
    const bool isStart = i == 0 && left == 0;
    if (!isStart && left - sstable::kFirstNonterminal > kLargestSymbol) return false;
  }
  index_.productions = words_.data() + at;
  return true;
}

bool SSYaccTable::readRows() {
  const std::size_t total = words_.size();
  const std::size_t count = words_[sstable::kYaccStateCount];
  if (count == 0 || count >= sstable::kNoState || count > total - sstable::kYaccRowIndex ||
      wordIndex(words_[sstable::kYaccFirstRow], sstable::kRowPairs, total) == SIZE_MAX) {
    return false;
  }
  index_.states = count;
  std::vector<bool> checked(total);
  for (std::size_t state = 0; state < count; ++state) {
    const std::size_t at =
        wordIndex(words_[sstable::kYaccRowIndex + state], sstable::kRowPairs, total);
    if (at == SIZE_MAX || (!checked[at] && !rowIsSound(at))) return false;
    checked[at] = true;
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
  return !hasErrorEntry || (pair[0] & sstable::kActionOperand) < index_.states;
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
      return operand < index_.states;
    case sstable::kActionReduce:
      return operand < (words_[sstable::kYaccCounts] & 0xFFFF);
    default:
      return false;
  }
}

bool SSYaccTable::gotoIsSound(std::uint32_t word, std::uint32_t nonterminal) const {
  return (word & sstable::kActionOperand) < index_.states &&
         nonterminal - sstable::kFirstNonterminal <= kLargestSymbol;
}

bool SSYaccTable::assignColumns() {
  std::vector<bool> counted(words_.size());
  std::size_t longestActions = 0;
  std::size_t longestGotos = 0;
  index_.actionColumns = 1;
  for (std::size_t state = 0; state < index_.states; ++state) {
    const std::size_t at = row(state);
    if (counted[at]) continue;
    counted[at] = true;
    const std::size_t actions = words_[at + sstable::kRowActionCount];
    const std::size_t gotos = words_[at + sstable::kRowGotoCount];
    longestActions = std::max(longestActions, actions);
    longestGotos = std::max(longestGotos, gotos);
    const std::uint32_t* pair = words_.data() + at + sstable::kRowPairs;
    for (std::size_t i = 0; i < actions; ++i, pair += 2) {
      const std::size_t symbol = pair[1] + 2u;
      if (symbol >= columns_.size()) columns_.resize(symbol + 1);
      if (columns_[symbol] == 0) {
        columns_[symbol] = static_cast<std::uint16_t>(index_.actionColumns++);
      }
    }
    for (std::size_t i = 0; i < gotos; ++i, pair += 2) {
      index_.gotoColumns =
          std::max<std::size_t>(index_.gotoColumns, pair[1] - sstable::kFirstNonterminal + 1);
    }
  }
  // A row with more pairs than there are symbols only repeats symbols.
  return longestActions <= index_.actionColumns && longestGotos <= index_.gotoColumns &&
         index_.states * index_.actionColumns <= kLargestArray &&
         index_.states * index_.gotoColumns <= kLargestArray;
}

void SSYaccTable::layOut() {
  actions_.assign(index_.states * index_.actionColumns, 0);
  gotos_.assign(index_.states * index_.gotoColumns, sstable::kNoState);
  index_.columns = columns_.data();
  index_.symbols = columns_.size();
  index_.actions = actions_.data();
  index_.gotos = gotos_.data();
  for (std::size_t state = 0; state < index_.states; ++state) layOutRow(state);
}

void SSYaccTable::layOutRow(std::size_t state) {
  const std::size_t at = row(state);
  const std::uint32_t actions = words_[at + sstable::kRowActionCount];
  const std::uint32_t gotos = words_[at + sstable::kRowGotoCount];
  // Of several pairs for one symbol the first wins, so they are entered in reverse order.
  const std::uint32_t* const pairs = words_.data() + at + sstable::kRowPairs;
  for (std::size_t i = actions; i-- != 0;) {
    const bool isError = (pairs[2 * i] & ~sstable::kActionOperand) == 0;
    actions_[state * index_.actionColumns + column(pairs[2 * i + 1])] = isError ? 0 : pairs[2 * i];
  }
  const std::uint32_t* const targets = pairs + 2 * std::size_t{actions};
  for (std::size_t i = gotos; i-- != 0;) {
    gotos_[state * index_.gotoColumns + (targets[2 * i + 1] - sstable::kFirstNonterminal)] =
        static_cast<std::uint16_t>(targets[2 * i] & sstable::kActionOperand);
  }
}

std::uint32_t SSYaccTable::errorEntry(unsigned state) const {
  if ((rowFlags(state) & sstable::kRowErrorEntry) == 0) return sstable::kNone;
  const std::size_t at = row(state);
  const std::size_t pairs =
      std::size_t{word(at + sstable::kRowActionCount)} + word(at + sstable::kRowGotoCount);
  return word(at + sstable::kRowPairs + 2 * pairs) & sstable::kActionOperand;
}
