// What the symbols of the directive grammar stand for: names, tokens and lists of tokens, and the
// markers and chains of rules. The productions and their labels stand in tools/grammars/korelpre.y.

#include "korelpre/directives/values.h"

#include <memory>

#include "korelpre/directives/programfile.h"
#include "korelpre/directives/sqlblock.h"
#include "korelpre/directives/stackelement.h"
#include "korelpre/rules/markertable.h"
#include "korelpre/rules/restrictmarker.h"
#include "korelpre/text/tokenise.h"
#include "korelpre/text/tokenkinds.h"
#include "ssvp40xpf/korelpreproductions.h"
#include "ssvp40xpf/korelpretokens.h"
#include "ssvp40xpf/ssyacc.h"

namespace precomp {

using namespace korelpre;

namespace {

// Elements of productions, by position.
constexpr unsigned kAliasOfBlock = 4;
constexpr unsigned kWidthOfColumn = 8;
constexpr unsigned kDecimalsOfColumn = 12;

}  // namespace

tKorelPreStackElement& partOf(SSYacc& parser, unsigned index) {
  return static_cast<tKorelPreStackElement&>(
      *parser.elementFromProduction(static_cast<long>(index)));
}

tKorelPreStackElement* tGrammarValues::makeToken(unsigned production) {
  const SSLexLexeme& lexeme = *part(0).lexeme();
  auto result = std::make_unique<tKorelPreStackElement>();
  if (lexeme.token() == kTokSpc) {
    result->token().setText(spacingOf(lexeme));
    result->token().setKind(kKindSpace);
  } else {
    readToken(lexeme, production, file_.text, result->token());
  }
  return result.release();
}

tKorelPreStackElement* tGrammarValues::makeName(unsigned index) {
  if (part(index).lexeme() == nullptr) return takeOver(index);
  const SSLexLexeme& lexeme = *part(index).lexeme();
  auto result = std::make_unique<tKorelPreStackElement>();
  result->token().setText(
      tString::borrow({file_.text.data() + lexeme.absoluteOffset(), lexeme.length()}));
  result->token().setKind(kKindIdentifier);
  result->token().setAux(lexeme.token());
  result->token().setLine(lexeme.line());
  return result.release();
}

// The name stands behind the "<", or behind one more token.
tKorelPreStackElement* tGrammarValues::makeMarker(unsigned production) {
  const bool behindOne = part(1).lexeme() != nullptr;
  const tSpcString& name = part(behindOne ? 2 : 1).token();
  auto result = std::make_unique<tKorelPreStackElement>();
  if (production == kRestrictMarker || production == kRestrictMarkerSpc) {
    result->marker() = std::move(part(3).marker());
    result->marker()->token() = name;
  } else {
    result->marker().reset(markerOfProduction(production).make(nullptr, name));
  }
  return result.release();
}

// The words of a restricted marker gather in one that has no name yet.
tKorelPreStackElement* tGrammarValues::addWord(unsigned production) {
  if (production == kWordListStart) {
    auto result = std::make_unique<tKorelPreStackElement>();
    auto marker = std::make_unique<tMatchMarkerRestrict>(tSpcString());
    marker->addWord(part(0).token(), true);
    result->token() = part(0).token();
    result->marker() = std::move(marker);
    return result.release();
  }
  tSpcString& before = part(0).token();
  tSpcString word;
  word = part(production == kWordListMore ? 1 : 2).token();
  const bool apart = word.data() != before.data() + before.size();
  if (production == kWordListMore && apart) word.setSpacing(tString::borrow(" "));
  static_cast<tMatchMarkerRestrict&>(*part(0).marker())
      .addWord(word, production == kWordListAlternative);
  before = word;
  return takeOver(0);
}

void tGrammarValues::addElement(tChainBuilder& chain, tKorelPreStackElement& element) {
  if (element.marker() != nullptr) {
    chain.add(element.marker().release());
  } else {
    chain.addToken(element.token());
  }
}

tKorelPreStackElement* tGrammarValues::startChain(tChainBuilder::eSide side) {
  auto result = std::make_unique<tKorelPreStackElement>();
  result->chain() = std::make_unique<tChainBuilder>(side);
  addElement(*result->chain(), part(0));
  return result.release();
}

// To the list of tokens that the first symbol stands for.
tKorelPreStackElement* tGrammarValues::addToken(const tSpcString& token) {
  part(0).add(token);
  return takeOver(0);
}

tKorelPreStackElement* tGrammarValues::valueOf(unsigned production, unsigned size) {
  switch (leftSideOf(production)) {
    case kSymToken:
      if (production == kKindSql) break;
      if (production != kKindKeyword) return makeToken(production);
      part(0).token().setKind(kKindKeyword);
      return takeOver(0);
    case kSymKeyword:
    case kSymString:
      return makeName(0);
    case kSymName:
      return makeName(isPaddedProduction(production) ? 1 : 0);
    case kSymIncludeName:
      return takeOver(isPaddedProduction(production) ? 1 : 0);
    case kSymMatchMarker:
    case kSymResultMarker:
      return makeMarker(production);
    case kSymMatchElement:
    case kSymResultElement:
      return takeOver(0);
    case kSymWordList:
      return addWord(production);
    default:
      break;
  }
  switch (production) {
    case kTokenListStart:
    case kParamListStart: {
      auto result = std::make_unique<tKorelPreStackElement>();
      result->add(part(0).token());
      return result.release();
    }
    case kTokenListMore:
    case kParamListMore:
      return addToken(part(size - 1).token());
    case kMatchPatternStart:
      return startChain(tChainBuilder::kPattern);
    case kResultElementsStart:
      return startChain(tChainBuilder::kResult);
    case kMatchPatternMore:
    case kResultElementsMore:
      addElement(*part(0).chain(), part(1));
      return takeOver(0);
    case kResultPattern:
    case kResultWithDirective:
    case kParamName:
    case kWordName:
      return takeOver(0);
    case kWordAmpersand:
      return makeName(0);
    case kStatementLine:
      attachStatement(part(0));
      return new tKorelPreStackElement;
    default: {
      tKorelPreStackElement* value = sqlValueOf(production);
      return value != nullptr ? value : new tKorelPreStackElement;
    }
  }
}

// The value of a part of an embedded SQL block; null when it has none.
tKorelPreStackElement* tGrammarValues::sqlValueOf(unsigned production) {
  switch (production) {
    case kKindSql:
      return makeSqlCall();
    case kAliasName:
    case kSizeNumber:
    case kSizeName:
      return makeName(0);
    case kAliasString:
      return takeOver(0);
    case kNumericColumn: {
      tString description("\",\"N\",");
      description.append(part(kWidthOfColumn).token()).append(',');
      description.append(part(kDecimalsOfColumn).token()).append('}');
      addColumn(description);
      return nullptr;
    }
    case kDateColumn:
      addColumn("\",\"D\",8,0}");
      return nullptr;
    case kLogicalColumn:
      addColumn("\",\"L\",1,0}");
      return nullptr;
    default:
      return nullptr;
  }
}

void tGrammarValues::addColumn(std::string_view description) {
  if (!sql_.addColumn(lexemeText(0), description)) file_.raiseLimit(kStatementSize, sql_.line);
}

std::string_view tGrammarValues::lexemeText(unsigned index) {
  const SSLexLexeme& lexeme = *part(index).lexeme();
  return file_.text.view().substr(lexeme.absoluteOffset(), lexeme.length());
}

tKorelPreStackElement* tGrammarValues::makeSqlCall() {
  const tSpcString& alias = part(kAliasOfBlock).token();
  tString expression;
  if (alias.aux() == kTokIdentName) {
    expression.append('"').append(alias).append('"');
  } else {
    // The quotes stand in the source around the text.
    const char* const quoted = alias.data() - 1;
    const std::size_t size = alias.size() + 2;
    if (quoted[0] != quoted[size - 1]) file_.raise(eSourceError::kUnterminated, sql_.line);
    expression = tString(std::string_view(quoted, size));
  }
  auto result = std::make_unique<tKorelPreStackElement>();
  tSpcString& token = result->token();
  token.setText(sql_.call(expression));
  token.setKind(kKindSql);
  token.setLine(static_cast<std::uint32_t>(sql_.line));
  sql_ = {};
  return result.release();
}

// Its tokens are made again when the walk gets there, since they take many times what their text
// takes. Those of embedded SQL have no text.
void tGrammarValues::attachStatement(tKorelPreStackElement& list) {
  if (list.list().empty()) return;
  const auto line = static_cast<int>(list.list()[0].line());
  if (sql_.holds(line)) {
    if (!sql_.addLine(list.list())) file_.raiseLimit(kStatementSize, sql_.line);
    return;
  }
  const tAutoArray<tSpcString>& tokens = list.list();
  for (int i = 0; i < tokens.count(); ++i) {
    if (tokens[i].kind() == kKindSql) return file_.lines.entry(line).tokens.swap(list.list());
  }
  file_.lines.addStatement(tSourceCode::kScanned, line, lineStart_);
}

tKorelPreStackElement& tGrammarValues::part(unsigned index) {
  return partOf(parser_, index);
}

tKorelPreStackElement* tGrammarValues::takeOver(unsigned index) {
  tKorelPreStackElement& element = part(index);
  element.refInc();
  return &element;
}

}  // namespace precomp
