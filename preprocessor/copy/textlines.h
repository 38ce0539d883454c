#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

// A line ends at "\r\n", "\r" or "\n".

/// The index just past the line end at `at`.
inline std::size_t behindLineEnd(std::string_view text, std::size_t at) {
  return at + (text.substr(at).starts_with("\r\n") ? 2 : 1);
}

/// The index just past the line that `at` is in, line end included.
inline std::size_t behindLine(std::string_view text, std::size_t at) {
  at = text.find_first_of("\r\n", at);
  return at == std::string_view::npos ? text.size() : behindLineEnd(text, at);
}

/// Takes a line off the front of `rest` and returns it without its line end.
inline std::string_view takeLine(std::string_view& rest) {
  const std::size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
  const std::string_view line = rest.substr(0, end);
  rest.remove_prefix(end == rest.size() ? end : behindLineEnd(rest, end));
  return line;
}
