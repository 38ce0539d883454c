#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace tablegen {

/// One `%token Name 61 "spelling" /* @group */` line. The spelling is as written, without its
/// quotes, escapes unresolved; it is empty when the line has none. Groups are sets of tokens that
/// the program asks for.
struct tToken {
  std::string name;
  std::uint32_t number = 0;
  std::string spelling;
  std::vector<std::string> groups;
};

/// The tokens that a bison grammar declares, in its order.
class tGrammarTokens {
 public:
  /// Reads the declarations; `file` is the name for messages. Throws tGenError for a malformed
  /// line and for a name, number or spelling that stands twice.
  tGrammarTokens(std::istream& grammar, const std::string& file);

  /// The token with that name, null when there is none.
  const tToken* find(std::string_view name) const;

  const std::vector<tToken>& all() const { return tokens_; }

 private:
  std::vector<tToken> tokens_;
};

}  // namespace tablegen
