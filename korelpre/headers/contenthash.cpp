#include "korelpre/headers/contenthash.h"

// Compiled in: nothing more to load when the program starts.
#define XXH_INLINE_ALL
#include <xxhash.h>

namespace precomp {

struct tContentHash::tState {
  XXH3_state_t state;
};

std::uint64_t contentHash(std::string_view text) {
  return XXH3_64bits(text.data(), text.size());
}

tContentHash::tContentHash() : state_(std::make_unique<tState>()) {
  XXH3_64bits_reset(&state_->state);
}

tContentHash::~tContentHash() = default;

void tContentHash::add(std::string_view piece) {
  XXH3_64bits_update(&state_->state, piece.data(), piece.size());
}

std::uint64_t tContentHash::value() const {
  return XXH3_64bits_digest(&state_->state);
}

}  // namespace precomp
