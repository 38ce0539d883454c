// What the commands of the shipped standard header leave alone.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "tests/support/preprocess.h"

namespace {

std::string shippedHeader() {
  std::ifstream file(KRPRE_SOURCES "/headers/std.ch", std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

// "~" stands for the name.
std::string named(std::string text, const std::string& name) {
  for (std::size_t at = 0; (at = text.find('~', at)) != std::string::npos;) {
    text.replace(at, 1, name);
  }
  return text;
}

TEST(ShippedHeader, LetsFunctionsAndVariablesHaveTheNameOfACommand) {
  const char* const kCommands[] = {
      "Store",  "Default", "Save", "Restore", "Release", "Accept",  "Input", "Wait",    "Cls",
      "Clear",  "Read",    "Set",  "Append",  "Go",      "Goto",    "Skip",  "Locate",  "Continue",
      "Delete", "Recall",  "Sum",  "Count",   "Average", "Replace", "Index", "Reindex", "Pack",
      "Zap",    "Commit",  "Copy", "Unlock",  "Rename",  "Close",   "Quit"};
  const std::string kUses =
      "~(1, 2)\n~()\n~ := 1\n~ += 1\n~++\n~--\n~:Go(1)\n~->x := 2\n~[1] := 3\n~ = 4\n"
      "(~)->x := 5\nx := ~ + ~(1)\nx := o:~:n + .5 + y.n";
  const std::string header = shippedHeader();
  for (const char* command : kCommands) {
    const std::string source = named(kUses, command);
    const tPreprocessed result = preprocessFiles({{"std.ch", header}, {"main.prw", source}});
    EXPECT_EQ(result.text + result.error, source);
  }
}

}  // namespace
