#include "korelpre/rules/rulestream.h"

#include "korelpre/korelpreobjs.h"

namespace precomp {

void tPCHStream::putNumber(std::uint64_t number) {
  for (; number >= 0x80; number >>= 7) putByte(static_cast<std::uint8_t>(number | 0x80));
  putByte(static_cast<std::uint8_t>(number));
}

void tPCHStream::putText(std::string_view text) {
  putNumber(text.size());
  written_.append(text);
}

// Either 0 and the text, or the place behind such a 0.
void tPCHStream::putName(std::string_view name) {
  const auto known = names_.find(name);
  if (known != names_.end()) {
    putNumber(known->second);
    return;
  }
  putByte(0);
  names_.emplace(name, end());
  putText(name);
}

std::uint8_t tPCHStream::byte() {
  if (failed_ || position_ >= bytes_.size()) {
    failed_ = true;
    return 0;
  }
  return static_cast<std::uint8_t>(bytes_[position_++]);
}

std::uint64_t tPCHStream::number() {
  std::uint64_t number = 0;
  for (unsigned shift = 0; shift < 64; shift += 7) {
    const std::uint8_t part = byte();
    number |= static_cast<std::uint64_t>(part & 0x7F) << shift;
    if ((part & 0x80) == 0) return failed_ ? 0 : number;
  }
  failed_ = true;
  return 0;
}

std::uint32_t tPCHStream::numberUpTo(std::uint32_t most) {
  const std::uint64_t value = number();
  if (value > most) {
    failed_ = true;
    return 0;
  }
  return static_cast<std::uint32_t>(value);
}

std::string_view tPCHStream::text() {
  const std::uint64_t size = number();
  if (failed_ || size > bytes_.size() - position_) {
    failed_ = true;
    return {};
  }
  const std::string_view text = bytes_.substr(position_, static_cast<std::size_t>(size));
  position_ += text.size();
  return text;
}

std::string_view tPCHStream::name() {
  const std::uint64_t place = number();
  if (place == 0) return text();
  if (failed_ || place >= position_) {
    failed_ = true;
    return {};
  }
  tPCHStream earlier(bytes_, static_cast<std::size_t>(place));
  const std::string_view name = earlier.text();
  if (earlier.failed_) failed_ = true;
  return name;
}

bool tPCHStream::enter() {
  if (++depth_ > kDeepestGroup + 1) failed_ = true;
  return !failed_;
}

}  // namespace precomp
