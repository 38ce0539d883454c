#include "korelpre/tknstring.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include "lib_base/fatal.h"

namespace precomp {

namespace {

constexpr const char* kUnit = "korelpre/tknstring";

// Tokens come and go by the million and all have one size, so freed blocks are kept for the next
// token of the same thread. AddressSanitizer watches the blocks better without it.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kPooled = false;
#else
constexpr bool kPooled = true;
#endif

struct tTokenPool {
  struct tBlock {
    tBlock* next;
  };
  tBlock* free = nullptr;

  ~tTokenPool() {
    while (free != nullptr) {
      tBlock* block = free;
      free = block->next;
      std::free(block);
    }
  }
};

thread_local tTokenPool tokenPool;

}  // namespace

[[gnu::noinline]] void* tSpcString::operator new(std::size_t size) {
  if (kPooled && size == sizeof(tSpcString) && tokenPool.free != nullptr) {
    tTokenPool::tBlock* block = tokenPool.free;
    tokenPool.free = block->next;
    return block;
  }
  void* block = std::malloc(size);
  if (block == nullptr) fatalAllocation(size, kUnit, __LINE__);
  return block;
}

[[gnu::noinline]] void tSpcString::operator delete(void* block) noexcept {
  if (!kPooled || block == nullptr) {
    std::free(block);
    return;
  }
  auto* freed = static_cast<tTokenPool::tBlock*>(block);
  freed->next = tokenPool.free;
  tokenPool.free = freed;
}

void tTknString::doReset(KorelPreYaccClass* /*processor*/, int start) {
  if (start < 0) {
    cursor_ = 0;
    if (!tokens_.empty() && !newTokens_.empty()) newTokens_[0].setSpacing(tokens_[0].spacing());
    tokens_.Destroy();
    tokens_.swap(newTokens_);
    return;
  }
  int end = curTokenIdx() - 1;
  if (end < 0) end = count() - 1;
  const int removed = start <= end && end < count() ? end - start + 1 : 0;
  tokens_.splice(start, removed, newTokens_);
}

void tTknString::appendText(tString& text, bool original) const {
  const tAutoArray<tSpcString>& shown = original && !original_.empty() ? original_ : tokens_;
  for (int i = 0; i < shown.count(); ++i) {
    text.append(shown[i].spacing());
    text.append(shown[i]);
  }
}

void tTknString::keepOriginal() {
  original_.Destroy();
  for (int i = 0; i < tokens_.count(); ++i) original_.add(new tSpcString(tokens_[i]));
}

std::size_t tTknString::textSize() const {
  std::size_t size = 0;
  for (int i = 0; i < tokens_.count(); ++i) size += tokens_[i].spacing().size() + tokens_[i].size();
  return size;
}

}  // namespace precomp
