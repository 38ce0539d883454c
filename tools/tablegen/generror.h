#pragma once

#include <stdexcept>
#include <string>

namespace tablegen {

/// A fault in a grammar source. Its text is what the user sees: "file:line: what is wrong". Line 0
/// is a fault of the whole file.
class tGenError : public std::runtime_error {
 public:
  tGenError(const std::string& file, long line, const std::string& text)
      : std::runtime_error(file + (line > 0 ? ":" + std::to_string(line) : "") + ": " + text) {}
};

}  // namespace tablegen
