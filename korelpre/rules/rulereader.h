#pragma once

#include <cstddef>
#include <cstdint>

#include "korelpre/rules/chainbuilder.h"
#include "korelpre/rules/directivepieces.h"
#include "korelpre/rules/markertable.h"
#include "korelpre/rules/ruledirective.h"

namespace precomp {

/// Reads the directives that define commands and translations straight from the text. What it makes
/// of one is what scanner and grammar make of it; forms that are out of the ordinary, and what may
/// be wrong, it leaves to them.
class tRuleReader : public tDirectivePieces {
 public:
  /// Reads the directive whose line starts at `start`. The text must end with a line feed and have
  /// "\r\n" for every line end. False when this is no such directive or not an ordinary one.
  /// The markers lie in `arena`, which may have less room afterwards even when it fails; null: each
  /// on its own.
  bool read(const char* start, const char* end, tMarkerArena* arena);
  /// Destroys what was read and not released.
  void drop();

  // What the last read() that succeeded has read.
  /// The directive, which stood on line `line`; its chains are this reader's.
  tRuleDirective directive(int line);
  tChainBuilder& pattern() { return pattern_; }
  tChainBuilder& result() { return result_; }

 private:
  bool readWord(const char*& p, const char* end);
  bool build();
  bool buildPattern();
  bool buildResult();
  bool buildElement(tChainBuilder& chain, tMatchMarker* (tRuleReader::*marker)(std::size_t&));
  void addToken(tChainBuilder& chain, const tPiece& token);
  tMatchMarker* enclosedMarker(eMarkerSide side, std::size_t& at);
  tMatchMarker* patternMarker(std::size_t& at);
  tMatchMarker* restrictedMarker(std::size_t& at);
  tMatchMarker* resultMarker(std::size_t& at);
  tMatchMarker* dumbMarker(std::size_t& at);
  bool encloses(std::size_t at, std::uint32_t before, std::uint32_t after) const;

  tMarkerArena* arena_ = nullptr;
  eDirective directive_ = eDirective::kNone;
  tChainBuilder pattern_{tChainBuilder::kPattern};
  tChainBuilder result_{tChainBuilder::kResult};
  std::size_t at_ = 0;
};

}  // namespace precomp
