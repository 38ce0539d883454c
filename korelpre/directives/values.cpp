// What the symbols of the directive grammar stand for: names, tokens and lists of tokens, and the
// markers and chains of rules. The productions and their labels stand in tools/grammars/korelpre.y.

#include "korelpre/korelprecls.h"
#include "korelpre/rules/resultmarker.h"
#include "korelpre/text/tokenkinds.h"
#include "ssvp40xpf/korelpreproductions.h"

namespace precomp {

using namespace korelpre;

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
      tKorelPreStackElement* value = reduceSql(production);
      return value != nullptr ? value : new tKorelPreStackElement;
    }
  }
}

}  // namespace precomp
