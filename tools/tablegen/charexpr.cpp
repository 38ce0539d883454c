#include "tools/tablegen/charexpr.h"

#include <algorithm>
#include <cctype>
#include <utility>

namespace tablegen {
namespace {

bool isBlank(char c) {
  return c == ' ' || c == '\t';
}
bool isLetter(std::uint32_t c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}
std::uint32_t code(char c) {
  return static_cast<unsigned char>(c);
}

tCharExpr set(std::vector<tCharRange> ranges) {
  return {tCharExpr::kSet, normalised(std::move(ranges)), {}};
}

tCharExpr wrapped(tCharExpr::eKind kind, tCharExpr part) {
  tCharExpr whole{kind, {}, {}};
  whole.parts.push_back(std::move(part));
  return whole;
}

std::vector<tCharRange> complement(const std::vector<tCharRange>& ranges) {
  std::vector<tCharRange> rest;
  std::uint32_t next = 0;
  for (const tCharRange& range : ranges) {
    if (range.low > next) rest.push_back({next, range.low - 1});
    next = range.high + 1;
  }
  if (next <= kMaxCode) rest.push_back({next, kMaxCode});
  return rest;
}

/// A recursive-descent parser for one expression.
class tReader {
 public:
  tReader(std::string_view text, const tDefinitions& definitions)
      : text_(text), definitions_(definitions) {}

  tCharExpr choice();
  std::string_view rest() const { return text_.substr(at_); }

 private:
  bool atEnd() const { return at_ == text_.size(); }
  bool sees(char c) const { return !atEnd() && text_[at_] == c; }
  bool accept(char c);
  char take(const char* missing);
  bool endsSequence() const;

  tCharExpr sequence();
  tCharExpr repeated();
  tCharExpr atom();
  tCharExpr group();
  tCharExpr characterClass();
  tCharExpr text(char quote);
  tCharExpr definition();
  std::uint32_t escaped();
  std::uint32_t hexCode();

  std::string_view text_;
  std::size_t at_ = 0;
  int depth_ = 0;
  const tDefinitions& definitions_;
};

bool tReader::accept(char c) {
  if (!sees(c)) return false;
  ++at_;
  return true;
}

char tReader::take(const char* missing) {
  if (atEnd()) throw tCharExprError(std::string(missing) + " is missing");
  return text_[at_++];
}

bool tReader::endsSequence() const {
  if (atEnd() || sees('|')) return true;
  return depth_ > 0 ? sees(')') : isBlank(text_[at_]);
}

tCharExpr tReader::choice() {
  tCharExpr first = sequence();
  if (!sees('|')) return first;
  tCharExpr all = wrapped(tCharExpr::kChoice, std::move(first));
  while (accept('|')) all.parts.push_back(sequence());
  return all;
}

tCharExpr tReader::sequence() {
  tCharExpr all;
  while (!endsSequence()) {
    if (isBlank(text_[at_])) {
      ++at_;
    } else {
      all.parts.push_back(repeated());
    }
  }
  if (all.parts.empty()) throw tCharExprError("an expression is missing");
  return all;
}

tCharExpr tReader::repeated() {
  tCharExpr part = atom();
  for (;;) {
    if (accept('?')) {
      part = wrapped(tCharExpr::kOptional, std::move(part));
    } else if (accept('+')) {
      part = wrapped(tCharExpr::kMany, std::move(part));
    } else if (accept('*')) {
      part = wrapped(tCharExpr::kOptional, wrapped(tCharExpr::kMany, std::move(part)));
    } else {
      return part;
    }
  }
}

tCharExpr tReader::atom() {
  const char c = text_[at_++];
  switch (c) {
    case '(':
      return group();
    case '[':
      return characterClass();
    case '{':
      return definition();
    case '"':
    case '\'':
      return text(c);
    case '\\': {
      const std::uint32_t value = escaped();
      return set({{value, value}});
    }
    case ')':
    case ']':
    case '}':
    case '?':
    case '*':
    case '+':
      throw tCharExprError(std::string("\"") + c + "\" is out of place");
    default:
      return set({{code(c), code(c)}});
  }
}

tCharExpr tReader::group() {
  ++depth_;
  tCharExpr inner = choice();
  --depth_;
  if (!accept(')')) throw tCharExprError("\")\" is missing");
  return inner;
}

tCharExpr tReader::characterClass() {
  const bool negated = accept('^');
  std::vector<tCharRange> ranges;
  const auto character = [this] {
    const char c = take("\"]\"");
    return c == '\\' ? escaped() : code(c);
  };
  while (!accept(']')) {
    const std::uint32_t low = character();
    std::uint32_t high = low;
    if (sees('-') && text_.substr(at_, 2) != "-]") {
      ++at_;
      high = character();
    }
    if (low > high) throw tCharExprError("a range goes downwards");
    ranges.push_back({low, high});
  }
  ranges = normalised(std::move(ranges));
  if (negated) ranges = complement(ranges);
  if (ranges.empty()) throw tCharExprError("a class is empty");
  return set(std::move(ranges));
}

// The part after "~" becomes nested optional tails: PR~OC is PR(O(C)?)?.
tCharExpr tReader::text(char quote) {
  const bool anyCase = quote == '\'';
  std::vector<tCharExpr> characters;
  std::size_t shortest = std::string_view::npos;
  for (;;) {
    const char c = take("the closing quote");
    if (c == quote) break;
    if (c == '~' && anyCase) {
      if (shortest != std::string_view::npos) throw tCharExprError("a second \"~\" in a text");
      shortest = characters.size();
      continue;
    }
    const std::uint32_t value = c == '\\' ? escaped() : code(c);
    const bool folded = anyCase && isLetter(value);
    characters.push_back(folded
                             ? set({{value & ~0x20u, value & ~0x20u}, {value | 0x20, value | 0x20}})
                             : set({{value, value}}));
  }
  if (characters.empty() || shortest == 0) throw tCharExprError("a text is empty");

  tCharExpr tail;
  while (shortest < characters.size()) {
    tail.parts.insert(tail.parts.begin(), std::move(characters.back()));
    characters.pop_back();
    tail = wrapped(tCharExpr::kSequence, wrapped(tCharExpr::kOptional, std::move(tail)));
  }
  tCharExpr all{tCharExpr::kSequence, {}, std::move(characters)};
  if (!tail.parts.empty()) all.parts.push_back(std::move(tail));
  return all;
}

tCharExpr tReader::definition() {
  const std::size_t close = text_.find('}', at_);
  if (close == std::string_view::npos) throw tCharExprError("\"}\" is missing");
  const std::string_view name = text_.substr(at_, close - at_);
  const auto found = definitions_.find(name);
  if (found == definitions_.end()) {
    throw tCharExprError("\"" + std::string(name) + "\" is not defined");
  }
  at_ = close + 1;
  return found->second;
}

std::uint32_t tReader::escaped() {
  const char c = take("the character behind a backslash");
  switch (c) {
    case 'n':
      return '\n';
    case 't':
      return '\t';
    case 'r':
      return '\r';
    case 'x':
      return hexCode();
    default:
      if (std::ispunct(static_cast<unsigned char>(c)) == 0) {
        throw tCharExprError(std::string("\"\\") + c + "\" is no known escape");
      }
      return code(c);
  }
}

std::uint32_t tReader::hexCode() {
  const bool braces = accept('{');
  std::uint32_t value = 0;
  std::size_t digits = 0;
  const std::size_t limit = braces ? 4 : 2;
  while (digits < limit && !atEnd() && std::isxdigit(static_cast<unsigned char>(text_[at_])) != 0) {
    const char c = text_[at_++];
    const std::uint32_t digit = c <= '9' ? code(c) - '0' : (code(c) | 0x20) - 'a' + 10;
    value = value * 16 + digit;
    ++digits;
  }
  const bool complete = braces ? digits > 0 && accept('}') : digits == limit;
  if (!complete) throw tCharExprError("a hexadecimal code is malformed");
  return value;
}

}  // namespace

std::vector<tCharRange> normalised(std::vector<tCharRange> ranges) {
  std::sort(ranges.begin(), ranges.end(),
            [](const tCharRange& a, const tCharRange& b) { return a.low < b.low; });
  std::vector<tCharRange> joined;
  for (const tCharRange& range : ranges) {
    if (!joined.empty() && range.low <= joined.back().high + 1) {
      joined.back().high = std::max(joined.back().high, range.high);
    } else {
      joined.push_back(range);
    }
  }
  return joined;
}

tCharExpr parseCharExpr(std::string_view& text, const tDefinitions& definitions) {
  tReader reader(text, definitions);
  tCharExpr expr = reader.choice();
  if (!reader.rest().empty() && !isBlank(reader.rest().front())) {
    throw tCharExprError("the expression is malformed");
  }
  text = reader.rest();
  return expr;
}

}  // namespace tablegen
