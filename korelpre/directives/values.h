#pragma once

#include <cstddef>
#include <string_view>

#include "korelpre/rules/chainbuilder.h"

class SSLexLexeme;
class SSYacc;

namespace precomp {

class tKorelPreStackElement;
class tProgramFile;
struct tSqlBlock;

/// The element of the right-side symbol `index`, from 0, of the production that is being reduced.
tKorelPreStackElement& partOf(SSYacc& parser, unsigned index);

/// What the symbols of the directive grammar stand for: names, tokens and lists of tokens, the
/// markers and chains of rules, and the parts of embedded SQL.
class tGrammarValues {
 public:
  /// All must outlive this object. `parser` is the one that reduces; a line that is reduced began
  /// at the byte `lineStart` of the text.
  tGrammarValues(SSYacc& parser, tProgramFile& file, tSqlBlock& sql, std::size_t lineStart)
      : parser_(parser), file_(file), sql_(sql), lineStart_(lineStart) {}

  /// The value of a production that is no directive, with one reference. The line of a statement is
  /// attached to its file.
  tKorelPreStackElement* valueOf(unsigned production, unsigned size);

 private:
  tKorelPreStackElement& part(unsigned index);
  tKorelPreStackElement* takeOver(unsigned index);
  tKorelPreStackElement* addToken(const tSpcString& token);
  tKorelPreStackElement* makeToken(unsigned production);
  tKorelPreStackElement* makeName(unsigned index);
  tKorelPreStackElement* makeMarker(unsigned production);
  tKorelPreStackElement* addWord(unsigned production);
  tKorelPreStackElement* startChain(tChainBuilder::eSide side);
  void addElement(tChainBuilder& chain, tKorelPreStackElement& element);
  tKorelPreStackElement* sqlValueOf(unsigned production);
  tKorelPreStackElement* makeSqlCall();
  void addColumn(std::string_view description);
  std::string_view lexemeText(unsigned index);
  void attachStatement(tKorelPreStackElement& list);

  SSYacc& parser_;
  tProgramFile& file_;
  tSqlBlock& sql_;
  std::size_t lineStart_;
};

}  // namespace precomp
