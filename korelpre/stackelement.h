#pragma once

#include <cstdint>

#include "korelpre/tknstring.h"
#include "ssvp40xpf/ssyaccstack.h"

namespace precomp {

/// What the directive grammar's symbols stand for: a name, a token, or a list of tokens.
class tKorelPreStackElement : public SSYaccStackElement {
 public:
  /// The line of the first lexeme of the symbol, from 1; 0 for an empty one.
  std::uint32_t line() const { return line_; }
  void setLine(std::uint32_t line) { line_ = line; }

  tSpcString& token() { return token_; }
  tAutoArray<tSpcString>& list() { return list_; }
  /// Appends a token; one of kind kKindSpace becomes the spacing of the next.
  void add(const tSpcString& token);
  /// Empties the values, as the gate of a skipped region does.
  void clearValues();

 private:
  std::uint32_t line_ = 0;
  tSpcString token_;
  tAutoArray<tSpcString> list_;
  tString pendingSpacing_;
};

}  // namespace precomp
