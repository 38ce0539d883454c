#include "lib_base/autochar.h"

#include <cstdlib>
#include <cstring>

#include "lib_base/fatal.h"
#include "lib_base/stringz.h"

namespace {

constexpr char kUnit[] = "lib_base/autochar";
/// Follows the bytes.
constexpr char kGuard[] = {'\x5a', '\xa5', '\x3c', '\xc3', '\x96', '\x69', '\x0f', '\xf0'};

}  // namespace

void tAutoChar::tFree::operator()(char* bytes) const noexcept {
  std::free(bytes);
}

void tAutoChar::setSize(std::size_t size) {
  CheckBuffer();
  krpreAssert(size > 0 && size <= tString::maxSize() + 1,
              "tAutoChar::setSize() ERROR - invalid size", kUnit);
  const std::size_t all = size + sizeof kGuard;
  auto* bytes = static_cast<char*>(std::realloc(bytes_.get(), all));
  if (!bytes) fatalAllocation(all, kUnit, __LINE__);
  static_cast<void>(bytes_.release());  // realloc has freed or kept it
  bytes_.reset(bytes);
  size_ = size;
  std::memcpy(bytes + size, kGuard, sizeof kGuard);
}

void tAutoChar::CheckBuffer() const {
  if (!bytes_) return;
  krpreAssert(std::memcmp(bytes_.get() + size_, kGuard, sizeof kGuard) == 0,
              "tAutoChar::CheckBuffer() ERROR - *** BUFFER OVERRUN ***", kUnit);
}

void tAutoChar::setText(std::string_view text) {
  // Built separately: `text` may be a part of this buffer.
  tAutoChar other(text.size() + 1);
  if (!text.empty()) std::memcpy(other.data(), text.data(), text.size());
  other.data()[text.size()] = '\0';
  CheckBuffer();
  *this = std::move(other);
}
