#pragma once

#include <cstdint>
#include <memory>

#include "korelpre/rules/chainbuilder.h"
#include "korelpre/rules/matchmarker.h"
#include "korelpre/text/tknstring.h"
#include "ssvp40xpf/ssyaccstack.h"

namespace precomp {

/// What the directive grammar's symbols stand for: a name or token, a list of tokens, a marker of a
/// rule, or the chain of its pattern or result.
class tKorelPreStackElement : public SSYaccStackElement {
 public:
  /// The line of the first lexeme of the symbol, from 1; 0 for an empty one.
  std::uint32_t line() const { return line_; }
  void setLine(std::uint32_t line) { line_ = line; }

  tSpcString& token() { return token_; }
  tAutoArray<tSpcString>& list() { return list_; }
  /// Appends a token; one of kind kKindSpace becomes the spacing of the next.
  void add(const tSpcString& token);
  std::unique_ptr<tMatchMarker>& marker() { return marker_; }
  std::unique_ptr<tChainBuilder>& chain() { return chain_; }
  /// Empties the values, as the gate of a skipped region does.
  void clearValues();

 private:
  std::uint32_t line_ = 0;
  tSpcString token_;
  tAutoArray<tSpcString> list_;
  tString pendingSpacing_;
  std::unique_ptr<tMatchMarker> marker_;
  std::unique_ptr<tChainBuilder> chain_;
};

}  // namespace precomp
