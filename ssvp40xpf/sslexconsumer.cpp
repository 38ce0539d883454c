#include "ssvp40xpf/sslexconsumer.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>

namespace {

constexpr unsigned kLineFeed = 10;
constexpr std::size_t kSmallestIncrement = 512;

unsigned swapBytes(unsigned unit) {
  return ((unit & 0xFF) << 8) | (unit >> 8);
}

std::u16string toUnits(const wchar_t* text) {
  std::u16string units;
  for (; text != nullptr && *text != L'\0'; ++text) {
    auto code = static_cast<std::uint32_t>(*text);
    if (code > 0xFFFF) {
      code -= 0x10000;
      units += static_cast<char16_t>(0xD800 | ((code >> 10) & 0x3FF));
      code = 0xDC00 | (code & 0x3FF);
    }
    units += static_cast<char16_t>(code);
  }
  return units;
}

}  // namespace

SSLexConsumer::SSLexConsumer(SSLexConsumerType type, std::size_t size, std::size_t increment)
    : SSObject(ssCorrelator("SSCO")),
      type_(type),
      storage_(std::max<std::size_t>(size, 2)),
      data_(storage_.data()),
      bufferSize_(storage_.size()),
      increment_(increment) {
  if (increment == 0 || increment >= kSmallestIncrement) return;
  increment_ = 0;
  raise(SSErrorIncrement);
}

SSLexConsumer::SSLexConsumer(SSLexConsumerType type, const void* text, std::size_t bytes,
                             bool copied)
    : SSObject(ssCorrelator("SSCO")),
      type_(type),
      data_(static_cast<const unsigned char*>(text)),
      bufferSize_(bytes),
      increment_(0),
      dataEnd_(bytes),
      endOfData_(bytes == 0) {
  if (!copied || bytes == 0) return;
  storage_.assign(data_, data_ + bytes);
  data_ = storage_.data();
}

int SSLexConsumer::operator++() {
  if (!begun_) {
    begun_ = true;
    if (type_ == wideType) skipByteOrderMark();
  }
  if (!available()) {
    endOfData_ = true;
    return 0;
  }
  current_ = unitAt(next_);
  next_ += unitSize();
  if (current_ == kLineFeed) {
    ++line_;
    column_ = 1;
  } else {
    ++column_;
  }
  return 1;
}

bool SSLexConsumer::available() {
  while (dataEnd_ - next_ < unitSize()) {
    if (!refill()) return false;
  }
  return true;
}

unsigned SSLexConsumer::unitAt(std::size_t index) const {
  if (type_ != wideType) return data_[index];
  const unsigned unit = data_[index] | static_cast<unsigned>(data_[index + 1]) << 8;
  return swapped_ ? swapBytes(unit) : unit;
}

void SSLexConsumer::skipByteOrderMark() {
  if (!available()) return;
  const unsigned unit = unitAt(next_);
  if (unit != kByteOrderMark && unit != kSwappedMark) return;
  swapped_ = unit == kSwappedMark;
  markBytes_ = unitSize();
  next_ += unitSize();
  start_ = next_;
}

bool SSLexConsumer::refill() {
  if (atEnd()) return false;
  if (freeSize() == 0 && !shift() && !grow()) {
    raise(SSErrorLexemeTooLong, static_cast<long>(bufferSize_));
    return false;
  }
  const std::size_t added = nextBuffer();
  dataEnd_ += added;
  return added != 0;
}

bool SSLexConsumer::shift() {
  if (start_ == 0) return false;
  std::memmove(storage_.data(), storage_.data() + start_, dataEnd_ - start_);
  shifted_ += start_;
  next_ -= start_;
  dataEnd_ -= start_;
  start_ = 0;
  return true;
}

bool SSLexConsumer::grow() {
  if (increment_ == 0) return false;
  storage_.resize(storage_.size() + increment_);
  data_ = storage_.data();
  bufferSize_ = storage_.size();
  return true;
}

bool SSLexConsumer::makeRoom(std::size_t bytes) {
  if (freeSize() >= bytes) return true;
  shift();
  while (freeSize() < bytes) {
    if (!grow()) return false;
  }
  return true;
}

void SSLexConsumer::append(const void* bytes, std::size_t count) {
  if (count != 0) std::memcpy(freeSpace(), bytes, count);
  dataEnd_ += count;
  endOfData_ = false;
}

void SSLexConsumer::setPosition(unsigned line, unsigned column) {
  line_ = startLine_ = line;
  column_ = startColumn_ = column;
}

void SSLexConsumer::readTo(std::size_t index) {
  const SSLexMark to = markAt(index);
  next_ = index;
  line_ = startLine_ + to.lineFeeds;
  column_ = to.column;
  if (wholeInMemory_) endOfData_ = index == dataEnd_;
}

SSLexMark SSLexConsumer::markAt(std::size_t index) const {
  SSLexMark mark{index, 0, startColumn_};
  if (type_ != wideType) {
    const unsigned char* at = data_ + start_;
    const unsigned char* const end = data_ + index;
    while (at != end) {
      const void* const found = std::memchr(at, kLineFeed, static_cast<std::size_t>(end - at));
      if (found == nullptr) break;
      at = static_cast<const unsigned char*>(found) + 1;
      ++mark.lineFeeds;
      mark.column = 1;
    }
    mark.column += static_cast<unsigned>(end - at);
    return mark;
  }
  for (std::size_t at = start_; at < index; at += 2) {
    if (unitAt(at) == kLineFeed) {
      ++mark.lineFeeds;
      mark.column = 1;
    } else {
      ++mark.column;
    }
  }
  return mark;
}

SSLexStringConsumer::SSLexStringConsumer(const char* text, SSLexConsumerType type)
    : SSLexStringConsumer(text, text == nullptr ? 0 : std::strlen(text), type) {}

SSLexStringConsumer::SSLexStringConsumer(const void* text, std::size_t length,
                                         SSLexConsumerType type, eText keep)
    : SSLexConsumer(type, text, length * unitSize(type), keep == kCopied) {
  setWholeInMemory(type != wideType);
}

SSLexStringConsumer::SSLexStringConsumer(const char16_t* text)
    : SSLexStringConsumer(text, text == nullptr ? 0 : std::char_traits<char16_t>::length(text),
                          wideType) {}

SSLexStringConsumer::SSLexStringConsumer(const wchar_t* text)
    : SSLexStringConsumer(toUnits(text).c_str()) {}

bool SSLexDataConsumer::addBuffer(const void* data, std::size_t size) {
  if (!makeRoom(size)) {
    raise(SSErrorAddTooLong);
    return false;
  }
  append(data, size);
  return true;
}
