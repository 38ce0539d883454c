#pragma once

#include <cstddef>
#include <cstdint>

#include "ssvp40xpf/sssto.h"

/// A token with its text. A lexeme made by the scanner is one block: header, text and a 16-bit
/// zero. Freed when the last reference is released.
class SSLexLexeme : public SSObject, public SSRefCount {
 public:
  /// The size of a lexeme without its text, in bytes.
  static constexpr std::size_t kOverhead = 66;

  /// A lexeme with its text in the same block. `text` has `length` bytes, or `length` 16-bit units
  /// if `byteText` is false. The caller holds the first reference.
  static SSLexLexeme* make(const void* text, std::size_t length, unsigned token, unsigned line,
                           unsigned offset, bool byteText = true);

  /// A lexeme from explicit values, made with `new`; the text is copied to a separate block.
  SSLexLexeme(std::size_t length, unsigned token, const char* text, unsigned line, unsigned offset,
              unsigned type = 0);
  SSLexLexeme(const SSLexLexeme&) = delete;
  SSLexLexeme& operator=(const SSLexLexeme&) = delete;

  void refInc() { ++count_; }
  /// Releases `count` references; destroys the lexeme with the last one. Returns how many are left.
  unsigned refDec(unsigned count = 1) {
    count_ = count_ > count ? count_ - count : 0;
    if (count_ != 0) return count_;
    refFree();
    return 0;
  }
  /// Destroys the lexeme regardless of its references.
  void refFree();

  unsigned token() const { return token_; }
  unsigned line() const { return line_; }
  /// The column of the first character, from 1.
  unsigned offset() const { return offset_; }
  /// The zero-based offset of the first character from the start of the input.
  std::size_t absoluteOffset() const { return absoluteOffset_; }
  /// 0, or the number that the parser uses instead of the token.
  unsigned type() const { return type_; }
  /// The number that the parser looks up: the type if there is one, otherwise the token.
  unsigned symbol() const { return type_ != 0 ? type_ : token_; }
  /// The length of the text in characters.
  std::size_t length() const { return length_; }
  /// Whether the text consists of 8-bit characters rather than 16-bit units.
  bool isByteText() const { return byteText_; }
  bool ownsBuffer() const { return ownsBuffer_; }
  const char* text() const { return text_; }
  const char16_t* wideText() const { return reinterpret_cast<const char16_t*>(text_); }
  /// The size of the text in bytes plus kOverhead. The pool may round it up.
  std::size_t allocatedSize() const { return textBytes() + kOverhead; }

  void setToken(unsigned token) { token_ = token; }
  void setLine(unsigned line) { line_ = line; }
  void setOffset(unsigned offset) { offset_ = offset; }
  void setAbsoluteOffset(std::size_t position) { absoluteOffset_ = position; }
  void setType(unsigned type) { type_ = type; }
  /// Truncates the text. False, without effect, if it is shorter than that.
  bool setLength(std::size_t length);
  /// Swaps the bytes of each unit of a 16-bit text.
  void swapUnits();
  /// Replaces the text with a copy of 8-bit characters in a separate block.
  void setBuffer(const char* text, std::size_t length);

  static void* operator new(std::size_t size);
  static void operator delete(void* storage, std::size_t size);

 private:
  struct tInline {};
  SSLexLexeme(tInline, std::size_t length, unsigned token, unsigned line, unsigned offset,
              bool byteText);
  ~SSLexLexeme();

  std::size_t textBytes() const { return byteText_ ? length_ : 2 * length_; }
  void terminate();

  bool ownsBuffer_;
  bool byteText_;
  std::uint32_t line_;
  std::uint32_t token_;
  std::uint32_t offset_;
  std::uint32_t type_ = 0;
  std::size_t length_;
  std::size_t absoluteOffset_ = 0;
  char* text_;
  std::uint64_t storage_;  // size of this object including the text in its block
};
