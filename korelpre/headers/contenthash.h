#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace precomp {

/// A hash of a text that tells changed contents, of 64 bits. It is no protection against somebody
/// who looks for two texts with one hash.
std::uint64_t contentHash(std::string_view text);

/// The same for a text that comes in pieces.
class tContentHash {
 public:
  tContentHash();
  ~tContentHash();
  tContentHash(const tContentHash&) = delete;
  tContentHash& operator=(const tContentHash&) = delete;

  void add(std::string_view piece);
  std::uint64_t value() const;

 private:
  struct tState;
  std::unique_ptr<tState> state_;
};

}  // namespace precomp
