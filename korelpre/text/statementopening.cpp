#include "korelpre/text/statementopening.h"

#include <cstddef>

#include "korelpre/text/cursor.h"
#include "korelpre/text/words.h"
#include "lib_base/misc.h"

namespace precomp {

namespace {

using enum eStatementWord;

// The tokens that begin with a dot and a letter.
constexpr std::string_view kDotted[] = {".t.", ".f.", ".or.", ".and.", ".not."};

// Whether two characters are an operator that a single one of them is not.
bool isPair(char first, char second) {
  switch (first) {
    case '+':
      return second == '+' || second == '=';
    case '-':
      return second == '-' || second == '=' || second == '>';
    case '=':
      return second == '=' || second == '>';
    case ':':
    case '*':
    case '/':
      return second == '=';
    default:
      return false;
  }
}

std::size_t sizeOfName(std::string_view text) {
  std::size_t size = 1;
  while (size < text.size() && isNameByte(text[size])) ++size;
  return size;
}

// With "->" these are one token.
bool isAliasWord(std::string_view name) {
  return equalNoCase(name, "m") || equalNoCase(name, "field");
}

std::size_t sizeOfToken(std::string_view text) {
  const char first = text[0];
  if (isNameByte(first)) {
    const std::size_t size = sizeOfName(text);
    return isAliasWord(text.substr(0, size)) && text.substr(size).starts_with("->") ? size + 2
                                                                                    : size;
  }
  if (isQuote(first)) {
    const std::size_t closing = text.find(first, 1);
    return closing == std::string_view::npos ? text.size() : closing + 1;
  }
  if (text.size() == 1) return 1;
  if (first == '.') {
    if (isDigit(text[1])) return sizeOfName(text);
    for (const std::string_view token : kDotted) {
      if (startsWithNoCase(text, token)) return token.size();
    }
  }
  return isPair(first, text[1]) ? 2 : 1;
}

std::string_view takeToken(std::string_view& text) {
  std::size_t blanks = 0;
  while (blanks < text.size() && (isBlank(text[blanks]) || text[blanks] == '\n')) ++blanks;
  text.remove_prefix(blanks);
  if (text.empty()) return {};
  const std::string_view token = text.substr(0, sizeOfToken(text));
  text.remove_prefix(token.size());
  return token;
}

// What "++" and "--" can stand in front of.
bool startsOperand(std::string_view token) {
  return !token.empty() &&
         (isNameByte(token[0]) || token[0] == '(' || token[0] == '&' || token[0] == ':');
}

// Whether the third token matters, given the two before it.
bool needsThird(std::string_view word, std::string_view next) {
  if (next.empty()) return false;
  if (!isNameByte(next[0]))
    return std::string_view(":+-^%").find(next[0]) != std::string_view::npos;
  const eStatementWord meaning = statementWord(next);
  return (meaning == kFunction || meaning == kMethod) && statementWord(word) != kNone;
}

}  // namespace

bool tOpening::wordIsName() const {
  if (next.empty()) return false;
  switch (next[0]) {
    case '[':
      return true;
    case '=':
      return next == "=";
    case '.':
      return next == ".";
    case ':':
      return next == ":=" || third.empty() || third[0] != ':';  // "::" begins an operand
    case '*':
    case '/':
      return next.size() > 1;
    case '^':
    case '%':
      return third == "=";
    case '+':
    case '-':
      if (next == "++" || next == "--") return !startsOperand(third);
      return next.size() > 1;
    default:
      return false;
  }
}

std::string_view nameAt(const char* text) {
  const char* end = text;
  bool name = false;
  for (; isNameByte(*end); ++end) name = name || !isDigit(*end);
  return {text, name ? static_cast<std::size_t>(end - text) : 0};
}

tOpening openingOf(std::string_view word, std::string_view rest) {
  tOpening opening;
  opening.word = word;
  opening.next = takeToken(rest);
  if (needsThird(word, opening.next)) opening.third = takeToken(rest);
  return opening;
}

bool isName(std::string_view token) {
  bool name = false;
  for (const char c : token) {
    if (!isNameByte(c)) return false;
    name = name || !isDigit(c);
  }
  return name;
}

void tIfGroup::take(char c) {
  if (closed_) {
    more_ = true;
    return;
  }
  switch (c) {
    case '(':
    case '[':
    case '{':
      ++depth_;
      break;
    case ')':
    case ']':
    case '}':
      closed_ = --depth_ == 0;
      break;
    case ',':
      comma_ = comma_ || depth_ == 1;
      break;
    default:
      break;
  }
}

bool tIfGroup::isFunction(std::string_view rest) {
  tIfGroup group;
  while (!group.more_) {
    const std::string_view token = takeToken(rest);
    if (token.empty()) break;
    group.take(token[0]);
  }
  return group.isFunction();
}

}  // namespace precomp
