#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

/// A byte buffer of a settable size with a guard behind it.
///
/// A size of 0 or one past tString::maxSize() + 1 is the fatal error
/// "tAutoChar::setSize() ERROR - invalid size". Bytes written past the end are found by
/// CheckBuffer: fatal error "tAutoChar::CheckBuffer() ERROR - *** BUFFER OVERRUN ***".
class tAutoChar {
 public:
  tAutoChar() noexcept = default;
  explicit tAutoChar(std::size_t size) { setSize(size); }

  /// Changes the size and keeps the bytes that fit. New bytes are not initialised.
  void setSize(std::size_t size);
  void CheckBuffer() const;

  char* data() noexcept { return bytes_.get(); }
  const char* data() const noexcept { return bytes_.get(); }
  std::size_t size() const noexcept { return size_; }
  /// The bytes before the terminating zero that the owner keeps as the last byte; empty when the
  /// buffer has no bytes. Zero bytes before it do not cut the text.
  std::string_view text() const noexcept {
    return size_ == 0 ? std::string_view() : std::string_view(bytes_.get(), size_ - 1);
  }
  /// Makes the buffer hold `text` and a terminating zero.
  void setText(std::string_view text);

 private:
  struct tFree {
    void operator()(char* bytes) const noexcept;
  };
  std::unique_ptr<char, tFree> bytes_;
  std::size_t size_ = 0;
};
