// Plain lines are written from the source text; everything else goes through scanner and grammar.
// Whatever the source, both ways must give the same; the fuzz target "program" compares them too.

#include <gtest/gtest.h>

#include <string>

#include "tests/support/preprocess.h"

namespace {

std::string shown(const tPreprocessed& result) {
  return result.text + "\n== " + result.error;
}

const char* const kHeader = "h := One\n#define One 11\n  k(Two)  // c\n";

std::string throughBoth(const std::string& source, bool plain) {
  return shown(preprocessFiles({{"main.prw", source}, {"h.ch", kHeader}}, {}, plain));
}

// A program with everything in it, cut anywhere.
TEST(PlainLines, GiveTheSameForEveryTruncationOfAProgram) {
  const std::string program =
      "* first\n#include \"h.ch\"\n#define Two (One + ;\n  2) // c\nFunction f(a, b)\n"
      "#define F(a, date) [a, F(date)] ; 'x' .5\n F(1, F(2, ;\n Two))\n"
      "#ifdef One\n\tLocal x := {'it', \"is\"} ; y := Two\n\t#ifndef No /* c\n c */\n"
      "  a->END := .T. && c\n\t#else\n) nothing ~\n#endif\n#else\nskipped ;\n#endif\n#endif\n"
      "#xcommand A <x> [B <y: C, D &>] => f( <x>, #<y> ) ;\n  [ <.y.> ]\nReturn %notdel% /* c */\n";
  for (std::size_t size = 0; size <= program.size(); ++size) {
    const std::string source = program.substr(0, size);
    ASSERT_EQ(throughBoth(source, false), throughBoth(source, true)) << "source:\n" << source;
  }
}

}  // namespace
