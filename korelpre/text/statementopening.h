#pragma once

#include <string_view>

namespace precomp {

/// The first tokens of a statement, as far as its meaning hangs on them. Each is empty when it is
/// not there, the first one too when the statement does not begin with a word.
struct tOpening {
  std::string_view word;
  std::string_view next;
  std::string_view third;

  /// Whether what follows makes a plain name of the first word, whatever it means otherwise: it is
  /// assigned to, indexed, an alias or an object.
  bool wordIsName() const;
};

/// The name that stands at `text`, which a byte that belongs to no name must end somewhere; empty
/// when none stands there.
std::string_view nameAt(const char* text);

/// The opening of a statement that is written out, without comments: its first word and what stands
/// behind it. The third token is left out where it has no bearing.
tOpening openingOf(std::string_view word, std::string_view rest);

/// Whether a token is a name or a keyword.
bool isName(std::string_view token);

/// Tells the function If(...) from the structure: feed it what stands behind the word, strings
/// aside, bracket by bracket.
class tIfGroup {
 public:
  void take(char c);
  /// Whether all of it was one group in parentheses with a comma of its own.
  bool isFunction() const { return closed_ && !more_ && comma_; }
  /// For a statement that is written out; `rest` begins behind the word.
  static bool isFunction(std::string_view rest);

 private:
  int depth_ = 0;
  bool comma_ = false;
  bool closed_ = false;
  bool more_ = false;
};

}  // namespace precomp
