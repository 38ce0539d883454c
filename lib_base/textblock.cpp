#include "lib_base/textblock.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

// AddressSanitizer sees only what comes from the heap.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kFromSystem = false;
#else
constexpr bool kFromSystem = true;
#endif

constexpr std::size_t kLarge = std::size_t{1} << 20;

bool isLarge(std::size_t bytes) {
  return kFromSystem && bytes >= kLarge;
}

void* valid(void* mapped) {
  return mapped == MAP_FAILED ? nullptr : mapped;
}

}  // namespace

void* allocateTextBlock(std::size_t bytes) noexcept {
  if (!isLarge(bytes)) return std::malloc(bytes);
  return valid(mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
}

void* resizeTextBlock(void* block, std::size_t oldBytes, std::size_t bytes) noexcept {
  if (!isLarge(oldBytes) && !isLarge(bytes)) return std::realloc(block, bytes);
  if (isLarge(oldBytes) && isLarge(bytes)) {
    return valid(mremap(block, oldBytes, bytes, MREMAP_MAYMOVE));
  }
  void* other = allocateTextBlock(bytes);
  if (other == nullptr) return nullptr;
  std::memcpy(other, block, std::min(oldBytes, bytes));
  releaseTextBlock(block, oldBytes);
  return other;
}

void releaseTextBlock(void* block, std::size_t bytes) noexcept {
  if (isLarge(bytes)) {
    munmap(block, bytes);
  } else {
    std::free(block);
  }
}
