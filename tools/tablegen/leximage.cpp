#include "tools/tablegen/leximage.h"

#include "ssvp40xpf/sstableformat.h"
#include "tools/tablegen/generror.h"
#include "tools/tablegen/minimise.h"

namespace tablegen {
namespace {

using namespace sstable;

std::uint32_t word(std::size_t number) {
  return static_cast<std::uint32_t>(number);
}
std::uint32_t bytes(std::size_t words) {
  return word(words * kWordSize);
}

void appendFinal(tImage& block, const tDecision& decision) {
  const std::size_t at = block.size();
  block.resize(at + kFinalWords, 0);
  block[at + kFinalToken] = decision.token;
  block[at + kFinalList] = decision.list;
  block[at + kFinalFlags] = decision.flags;
}

void appendRow(tImage& block, const std::vector<tDfaMove>& moves) {
  block.push_back(word(moves.size()));
  for (const tDfaMove& move : moves) {
    block.insert(block.end(), {move.low, move.high, word(static_cast<std::size_t>(move.to))});
  }
}

tImage buildBlock(const tDfa& dfa, const std::vector<tLexRule>& rules) {
  tImage block(kBlockHeaderWords, 0);
  block[kBlockFinals] = bytes(block.size());
  for (const tDfaState& state : dfa.states) {
    const bool accepts = state.rule != kNoRule;
    appendFinal(block,
                accepts ? rules[static_cast<std::size_t>(state.rule)].decision : tDecision{});
  }
  std::vector<std::uint32_t> rows;
  for (const tDfaState& state : dfa.states) {
    rows.push_back(bytes(block.size()));
    appendRow(block, state.moves);
  }
  block[kBlockRowIndex] = bytes(block.size());
  block.insert(block.end(), rows.begin(), rows.end());

  block[kBlockMagic] = kLexMagic;
  block[kBlockStateCount] = word(dfa.states.size());
  block[kBlockSize] = bytes(block.size());
  block[kBlockSizeAgain] = block[kBlockSize];
  return block;
}

}  // namespace

tImage buildLexImage(const tLexSpec& spec) {
  tImage image(kLexHeaderWords, 0);
  image[kLexListCount] = word(spec.lists.size());
  image[kLexHeaderMagic] = kLexMagic;
  for (const tLexList& list : spec.lists) {
    if (list.rules.empty()) throw tGenError(spec.file, 0, "list \"" + list.name + "\" is empty");
    const tDfa dfa = buildDfa(buildNfa(list.rules), list.rules.size());
    checkRules(dfa, list, spec.file);
    const tImage block = buildBlock(minimise(dfa, list.rules), list.rules);
    image.insert(image.end(), block.begin(), block.end());
  }
  return image;
}

}  // namespace tablegen
