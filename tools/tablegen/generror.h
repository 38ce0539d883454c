#pragma once

#include <stdexcept>
#include <string>

namespace tablegen {

/// An error in a grammar source. Its text is shown to the user: "file:line: what is wrong". Line 0
/// means the whole file.
class tGenError : public std::runtime_error {
 public:
  tGenError(const std::string& file, long line, const std::string& text)
      : std::runtime_error(file + (line > 0 ? ":" + std::to_string(line) : "") + ": " + text) {}
};

}  // namespace tablegen
