#include "cli/paint.h"

#include <unistd.h>

#include <cstdlib>

namespace {

const char* const kCodes[] = {"1", "2", "31", "32", "33", "36"};

bool isSet(const char* variable) {
  const char* const value = std::getenv(variable);
  return value != nullptr && *value != '\0';
}

}  // namespace

bool mayColour(int descriptor) {
  const char* const terminal = std::getenv("TERM");
  return isatty(descriptor) == 1 && !isSet("NO_COLOR") && terminal != nullptr &&
         std::string_view(terminal) != "dumb";
}

std::string tPaint::operator()(eColour colour, std::string_view text) const {
  if (!on_ || text.empty()) return std::string(text);
  return std::string("\033[") + kCodes[colour] + "m" + std::string(text) + "\033[0m";
}
