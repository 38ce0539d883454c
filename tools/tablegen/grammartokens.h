#pragma once

#include <cstdint>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace tablegen {

/// One `%token Name 61 "spelling" /* @group */` line. The spelling is stored without its quotes and
/// with escapes unresolved; it is empty if the line has none. Groups are named sets of tokens that
/// the program tests for.
struct tToken {
  std::string name;
  std::uint32_t number = 0;
  std::string spelling;
  std::vector<std::string> groups;
};

/// The tokens declared by a bison grammar, in source order.
class tGrammarTokens {
 public:
  /// Reads the declarations; `file` is the name used in messages. Throws tGenError for a malformed
  /// line and for a duplicate name, number or spelling.
  tGrammarTokens(std::istream& grammar, const std::string& file);

  /// The token with that name, or null.
  const tToken* find(std::string_view name) const;

  const std::vector<tToken>& all() const { return tokens_; }

 private:
  std::vector<tToken> tokens_;
};

}  // namespace tablegen
