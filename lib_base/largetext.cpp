#include "lib_base/largetext.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace {

// AddressSanitizer only checks heap memory.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kFromSystem = false;
#else
constexpr bool kFromSystem = true;
#endif

constexpr std::size_t kLarge = std::size_t{1} << 20;

// Faulting in small pages takes a tenth of the run time of a large source; huge pages avoid that.
// Below this size they would waste memory.
constexpr std::size_t kVeryLarge = std::size_t{4} << 20;

// Only a hint, so the result is ignored.
void* preferringLargePages(void* block, std::size_t bytes) {
  if (block != nullptr && bytes >= kVeryLarge) madvise(block, bytes, MADV_HUGEPAGE);
  return block;
}

bool isLarge(std::size_t bytes) {
  return kFromSystem && bytes >= kLarge;
}

void* valid(void* mapped) {
  return mapped == MAP_FAILED ? nullptr : mapped;
}

}  // namespace

void* allocateTextBlock(std::size_t bytes) noexcept {
  if (!isLarge(bytes)) return std::malloc(bytes);
  constexpr int kPages = MAP_PRIVATE | MAP_ANONYMOUS;
  void* const block = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, kPages, -1, 0);
  return preferringLargePages(valid(block), bytes);
}

void* resizeTextBlock(void* block, std::size_t oldBytes, std::size_t bytes) noexcept {
  if (!isLarge(oldBytes) && !isLarge(bytes)) return std::realloc(block, bytes);
  if (isLarge(oldBytes) && isLarge(bytes)) {
    return preferringLargePages(valid(mremap(block, oldBytes, bytes, MREMAP_MAYMOVE)), bytes);
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
