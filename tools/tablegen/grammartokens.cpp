#include "tools/tablegen/grammartokens.h"

#include <algorithm>
#include <cctype>
#include <sstream>
#include <utility>

#include "tools/tablegen/generror.h"

namespace tablegen {
namespace {

/// Takes the quotes off a spelling. False when they are not one pair around all of it.
bool unquote(std::string& spelling) {
  while (!spelling.empty() && std::isspace(static_cast<unsigned char>(spelling.back())) != 0) {
    spelling.pop_back();
  }
  if (spelling.size() < 3 || spelling.front() != '"') return false;
  std::size_t at = 1;
  while (at < spelling.size() && spelling[at] != '"') at += spelling[at] == '\\' ? 2 : 1;
  if (at + 1 != spelling.size()) return false;
  spelling = spelling.substr(1, at - 1);
  return true;
}

bool readToken(const std::string& line, tToken& token) {
  std::istringstream words(line);
  std::string keyword;
  if (!(words >> keyword >> token.name >> token.number) || keyword != "%token") return false;
  if (!(words >> std::ws)) return true;
  std::getline(words, token.spelling);
  return token.spelling.empty() || unquote(token.spelling);
}

}  // namespace

tGrammarTokens::tGrammarTokens(std::istream& grammar, const std::string& file) {
  std::string line;
  for (long number = 1; std::getline(grammar, line); ++number) {
    if (line.rfind("%%", 0) == 0) break;
    if (line.rfind("%token", 0) != 0) continue;
    tToken token;
    if (!readToken(line, token)) {
      throw tGenError(file, number, "expected %token Name number \"spelling\"");
    }
    const auto clash = [&token](const tToken& other) {
      return other.name == token.name || other.number == token.number ||
             (!token.spelling.empty() && other.spelling == token.spelling);
    };
    if (std::any_of(tokens_.begin(), tokens_.end(), clash)) {
      throw tGenError(file, number, "name, number or spelling of " + token.name + " stands twice");
    }
    tokens_.push_back(std::move(token));
  }
}

const tToken* tGrammarTokens::find(std::string_view name) const {
  const auto found = std::find_if(tokens_.begin(), tokens_.end(),
                                  [name](const tToken& token) { return token.name == name; });
  return found == tokens_.end() ? nullptr : &*found;
}

}  // namespace tablegen
