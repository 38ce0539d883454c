#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

/// A resizable byte buffer with guard bytes after its end.
///
/// A size of 0 or above tString::maxSize() + 1 is the fatal error
/// "tAutoChar::setSize() ERROR - invalid size". CheckBuffer detects writes past
/// the end: fatal error "tAutoChar::CheckBuffer() ERROR - *** BUFFER OVERRUN ***".
class tAutoChar {
 public:
  tAutoChar() noexcept = default;
  explicit tAutoChar(std::size_t size) { setSize(size); }

  /// Resizes the buffer, keeping the bytes that fit. New bytes are uninitialised.
  void setSize(std::size_t size);
  void CheckBuffer() const;

  char* data() noexcept { return bytes_.get(); }
  const char* data() const noexcept { return bytes_.get(); }
  std::size_t size() const noexcept { return size_; }
  /// All bytes but the last, which is the terminating zero; empty for an empty buffer. Embedded
  /// zero bytes do not end the text.
  std::string_view text() const noexcept {
    return size_ == 0 ? std::string_view() : std::string_view(bytes_.get(), size_ - 1);
  }
  /// Replaces the content with `text` and a terminating zero.
  void setText(std::string_view text);

 private:
  struct tFree {
    void operator()(char* bytes) const noexcept;
  };
  std::unique_ptr<char, tFree> bytes_;
  std::size_t size_ = 0;
};
