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
constexpr std::size_t kHugePage = std::size_t{2} << 20;

// A block of whole huge pages begins with one.
std::size_t mappedSize(std::size_t bytes) {
  return bytes < kHugePage ? bytes : (bytes + kHugePage - 1) & ~(kHugePage - 1);
}

// Only a hint, so the result is ignored.
void* preferringHugePages(void* block, std::size_t size) {
  if (block != nullptr && size >= kHugePage) madvise(block, size, MADV_HUGEPAGE);
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
  const std::size_t size = mappedSize(bytes);
  void* const block = mmap(nullptr, size, PROT_READ | PROT_WRITE, kPages, -1, 0);
  return preferringHugePages(valid(block), size);
}

void* resizeTextBlock(void* block, std::size_t oldBytes, std::size_t bytes) noexcept {
  if (!isLarge(oldBytes) && !isLarge(bytes)) return std::realloc(block, bytes);
  if (isLarge(oldBytes) && isLarge(bytes)) {
    const std::size_t size = mappedSize(bytes);
    void* const other = mremap(block, mappedSize(oldBytes), size, MREMAP_MAYMOVE);
    return preferringHugePages(valid(other), size);
  }
  void* other = allocateTextBlock(bytes);
  if (other == nullptr) return nullptr;
  std::memcpy(other, block, std::min(oldBytes, bytes));
  releaseTextBlock(block, oldBytes);
  return other;
}

void releaseTextBlock(void* block, std::size_t bytes) noexcept {
  if (isLarge(bytes)) {
    munmap(block, mappedSize(bytes));
  } else {
    std::free(block);
  }
}
