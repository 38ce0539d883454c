#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/bytereader.h"

/// Makes texts out of bytes: each byte chooses a production. Beyond the end of the input the first
/// production of each symbol is taken, so that the text comes to an end.
class tGrammar {
 public:
  /// A line "S=first | second" holds the productions of the symbol S. In them "$S" stands for a
  /// symbol, "$/" for a line feed, "$$" for a dollar, "$=" for a number that no other place has.
  explicit tGrammar(std::string_view text);

  std::string make(char symbol, tByteReader& input) const {
    std::string made;
    int steps = kMostSteps;
    expand(symbol, input, kDeepest, steps, made);
    return made;
  }

 private:
  static constexpr int kDeepest = 30;
  static constexpr int kMostSteps = 800;

  void expand(char symbol, tByteReader& input, int depth, int& steps, std::string& made) const;

  std::array<std::vector<std::string_view>, 128> productions_;
};

/// Of programs: P is a main source, H a header. Of command lines: C, an argument on each line.
extern const tGrammar kProgramGrammar;
extern const tGrammar kCommandGrammar;
