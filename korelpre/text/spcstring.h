#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "lib_base/stringz.h"
#include "ssvp40xpf/sspool.h"

namespace precomp {

/// One token of a statement: its text, the blanks that stood before it, and what it is.
class tSpcString : public tString {
 public:
  tSpcString() noexcept = default;
  explicit tSpcString(const tString& text) : tString(text) {}
  tSpcString(std::size_t count, char c) : tString(count, c) {}
  /// A token that refers to its text, which must outlive it.
  tSpcString(std::string_view text, tString&& spacing, std::uint32_t kind, std::uint32_t aux,
             std::uint32_t line) noexcept
      : tString(borrow(text)),
        spacing_(std::move(spacing)),
        kind_(static_cast<std::uint16_t>(kind)),
        aux_(static_cast<std::uint16_t>(aux)),
        line_(line) {}
  /// A copy with another spacing; aux is not copied.
  tSpcString(const tSpcString& other, const tString& spacing) noexcept
      : tString(other), spacing_(spacing), kind_(other.kind_), line_(other.line_) {}
  /// Copies text, kind, spacing and line.
  // Kept on purpose: aux is not copied.
  tSpcString(const tSpcString& other)
      : tString(other), spacing_(other.spacing_), kind_(other.kind_), line_(other.line_) {}
  tSpcString& operator=(const tSpcString& other) = default;

  const tString& spacing() const { return spacing_; }
  void setSpacing(const tString& spacing) { spacing_ = spacing; }
  void setText(const tString& text) { tString::operator=(text); }

  /// The production that made the token (see tokenkinds.h); 0 for a token made from bare text.
  std::uint32_t kind() const { return kind_; }
  void setKind(std::uint32_t kind) { kind_ = static_cast<std::uint16_t>(kind); }
  /// The scanner's number of the token.
  std::uint32_t aux() const { return aux_; }
  void setAux(std::uint32_t aux) { aux_ = static_cast<std::uint16_t>(aux); }
  /// The line of its source on which the token stood, from 1; 0 when a rule made it.
  std::uint32_t line() const { return line_; }
  void setLine(std::uint32_t line) { line_ = line; }

  // Tokens come and go by the million.
  static void* operator new(std::size_t size) {
    void* const block = ssPoolTake(size);
    return block != nullptr ? block : allocate(size);
  }
  static void operator delete(void* block, std::size_t size) noexcept {
    ssPoolRelease(block, size);
  }

 private:
  /// Lack of memory for a token is a fatal error, which names its size.
  static void* allocate(std::size_t size);

  // Rules keep tokens by the hundred thousand: both numbers are small.
  tString spacing_;
  std::uint16_t kind_ = 0;
  std::uint16_t aux_ = 0;
  std::uint32_t line_ = 0;
};

}  // namespace precomp
