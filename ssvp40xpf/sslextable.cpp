// A table is checked completely before any of it is used: block sizes, the positions of the records
// and of every row, the order of the ranges in a row, every next state and every list index. It is
// then laid out: for each state, the next state on each of the 256 byte codes; for each final
// state, whether a text leading there can contain a line feed (most cannot, so their lexemes need
// no line counting). Rows shared by several states are checked once.
#include "ssvp40xpf/sslextable.h"

#include <sys/stat.h>

#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

#include "ssvp40xpf/sstableformat.h"

static_assert(std::endian::native == std::endian::little, "table images are little-endian");

namespace {

constexpr unsigned char kLineFeed = 10;
constexpr std::size_t kTripleWords = 3;

std::uint32_t wordAt(const unsigned char* bytes, std::size_t index) {
  std::uint32_t word;
  std::memcpy(&word, bytes + index * sstable::kWordSize, sizeof word);
  return word;
}

/// Converts a byte offset to a word index; npos unless `words` words from there lie inside a block
/// of `total` words.
std::size_t wordIndex(std::uint32_t offset, std::size_t words, std::size_t total) {
  const std::size_t index = offset / sstable::kWordSize;
  if (offset % sstable::kWordSize != 0 || index < sstable::kBlockHeaderWords) return SIZE_MAX;
  return index <= total && words <= total - index ? index : SIZE_MAX;
}

/// The size in bytes of an image given without its size: the sum of its block sizes. 0 if its first
/// words already show that it is not a table.
std::size_t trustedSize(const unsigned char* image) {
  if (wordAt(image, sstable::kLexHeaderMagic) != sstable::kLexMagic) return 0;
  std::size_t size = sstable::kLexHeaderWords * sstable::kWordSize;
  for (std::uint32_t count = wordAt(image, sstable::kLexListCount); count != 0; --count) {
    if (wordAt(image + size, sstable::kBlockMagic) != sstable::kLexMagic) return 0;
    size += wordAt(image + size, sstable::kBlockSize);
  }
  return size;
}

}  // namespace

SSLexMatch SSLexDense::lastAccepted(const char* first, const char* reached) const {
  SSLexMatch match{first, reached, emptyMatch()};
  unsigned state = 0;
  for (const char* at = first; at != reached; ++at) {
    state = next(state, static_cast<unsigned char>(*at));
    if (finals_[state].accepts()) match = {at + 1, reached, &finals_[state]};
  }
  if (match.final != nullptr && (match.final->flags & sstable::kLexGiveBack) != 0 &&
      match.end != first) {
    --match.end;
  }
  return match;
}

SSLexIterator::SSLexIterator(std::vector<std::uint32_t> block, unsigned listCount)
    : block_(std::move(block)) {
  if (!readHeader() || !readFinals(listCount) || !readRows()) return;
  findLineFeeds();
  index_ = {block_.data(), finals_.size(), finals_.data(), next_.data()};
}

bool SSLexIterator::readHeader() {
  if (block_.size() < sstable::kBlockHeaderWords) return false;
  const std::size_t bytes = block_.size() * sstable::kWordSize;
  const std::uint32_t states = block_[sstable::kBlockStateCount];
  return block_[sstable::kBlockMagic] == sstable::kLexMagic &&
         block_[sstable::kBlockSize] == bytes && block_[sstable::kBlockSizeAgain] == bytes &&
         states != 0 && states < sstable::kNoState;
}

bool SSLexIterator::readFinals(unsigned listCount) {
  const std::size_t states = block_[sstable::kBlockStateCount];
  const std::size_t at =
      wordIndex(block_[sstable::kBlockFinals], states * sstable::kFinalWords, block_.size());
  if (at == SIZE_MAX) return false;
  finals_.reserve(states);
  for (std::size_t state = 0; state < states; ++state) {
    const std::uint32_t* const record = &block_[at + state * sstable::kFinalWords];
    const SSLexFinal final{record[sstable::kFinalToken], record[sstable::kFinalList],
                           record[sstable::kFinalFlags], record[sstable::kFinalKeywordTable],
                           record[sstable::kFinalType],  false};
    if ((final.pushes() || final.replaces()) && final.list >= listCount) return false;
    finals_.push_back(final);
  }
  return true;
}

bool SSLexIterator::readRows() {
  const std::size_t states = finals_.size();
  const std::size_t index = wordIndex(block_[sstable::kBlockRowIndex], states, block_.size());
  if (index == SIZE_MAX) return false;
  std::vector<bool> checked(block_.size());
  next_.assign(states << 8, sstable::kNoState);
  for (std::size_t state = 0; state < states; ++state) {
    const std::size_t row = wordIndex(block_[index + state], 1, block_.size());
    if (row == SIZE_MAX || (!checked[row] && !rowIsSound(row))) return false;
    checked[row] = true;
    indexRow(static_cast<unsigned>(state), row);
  }
  return true;
}

bool SSLexIterator::rowIsSound(std::size_t row) const {
  const std::size_t count = block_[row];
  if (count > (block_.size() - row - 1) / kTripleWords) return false;
  const std::uint32_t* triple = &block_[row] + 1;
  std::uint64_t above = 0;
  for (std::size_t i = 0; i < count; ++i, triple += kTripleWords) {
    if (triple[0] < above || triple[0] > triple[1]) return false;
    if (triple[2] >= finals_.size() && triple[2] != sstable::kNone) return false;
    above = std::uint64_t{triple[1]} + 1;
  }
  return true;
}

void SSLexIterator::indexRow(unsigned state, std::size_t row) {
  const std::size_t count = block_[row];
  std::uint16_t* const next = &next_[static_cast<std::size_t>(state) << 8];
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t* const triple = &block_[row + 1 + i * kTripleWords];
    if (triple[0] > 0xFF) break;
    if (triple[2] == sstable::kNone) continue;
    for (std::uint32_t code = triple[0]; code <= triple[1] && code <= 0xFF; ++code) {
      next[code] = static_cast<std::uint16_t>(triple[2]);
    }
  }
}

void SSLexIterator::findLineFeeds() {
  std::vector<unsigned> pending;
  const auto reach = [&](unsigned state) {
    if (state == sstable::kNoState || finals_[state].lineFeeds) return;
    finals_[state].lineFeeds = true;
    pending.push_back(state);
  };
  for (std::size_t state = 0; state < finals_.size(); ++state) {
    reach(next_[(state << 8) | kLineFeed]);
  }
  while (!pending.empty()) {
    const std::size_t from = pending.back();
    pending.pop_back();
    for (std::size_t code = 0; code <= 0xFF; ++code) reach(next_[(from << 8) | code]);
  }
}

unsigned SSLexIterator::nextInRow(unsigned state, unsigned code) const {
  const std::uint32_t* const rows =
      index_.block + index_.block[sstable::kBlockRowIndex] / sstable::kWordSize;
  const std::uint32_t* triple = index_.block + rows[state] / sstable::kWordSize;
  for (std::uint32_t count = *triple++; count != 0 && triple[0] <= code; --count, triple += 3) {
    if (code <= triple[1]) return triple[2];
  }
  return sstable::kNone;
}

SSLexTable::SSLexTable(std::span<const SSLexIndex> lists, const char* name)
    : SSObject(ssCorrelator("SSLT")), name_(name) {
  lists_.reserve(lists.size());
  for (unsigned index = 0; index < lists.size(); ++index) {
    lists_.emplace_back(SSLexIterator(lists[index]), index);
  }
}

SSLexTable::SSLexTable(const void* image, std::size_t size, const char* name)
    : SSObject(ssCorrelator("SSLT")), name_(name) {
  load(static_cast<const unsigned char*>(image), size);
}

SSLexTable::SSLexTable(const void* image, const char* name)
    : SSObject(ssCorrelator("SSLT")), name_(name) {
  const auto* const bytes = static_cast<const unsigned char*>(image);
  load(bytes, trustedSize(bytes));
}

SSLexTable::SSLexTable(const char* path) : SSObject(ssCorrelator("SSLT")), name_(path) {
  readFile(path);
}

void SSLexTable::readFile(const char* path) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path, "rb"), std::fclose);
  if (!file) return raise(SSErrorOpenFile, path, errno);
  struct stat status;
  if (fstat(fileno(file.get()), &status) != 0 || !S_ISREG(status.st_mode)) {
    return raise(SSErrorReadFile, path, errno);
  }
  std::vector<unsigned char> image(static_cast<std::size_t>(status.st_size));
  if (std::fread(image.data(), 1, image.size(), file.get()) != image.size()) {
    return raise(SSErrorReadFile, path, errno);
  }
  load(image.data(), image.size());
}

void SSLexTable::load(const unsigned char* image, std::size_t size) {
  constexpr std::size_t kHeaderSize = sstable::kLexHeaderWords * sstable::kWordSize;
  if (size < kHeaderSize || wordAt(image, sstable::kLexHeaderMagic) != sstable::kLexMagic) {
    return raise(SSErrorLexTable, name_.c_str());
  }
  if (wordAt(image, sstable::kLexKeywordTableCount) != 0) {
    return raise(SSErrorKeywordTable, name_.c_str());
  }
  const std::uint32_t count = wordAt(image, sstable::kLexListCount);
  if (count == 0 || wordAt(image, sstable::kLexClassCount) != 0 ||
      !loadLists(image + kHeaderSize, size - kHeaderSize, count)) {
    lists_.clear();
    return raise(SSErrorLexTable, name_.c_str());
  }
}

bool SSLexTable::loadLists(const unsigned char* image, std::size_t size, unsigned count) {
  for (unsigned index = 0; index < count; ++index) {
    if (size < sstable::kBlockHeaderWords * sstable::kWordSize) return false;
    const std::size_t bytes = wordAt(image, sstable::kBlockSize);
    if (bytes > size || bytes % sstable::kWordSize != 0) return false;
    std::vector<std::uint32_t> block(bytes / sstable::kWordSize);
    if (bytes != 0) std::memcpy(block.data(), image, bytes);
    lists_.emplace_back(SSLexIterator(std::move(block), count), index);
    if (!lists_.back().automaton().valid()) return false;
    image += bytes;
    size -= bytes;
  }
  return size == 0;
}

const SSLexExpressionList* SSLexTable::expressionList(unsigned index) const {
  if (index < lists_.size()) return &lists_[index];
  raise(SSErrorListIndex, static_cast<long>(index));
  return nullptr;
}
