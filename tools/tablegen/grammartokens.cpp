#include "tools/tablegen/grammartokens.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "tools/tablegen/generror.h"

namespace tablegen {
namespace {

/// Removes a quoted spelling from the front of `rest`. False if it is unterminated or empty.
bool takeSpelling(std::string& rest, std::string& spelling) {
  if (rest.empty() || rest.front() != '"') return true;
  std::size_t at = 1;
  while (at < rest.size() && rest[at] != '"') at += rest[at] == '\\' ? 2 : 1;
  if (at >= rest.size() || at == 1) return false;
  spelling = rest.substr(1, at - 1);
  rest.erase(0, at + 1);
  return true;
}

/// Reads "/* @group @group */" or nothing.
bool readGroups(const std::string& rest, std::vector<std::string>& groups) {
  std::istringstream words(rest);
  std::string word;
  if (!(words >> word)) return true;
  if (word != "/*") return false;
  while (words >> word && word.size() > 1 && word[0] == '@') groups.push_back(word.substr(1));
  return word == "*/" && !(words >> word);
}

bool readToken(const std::string& line, tToken& token) {
  std::istringstream words(line);
  std::string keyword;
  if (!(words >> keyword >> token.name >> token.number) || keyword != "%token") return false;
  std::string rest;
  if (!(words >> std::ws)) return true;
  std::getline(words, rest);
  return takeSpelling(rest, token.spelling) && readGroups(rest, token.groups);
}

}  // namespace

tGrammarTokens::tGrammarTokens(std::istream& grammar, const std::string& file) {
  std::string line;
  for (long number = 1; std::getline(grammar, line); ++number) {
    if (line.rfind("%%", 0) == 0) break;
    if (line.rfind("%token", 0) != 0) continue;
    tToken token;
    if (!readToken(line, token)) {
      throw tGenError(file, number, "expected %token Name number \"spelling\" /* @group */");
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
