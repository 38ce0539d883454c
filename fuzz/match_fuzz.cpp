// The engine's matcher against a naive one; and the bounds of expressions as they are found in
// tokens and in their text.
//
// The first byte of the input tells whether the rule is a command and whether it abbreviates, the
// second how many bytes make the pattern, the third where it is tried. Each byte of the pattern is
// an element of it, each byte behind it a token of the statement. For bounds the second byte and
// the third are the first and the last token, behind them each token has a byte.

#include <cstdint>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "fuzz/bytereader.h"
#include "fuzz/check.h"
#include "fuzz/naivematch.h"
#include "korelpre/korelprecls.h"
#include "korelpre/rules/chainbuilder.h"
#include "korelpre/rules/patternmarkers.h"
#include "korelpre/rules/restrictmarker.h"
#include "korelpre/text/exprbounds.h"
#include "korelpre/text/tokenkinds.h"

using namespace precomp;

namespace {

std::uint32_t kindOf(const std::string& text) {
  if (text == ".") return kKindDot;
  if (text == ",") return kKindComma;
  if (text == "(") return kKindParenOpen;
  if (text == ")") return kKindParenClose;
  if (text == ";") return kKindSemicolon;
  if (text == "[") return kKindBracketOpen;
  if (text == "]") return kKindBracketClose;
  if (text == "+") return kKindPlus;
  return kKindIdentifier;
}

tSpcString token(const std::string& text) {
  tSpcString made{tString(text.c_str())};
  made.setKind(kindOf(text));
  return made;
}

tMatchMarker* engineMarker(char type) {
  const tSpcString name = token(std::string(1, type));
  switch (type) {
    case 'r':
      return new tMatchMarker(name);
    case 'e':
      return new tMatchMarkerExt(name);
    case 'l':
      return new tMatchMarkerList(name);
    case '*':
      return new tMatchMarkerWild(name);
    default: {
      auto* marker = new tMatchMarkerRestrict(name);
      marker->addWord(token("A"), true);
      marker->addWord(token("B"), true);
      marker->addWord(token("C"), false);
      return marker;
    }
  }
}

std::unique_ptr<tBaseXChg> engineRule(KorelPreYaccClass& processor, const std::string& text,
                                      bool command, bool abbreviate) {
  tChainBuilder builder(tChainBuilder::kPattern);
  std::istringstream stream(text);
  for (std::string piece; stream >> piece;) {
    if (piece[0] == '<') {
      builder.add(engineMarker(piece[1]));
    } else {
      builder.addToken(token(piece));
    }
  }
  const tString key = builder.head()->token();
  const tWordRule wordRule{abbreviate, false};
  if (command) {
    return std::make_unique<tCommand>(&processor, wordRule, builder.release(), nullptr, key);
  }
  return std::make_unique<tTranslate>(&processor, wordRule, builder.release(), nullptr, key);
}

std::string engineCaptures(const tMatchMarker* head) {
  std::ostringstream text;
  for (const tMatchMarker* marker = head; marker != nullptr; marker = marker->next()) {
    if (marker->kind() != kMatchIdentifier && marker->kind() != kMatchMarkerOpt) {
      text << marker->token().view();
      const bool current = marker->isMatchOk() && marker->infos().empty();
      if (current) text << '(' << marker->first() << ',' << marker->last() << ')';
      for (const tMatchInfo& info : marker->infos()) {
        text << '{' << info.first << ',' << info.last << '}';
      }
      text << ' ';
    }
    for (int i = 0; i < marker->groups().count(); ++i) {
      text << engineCaptures(marker->groups()[i]);
    }
  }
  return text.str();
}

/// The pattern that bytes make: what they leave open is closed.
std::string patternOf(tByteReader& input, unsigned size) {
  static const std::string kElements[] = {"A",   "B",   "WORDS", ",",   "+",   "(",   ")", "<r>",
                                          "<l>", "<e>", "<s>",   "<*>", "<r>", "<l>", "[", "]"};
  std::string text = "KEYWORD";
  int open = 0;
  bool groupEmpty = false;
  for (unsigned i = 0; i < size; ++i) {
    const std::string& element = kElements[input.byte() % std::size(kElements)];
    const bool opens = element == "[", closes = element == "]";
    if ((opens && open == 3) || (closes && (open == 0 || groupEmpty))) continue;
    open += (opens ? 1 : 0) - (closes ? 1 : 0);
    groupEmpty = opens;
    text += ' ' + element;
  }
  if (groupEmpty) text += " A";
  while (open-- > 0) text += " ]";
  return text;
}

std::vector<std::string> tokensOf(tByteReader& input) {
  static const std::string kTokens[] = {"KEYWORD", "keyw", "A", "b", "C", "word", "WORDS", "wordsy",
                                        "x",       "y",    ",", "+", "(", ")",    ".",     ";"};
  std::vector<std::string> tokens;
  do {
    tokens.push_back(kTokens[input.byte() % std::size(kTokens)]);
  } while (!input.rest().empty() && tokens.size() < 40);
  return tokens;
}

void compare(tBaseXChg& rule, tNaivePattern& naive, const std::vector<std::string>& tokens,
             int start) {
  tTknString statement;
  for (const std::string& text : tokens) {
    statement.tokens().add(new tSpcString(token(text)));
    statement.tokens().last()->setSpacing(tString(" "));
  }
  statement.startSteps();
  const int score = rule.matchCount(start, &statement);
  int end = start;
  require(naiveMatch(naive, tokens, end) == score, "both give the same score");
  if (score == 0) return;
  const int cursor = statement.curTokenIdx();
  require((cursor < 0 ? statement.count() : cursor) == end, "both end at the same token");
  requireEqual(engineCaptures(rule.firstMatch()), naiveCaptures(naive.chain),
               "the markers take the same");
}

void compareBounds(tByteReader& input) {
  // clang-format off
  static const std::string kParts[] = {
      "(", ")", "a", "cName", "M", "FIELD", "END", "next", "If", "x~1", "+", "-", "*", "/", "%", "^",
      "=", "==", "#", "<", ">=", "$", ":=", ".and.", ".OR.", "+=", ".not.", "!", "++", "--", "@",
      "[", "]", "{", "}", "|", ",", "->", "M->", "FIELD->", "->END", ":", "&", "&(", ".", "1",
      "12.5", ".5", "\"t\"", "'a'", ".T.", "nil", "", "...", "?", "\\x", ";", "=>", "\"", "'",
      "a b", "::", "/*", "*/", "&&", "//", "*=", "\t", "\n", "\r", ")]", "f(x)", "1.", "%~!",
      "\xC3", "<>", "!=", "5"};
  // clang-format on
  static AYaccClass parser;
  int first = static_cast<int>(input.byte() % 4);
  int last = -1 - static_cast<int>(input.byte() % 4);
  tTknString tokens;
  while (!input.rest().empty()) {
    const unsigned chosen = input.byte();
    const std::string& part = kParts[chosen % std::size(kParts)];
    tokens.tokens().add(new tSpcString(tString(part)));
    tokens.tokens().last()->setSpacing(tString(chosen < 128 ? " " : ""));
    tokens.tokens().last()->setKind(part == "(" || part == ")" ? kindOf(part) : 0);
  }
  last += tokens.count();
  if (first > tokens.count()) return;
  int byText = last;
  int firstByText = first;
  validateExprByText(&parser, &tokens, firstByText, byText);
  validateExpr(&parser, &tokens, first, last);
  require(first == firstByText && last == byText, "both ways find the same bounds");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static KorelPreYaccClass processor;
  tByteReader input(bytes, size);
  const unsigned kind = input.byte();
  if ((kind & 4) != 0) {
    compareBounds(input);
    return 0;
  }
  const bool command = (kind & 1) != 0;
  const bool abbreviate = (kind & 2) != 0;
  const unsigned length = input.byte() % 16;
  const unsigned start = input.byte();
  const std::string pattern = patternOf(input, length);
  const std::vector<std::string> tokens = tokensOf(input);
  tNaivePattern naive = naivePattern(pattern, command, abbreviate);
  compare(*engineRule(processor, pattern, command, abbreviate), naive, tokens,
          static_cast<int>(start % tokens.size()));
  return 0;
}
