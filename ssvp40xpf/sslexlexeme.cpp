#include "ssvp40xpf/sslexlexeme.h"

#include <cstring>
#include <new>
#include <utility>

namespace {

constexpr std::uint32_t kCorrelator = ssCorrelator("SSLM");
constexpr std::size_t kTerminator = 2;

}  // namespace

static_assert(sizeof(SSLexLexeme) + kTerminator == SSLexLexeme::kOverhead);

SSLexLexeme* SSLexLexeme::make(const void* text, std::size_t length, unsigned token, unsigned line,
                               unsigned offset, bool byteText) {
  const std::size_t bytes = byteText ? length : 2 * length;
  auto* const lexeme = ::new (ssPoolAllocate(bytes + kOverhead))
      SSLexLexeme(tInline{}, length, token, line, offset, byteText);
  if (bytes != 0) std::memcpy(lexeme->text_, text, bytes);
  return lexeme;
}

SSLexLexeme::SSLexLexeme(tInline, std::size_t length, unsigned token, unsigned line,
                         unsigned offset, bool byteText)
    : SSObject(kCorrelator),
      ownsBuffer_(false),
      byteText_(byteText),
      line_(line),
      token_(token),
      offset_(offset),
      length_(length),
      text_(reinterpret_cast<char*>(this + 1)),
      storage_(textBytes() + kOverhead) {
  terminate();
}

SSLexLexeme::SSLexLexeme(std::size_t length, unsigned token, const char* text, unsigned line,
                         unsigned offset, unsigned type)
    : SSObject(kCorrelator),
      ownsBuffer_(false),
      byteText_(true),
      line_(line),
      token_(token),
      offset_(offset),
      type_(type),
      length_(0),
      text_(nullptr),
      storage_(sizeof(SSLexLexeme)) {
  setBuffer(text, length);
}

SSLexLexeme::~SSLexLexeme() {
  if (ownsBuffer_) delete[] text_;
}

void SSLexLexeme::refFree() {
  const std::size_t size = storage_;
  this->~SSLexLexeme();
  ssPoolRelease(this, size);
}

bool SSLexLexeme::setLength(std::size_t length) {
  if (length > length_) return false;
  length_ = length;
  terminate();
  return true;
}

void SSLexLexeme::swapUnits() {
  if (byteText_) return;
  for (std::size_t i = 0; i < 2 * length_; i += 2) std::swap(text_[i], text_[i + 1]);
}

void SSLexLexeme::setBuffer(const char* text, std::size_t length) {
  char* const copied = new char[length + kTerminator];
  if (length != 0) std::memcpy(copied, text, length);
  if (ownsBuffer_) delete[] text_;
  text_ = copied;
  length_ = length;
  ownsBuffer_ = true;
  byteText_ = true;
  terminate();
}

void SSLexLexeme::terminate() {
  std::memset(text_ + textBytes(), 0, kTerminator);
}

void* SSLexLexeme::operator new(std::size_t size) {
  return ssPoolAllocate(size);
}

void SSLexLexeme::operator delete(void* storage, std::size_t size) {
  ssPoolRelease(storage, size);
}
