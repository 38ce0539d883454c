// What the symbols of the directive grammar stand for: names, tokens and lists of tokens, and the
// markers and chains of rules. A production number is its place in tools/grammars/korelpre.y.

#include "korelpre/korelprecls.h"
#include "korelpre/rules/resultmarker.h"
#include "korelpre/text/tokenkinds.h"

namespace precomp {

using namespace korelpre;

namespace {

enum eProduction : unsigned {
  kStatementLine = 5,
  kParamListStart = 15,
  kParamListMore = 16,
  kParamName = 17,
  kMatchPatternStart = 28,
  kMatchPatternMore = 29,
  kMatchElementMarker = 30,
  kMatchElementToken = 31,
  kResultPattern = 32,
  kResultWithDirective = 33,
  kResultElementsStart = 35,
  kResultElementsMore = 36,
  kResultElementMarker = 37,
  kResultElementToken = 38,
  kTokenListStart = 39,
  kTokenListMore = 40,
  kSpcIdentSpc = 41,
  kKeyword = 48,
  kSpcStringSpc = 49,
  kStringAlone = 52,
  kDoubleQuoted = 53,
  kSingleQuoted = 54,
  kListMarker = 55,
  kRestrictMarker = 56,
  kRestrictMarkerSpc = 57,
  kWildMarker = 58,
  kRegularMarker = 59,
  kExtendedMarker = 60,
  kBlockResult = 61,
  kDumbResult = 62,
  kStringResult = 63,
  kLogicalResult = 64,
  kRegularResult = 65,
  kSmartResult = 66,
  kWordListStart = 67,
  kWordListMore = 68,
  kWordListAlternative = 69,
  kWordName = 70,
  kWordAmpersand = 71,
  kTokenFirst = 73,
  kTokenKeyword = 125,
  kTokenLast = 133,
  kSqlFirst = 134,
  kSqlLast = 150,
  kKeywordFirst = 151,
  kKeywordLast = 204,
};

// Of productions 41 to 52 the even ones have no blanks in front.
unsigned nameIndex(unsigned production) {
  return production % 2 != 0 ? 1 : 0;
}

unsigned includeNameIndex(unsigned production) {
  return production == kSpcStringSpc || production == kSpcStringSpc + 2 ? 1 : 0;
}

}  // namespace

// The token that a lexeme makes, as the output must show it: a string has its quotes and an escaped
// character its backslash again.
tKorelPreStackElement* KorelPreYaccClass::makeToken(unsigned production) {
  const SSLexLexeme& lexeme = *part(0).lexeme();
  if (lexeme.token() == kTokSpc) return makeSpace(lexeme);
  auto* result = new tKorelPreStackElement;
  tSpcString& token = result->token();
  token.setKind(production);
  token.setAux(lexeme.token());
  token.setLine(lexeme.line());
  std::size_t begin = lexeme.absoluteOffset();
  std::size_t length = lexeme.length();
  if (lexeme.token() == kTokEspCh) {
    --begin;
    ++length;
  } else if (lexeme.token() == kTokString || lexeme.token() == kTokSqString) {
    --begin;
    const bool closed = text_[begin] == text_[begin + 1 + length];
    length += closed ? 2 : 1;
  }
  token.setText(tString::borrow(text_.view().substr(begin, length)));
  return result;
}

tKorelPreStackElement* KorelPreYaccClass::makeName(unsigned index) {
  if (part(index).lexeme() == nullptr) return takeOver(index);
  const SSLexLexeme& lexeme = *part(index).lexeme();
  auto* result = new tKorelPreStackElement;
  result->token().setText(
      tString::borrow({text_.data() + lexeme.absoluteOffset(), lexeme.length()}));
  result->token().setKind(kKindIdentifier);
  result->token().setAux(lexeme.token());
  result->token().setLine(lexeme.line());
  return result;
}

// Of blanks only their text matters, and most gaps are one blank.
tKorelPreStackElement* KorelPreYaccClass::makeSpace(const SSLexLexeme& lexeme) {
  auto* result = new tKorelPreStackElement;
  const bool oneBlank = lexeme.length() == 1 && *lexeme.text() == ' ';
  result->token().setText(oneBlank ? tString::borrow(" ")
                                   : tString(lexeme.text(), lexeme.length()));
  result->token().setKind(kKindSpace);
  return result;
}

tKorelPreStackElement* KorelPreYaccClass::makeMarker(unsigned production) {
  const unsigned name = production == kListMarker || production == kRestrictMarker ||
                                production == kRestrictMarkerSpc || production == kRegularMarker ||
                                production == kStringResult || production == kRegularResult
                            ? 1
                            : 2;
  const tSpcString& token = part(name).token();
  auto* result = new tKorelPreStackElement;
  std::unique_ptr<tMatchMarker>& marker = result->marker();
  switch (production) {
    case kListMarker:
      marker = std::make_unique<tMatchMarkerList>(token);
      break;
    case kRestrictMarker:
    case kRestrictMarkerSpc:
      marker = std::move(part(3).marker());
      marker->token() = token;
      break;
    case kWildMarker:
      marker = std::make_unique<tMatchMarkerWild>(token);
      break;
    case kRegularMarker:
      marker = std::make_unique<tMatchMarker>(token);
      break;
    case kExtendedMarker:
      marker = std::make_unique<tMatchMarkerExt>(token);
      break;
    case kBlockResult:
      marker = std::make_unique<tResultMarkerBlock>(token);
      break;
    case kDumbResult:
      marker = std::make_unique<tResultMarkerDumbStr>(token);
      break;
    case kStringResult:
      marker = std::make_unique<tResultMarkerRegStr>(token);
      break;
    case kLogicalResult:
      marker = std::make_unique<tResultMarkerBool>(token);
      break;
    case kRegularResult:
      marker = std::make_unique<tResultMarker>(token);
      break;
    default:
      marker = std::make_unique<tResultMarkerSmartStr>(token);
      break;
  }
  return result;
}

// The words of a restricted marker gather in one that has no name yet.
tKorelPreStackElement* KorelPreYaccClass::addWord(unsigned production) {
  if (production == kWordListStart) {
    auto* result = new tKorelPreStackElement;
    auto marker = std::make_unique<tMatchMarkerRestrict>(tSpcString());
    marker->addWord(part(0).token(), true);
    result->token() = part(0).token();
    result->marker() = std::move(marker);
    return result;
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

void KorelPreYaccClass::addElement(tChainBuilder& chain, tKorelPreStackElement& element) {
  if (element.marker() != nullptr) {
    chain.add(element.marker().release());
  } else {
    chain.addToken(element.token());
  }
}

tKorelPreStackElement* KorelPreYaccClass::startChain(tChainBuilder::eSide side) {
  auto* result = new tKorelPreStackElement;
  result->chain() = std::make_unique<tChainBuilder>(side);
  addElement(*result->chain(), part(0));
  return result;
}

tKorelPreStackElement* KorelPreYaccClass::reduceValue(unsigned production, unsigned size) {
  if (production == kTokenKeyword) {
    part(0).token().setKind(kKindKeyword);
    return takeOver(0);
  }
  if (production >= kTokenFirst && production <= kTokenLast) return makeToken(production);
  if (production >= kKeywordFirst && production <= kKeywordLast) return makeName(0);
  if (production >= kSpcIdentSpc && production <= kKeyword) return makeName(nameIndex(production));
  if (production >= kSpcStringSpc && production <= kStringAlone) {
    return takeOver(includeNameIndex(production));
  }
  if (production >= kListMarker && production <= kSmartResult) return makeMarker(production);
  if (production >= kSqlFirst && production <= kSqlLast) {
    tKorelPreStackElement* value = skipping() ? nullptr : reduceSql(production);
    return value != nullptr ? value : new tKorelPreStackElement;
  }
  switch (production) {
    case kTokenListStart:
    case kParamListStart: {
      auto* result = new tKorelPreStackElement;
      result->add(part(0).token());
      return result;
    }
    case kTokenListMore:
    case kParamListMore:
      part(0).add(part(size - 1).token());
      return takeOver(0);
    case kMatchPatternStart:
      return startChain(tChainBuilder::kPattern);
    case kResultElementsStart:
      return startChain(tChainBuilder::kResult);
    case kMatchPatternMore:
    case kResultElementsMore:
      addElement(*part(0).chain(), part(1));
      return takeOver(0);
    case kMatchElementMarker:
    case kMatchElementToken:
    case kResultElementMarker:
    case kResultElementToken:
    case kResultPattern:
    case kResultWithDirective:
    case kParamName:
    case kWordName:
      return takeOver(0);
    case kDoubleQuoted:
    case kSingleQuoted:
    case kWordAmpersand:
      return makeName(0);
    case kWordListStart:
    case kWordListMore:
    case kWordListAlternative:
      return addWord(production);
    default:
      if (production == kStatementLine) attachStatement(part(0));
      return new tKorelPreStackElement;
  }
}

}  // namespace precomp
