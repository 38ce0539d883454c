#pragma once

#include <cstddef>
#include <string_view>

constexpr char upperAscii(char c) noexcept {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}
constexpr char lowerAscii(char c) noexcept {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

/// Compares ignoring the case of ASCII letters.
bool equalNoCase(std::string_view a, std::string_view b) noexcept;
bool startsWithNoCase(std::string_view text, std::string_view start) noexcept;
/// Returns a value less than, equal to or greater than 0. Letters are folded to upper case, so "_"
/// sorts after "Z".
int compareNoCase(std::string_view a, std::string_view b) noexcept;

/// `text` without leading and trailing blanks, tabs and line ends.
std::string_view trimmed(std::string_view text) noexcept;
std::string_view trimmedRight(std::string_view text) noexcept;

/// The index of the first occurrence of `what` in `text` at or after `from`, or npos. Fast on long
/// texts in which the first and last byte of `what` rarely occur at the right distance.
std::size_t findText(std::string_view text, std::string_view what, std::size_t from = 0) noexcept;
/// The same, ignoring the case of ASCII letters.
std::size_t findTextNoCase(std::string_view text, std::string_view what,
                           std::size_t from = 0) noexcept;
