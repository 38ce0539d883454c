#pragma once

#include <cstddef>
#include <cstdint>

#include "ssvp40xpf/sssto.h"

/// A token of the scanner. A lexeme that the scanner makes holds its text in its own storage:
/// header, text and a 16-bit zero. Released by the last holder of a reference.
class SSLexLexeme : public SSObject, public SSRefCount {
 public:
  /// Bytes that a lexeme takes besides its text.
  static constexpr std::size_t kOverhead = 66;

  /// A lexeme with its text inside. `text` holds `length` bytes, or `length` 16-bit units when
  /// `byteText` is false. The caller holds the first reference.
  static SSLexLexeme* make(const void* text, std::size_t length, unsigned token, unsigned line,
                           unsigned offset, bool byteText = true);

  /// A lexeme from explicit values, made with `new`; the text is copied into storage of its own.
  SSLexLexeme(std::size_t length, unsigned token, const char* text, unsigned line, unsigned offset,
              unsigned type = 0);
  SSLexLexeme(const SSLexLexeme&) = delete;
  SSLexLexeme& operator=(const SSLexLexeme&) = delete;

  void refInc() { ++count_; }
  /// Drops `count` references, and the lexeme with the last one. Returns how many are left.
  unsigned refDec(unsigned count = 1) {
    count_ = count_ > count ? count_ - count : 0;
    if (count_ != 0) return count_;
    refFree();
    return 0;
  }
  /// Destroys the lexeme whoever holds it.
  void refFree();

  unsigned token() const { return token_; }
  unsigned line() const { return line_; }
  /// Column of the first character, from 1.
  unsigned offset() const { return offset_; }
  /// Position of the first character from the start of the input, from 0.
  std::size_t absoluteOffset() const { return absoluteOffset_; }
  /// 0, or what the parser uses in place of the token.
  unsigned type() const { return type_; }
  /// What the parser looks up: the type, or the token when there is no type.
  unsigned symbol() const { return type_ != 0 ? type_ : token_; }
  /// Characters of text.
  std::size_t length() const { return length_; }
  /// Whether the text is of 8-bit characters; else of 16-bit units.
  bool isByteText() const { return byteText_; }
  bool ownsBuffer() const { return ownsBuffer_; }
  const char* text() const { return text_; }
  const char16_t* wideText() const { return reinterpret_cast<const char16_t*>(text_); }
  /// Bytes of text plus kOverhead. The pool may round that up.
  std::size_t allocatedSize() const { return textBytes() + kOverhead; }

  void setToken(unsigned token) { token_ = token; }
  void setLine(unsigned line) { line_ = line; }
  void setOffset(unsigned offset) { offset_ = offset; }
  void setAbsoluteOffset(std::size_t position) { absoluteOffset_ = position; }
  void setType(unsigned type) { type_ = type; }
  /// Cuts the text. False, without effect, for more characters than there are.
  bool setLength(std::size_t length);
  /// Exchanges the two bytes of each unit of a 16-bit text.
  void swapUnits();
  /// Replaces the text by a copy of 8-bit characters in storage of its own.
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
  std::uint64_t storage_;  // bytes of this object and of the text inside it
};
