#pragma once

#include <cstddef>
#include <cstdint>

/// The layout of scanner and parser table images. The runtime includes this header, and the
/// generator reads the constants from it: see tools/tablegen/layout.py.
///
/// An image is a sequence of unsigned 32-bit words in little-endian order.
///
/// A scanner image is a table header (9 words), one automaton block for each expression list,
/// then the keyword tables and the character classes (both always empty here). An automaton block
/// is a block header (22 words), one final-state record (7 words) for each state, the transition
/// rows, and the row index: for each state, the byte offset of its row from the start of the
/// block. A row is a count n and n triples (low, high, next state) in ascending order of low. To
/// find the transition on code c, look for the triple with low <= c <= high; stop at the first
/// whose low exceeds c.
///
/// A parser image is a header (5 words), for each state the byte offset of its row from the start
/// of the image, the rows and the production table. A row is its flags, the number of goto pairs,
/// the number of action pairs, the action pairs (action word, token), the goto pairs (target word,
/// nonterminal) and, when the row has an error entry, one more pair whose first word is the state
/// reached by shifting the error token. The production table holds a pair (right-side length,
/// left-side symbol) for each production.
namespace sstable {

constexpr std::size_t kWordSize = 4;
constexpr std::uint32_t kNone = 0xFFFFFFFFu;
constexpr std::uint16_t kNoState = 0xFFFFu;  // kNone in the tables for direct lookup

// ---- scanner images ----------------------------------------------------------------------------

constexpr std::uint32_t kLexMagic = 0x53534C58u;  // "XLSS" in file order

/// Words of the table header.
enum eLexHeader : std::size_t {
  kLexListCount = 0,
  kLexHeaderMagic = 1,
  kLexKeywordTableCount = 2,
  kLexClassCount = 3,
  kLexHeaderWords = 9,
};

/// Words of a block header. The block size is stored twice.
enum eLexBlock : std::size_t {
  kBlockMagic = 0,
  kBlockSize = 1,
  kBlockStateCount = 10,
  kBlockSizeAgain = 11,
  kBlockRowIndex = 12,
  kBlockFinals = 13,
  kBlockHeaderWords = 22,
};

/// Words of a final-state record.
enum eLexFinal : std::size_t {
  kFinalToken = 0,
  kFinalList = 1,
  kFinalFlags = 2,
  kFinalKeywordTable = 3,
  kFinalType = 4,
  kFinalWords = 7,
};

/// Flags of a final-state record. kLexPush alone pushes a list, kLexPop alone pops one, both
/// together replace the current list.
enum eLexFlag : std::uint32_t {
  kLexLineStart = 0x02,
  kLexPop = 0x08,
  kLexAccept = 0x10,
  kLexPush = 0x20,
  kLexDrop = 0x40,
  kLexGiveBack = 0x80,
  kLexKeyword = 0x200,
  kLexType = 0x400,
};

// ---- parser images -----------------------------------------------------------------------------

constexpr std::uint32_t kYaccMagic = 0x53535943u;  // "CYSS" in file order

/// Words of the header; the row offsets start at kYaccRowIndex.
enum eYaccHeader : std::size_t {
  kYaccHeaderMagic = 0,
  kYaccCounts = 1,  // low half: productions, high half: lookahead automata
  kYaccStateCount = 2,
  kYaccFirstRow = 3,
  kYaccProductions = 4,
  kYaccRowIndex = 5,
};

/// Words at the start of a state row.
enum eYaccRow : std::size_t {
  kRowFlags = 0,
  kRowGotoCount = 1,
  kRowActionCount = 2,
  kRowPairs = 3,
};

/// Flags of a state row.
enum eYaccRowFlag : std::uint32_t {
  kRowScanOnError = 0x01,
  kRowErrorEntry = 0x02,
  kRowAcceptAny = 0x04,
  kRowEmpty = 0x08,
};

/// Bits of an action word; the operand is in the low 27 bits.
enum eYaccAction : std::uint32_t {
  kActionShift = 1u << 30,
  kActionReduce = 1u << 29,
  kActionAccept = 1u << 28,
  kActionConflict = 1u << 27,
  kActionOperand = 0x07FFFFFFu,
};

constexpr std::uint32_t kFirstNonterminal = 0x4001u;
constexpr std::uint32_t kTokenEof = 0xFFFFFFFFu;
constexpr std::uint32_t kTokenError = 0xFFFFFFFEu;

}  // namespace sstable
