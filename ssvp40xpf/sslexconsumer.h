#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "ssvp40xpf/sssto.h"

/// The last accepting position of a scan.
struct SSLexMark {
  std::size_t index = 0;   // in the consumer's buffer, after the accepted character
  unsigned lineFeeds = 0;  // from the start of the lexeme
  unsigned column = 1;     // of the character at the mark
};

/// An input source. Its buffer always contains the pending lexeme: the text from start() to next(),
/// which the scanner has read but not yet accepted.
class SSLexConsumer : public SSObject, public SSExceptionPresent {
 public:
  enum SSLexConsumerType {
    charType = 0,  // 8-bit characters
    wideType = 1,  // 16-bit units
    textType = 2,  // 8-bit characters read in text mode
  };

  virtual ~SSLexConsumer() = default;

  /// Reads the next character into current(). Returns 0 at the end of the input.
  virtual int operator++();
  /// Reads up to freeSize() more bytes to freeSpace() and returns their number; 0 at the end.
  virtual std::size_t nextBuffer() = 0;

  SSLexConsumerType type() const { return type_; }
  unsigned current() const { return current_; }
  bool endOfData() const { return endOfData_; }
  /// The buffer and byte indexes into it.
  const unsigned char* buffer() const { return data_; }
  std::size_t bufferSize() const { return bufferSize_; }
  std::size_t increment() const { return increment_; }
  std::size_t start() const { return start_; }
  std::size_t next() const { return next_; }
  std::size_t dataEnd() const { return dataEnd_; }
  std::size_t shiftedBytes() const { return shifted_; }
  /// The number of characters read so far, not counting a byte-order mark.
  std::size_t absoluteOffset() const { return position(next_); }
  /// The offset of the pending lexeme, in characters from the start of the input.
  std::size_t startOffset() const { return position(start_); }
  /// Line and column, from 1, of the next character and of the start of the pending lexeme.
  unsigned line() const { return line_; }
  unsigned column() const { return column_; }
  unsigned startLine() const { return startLine_; }
  unsigned startColumn() const { return startColumn_; }
  /// Sets the position of the first character, for input that is part of a larger text.
  void setPosition(unsigned line, unsigned column);

  /// The position after the last character read.
  SSLexMark mark() const { return {next_, line_ - startLine_, column_}; }
  /// The text of the pending lexeme, and its length in characters up to a mark.
  const unsigned char* lexemeText() const { return data_ + start_; }
  std::size_t lexemeLength(const SSLexMark& to) const { return (to.index - start_) / unitSize(); }
  /// Moves the start of the pending lexeme to a mark; characters read beyond it become unread.
  void acceptTo(const SSLexMark& to);
  /// Drops the pending lexeme: the next one starts at the next character.
  void discard();
  /// Unreads the pending lexeme.
  void rewind();

  /// Whether the whole input is 8-bit text in the buffer, so that it can be scanned in place
  /// without calling operator++. A derived class that overrides operator++ for such input calls
  /// setWholeInMemory(false).
  bool wholeInMemory() const { return wholeInMemory_; }
  /// Marks the text up to `index` as read, when scanning in place.
  void readTo(std::size_t index);
  /// The mark at `index`, which must not precede start(); the text before it may still be unread.
  SSLexMark markAt(std::size_t index) const;

  std::size_t unitSize() const { return unitSize(type_); }
  /// Whether the byte order of the units differs from the native one.
  bool swapped() const { return swapped_; }

 protected:
  static constexpr unsigned kByteOrderMark = 0xFEFF;
  static constexpr unsigned kSwappedMark = 0xFFFE;

  /// A buffer of `size` bytes that grows by `increment` (0: it does not; 1 to 511:
  /// SSErrorIncrement).
  SSLexConsumer(SSLexConsumerType type, std::size_t size, std::size_t increment);
  /// A text of `bytes` bytes, either copied or used directly; the caller then keeps it alive.
  SSLexConsumer(SSLexConsumerType type, const void* text, std::size_t bytes, bool copied);

  /// Whether nextBuffer() is known to have no more data, so that a full buffer need not grow.
  virtual bool atEnd() { return false; }

  unsigned char* freeSpace() { return storage_.data() + dataEnd_; }
  std::size_t freeSize() const { return bufferSize_ - dataEnd_; }
  /// Discards the bytes before the pending lexeme. False if there are none.
  bool shift();
  /// Enlarges the buffer by the increment. False if the buffer has a fixed size.
  bool grow();
  /// Makes room for at least `bytes` bytes. False if the buffer cannot grow that far.
  bool makeRoom(std::size_t bytes);
  void append(const void* bytes, std::size_t count);
  static std::size_t unitSize(SSLexConsumerType type) { return type == wideType ? 2 : 1; }
  void setWholeInMemory(bool whole) { wholeInMemory_ = whole; }

 private:
  bool refill();
  bool available();
  unsigned unitAt(std::size_t index) const;
  void skipByteOrderMark();
  std::size_t position(std::size_t index) const {
    return (shifted_ + index - markBytes_) / unitSize();
  }

  SSLexConsumerType type_;
  std::vector<unsigned char> storage_;
  const unsigned char* data_;
  std::size_t bufferSize_;
  std::size_t increment_;
  bool wholeInMemory_ = false;

  // Reading state.
  std::size_t start_ = 0;
  std::size_t next_ = 0;
  std::size_t dataEnd_ = 0;
  std::size_t shifted_ = 0;
  std::size_t markBytes_ = 0;  // size of a skipped byte-order mark
  unsigned current_ = 0;
  unsigned line_ = 1;
  unsigned column_ = 1;
  unsigned startLine_ = 1;
  unsigned startColumn_ = 1;
  bool endOfData_ = false;
  bool begun_ = false;
  bool swapped_ = false;
};

inline void SSLexConsumer::acceptTo(const SSLexMark& to) {
  start_ = next_ = to.index;
  line_ = startLine_ += to.lineFeeds;
  column_ = startColumn_ = to.column;
}

inline void SSLexConsumer::discard() {
  start_ = next_;
  startLine_ = line_;
  startColumn_ = column_;
}

inline void SSLexConsumer::rewind() {
  next_ = start_;
  line_ = startLine_;
  column_ = startColumn_;
}

/// Text in memory. 8-bit text is scanned in place.
class SSLexStringConsumer : public SSLexConsumer {
 public:
  enum eText {
    kCopied,
    kBorrowed,  // the caller keeps the text alive and unchanged for the consumer's lifetime
  };

  /// Copies a zero-terminated string. Null is an empty text.
  explicit SSLexStringConsumer(const char* text, SSLexConsumerType type = charType);
  /// A text of `length` characters, which may include zeros. With `wideType` the text consists of
  /// `length` 16-bit units.
  SSLexStringConsumer(const void* text, std::size_t length, SSLexConsumerType type = charType,
                      eText keep = kCopied);
  /// Zero-terminated wide strings, read as 16-bit units; a code above 0xFFFF becomes two units.
  explicit SSLexStringConsumer(const char16_t* text);
  explicit SSLexStringConsumer(const wchar_t* text);

  std::size_t nextBuffer() override { return 0; }

 protected:
  bool atEnd() override { return true; }
};

/// A buffer that the caller fills. The scanner treats the end of the data added so far as the end
/// of the input, and continues once more has been added.
class SSLexDataConsumer : public SSLexConsumer {
 public:
  explicit SSLexDataConsumer(std::size_t size, std::size_t increment = 0)
      : SSLexConsumer(textType, size, increment) {}

  /// Adds a copy of the data. False (SSErrorAddTooLong) if the buffer cannot grow that far.
  bool addBuffer(const void* data, std::size_t size);
  std::size_t nextBuffer() override { return 0; }

 protected:
  bool atEnd() override { return true; }
};
