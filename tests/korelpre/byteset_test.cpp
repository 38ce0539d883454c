#include "korelpre/text/byteset.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace precomp {
namespace {

std::array<bool, 256> someBytes(std::mt19937& random) {
  std::array<bool, 256> bytes{};
  const auto share = random() % 9;
  for (bool& byte : bytes) byte = random() % 8 < share;
  return bytes;
}

TEST(ByteSet, FindsTheMembersOfAnySetInEveryWay) {
  std::mt19937 random(1);
  for (int round = 0; round < 2000; ++round) {
    const std::array<bool, 256> bytes = someBytes(random);
    const tByteSet set(bytes);
    std::string text(tByteSet::kBlock, '\0');
    for (char& c : text) c = static_cast<char>(random());
    std::uint64_t expected = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (bytes[static_cast<unsigned char>(text[i])]) expected |= std::uint64_t{1} << i;
    }
    for (const tByteSet::tLookUp way : tByteSet::ways()) {
      ASSERT_EQ(expected, way(set, text.data()));
    }
  }
}

// The text ends where its memory does, so that a sanitizer sees whatever reads on.
TEST(Stops, AreTheMembersTheWordsAndTheEndFromAnyPlaceOn) {
  std::mt19937 random(2);
  for (int round = 0; round < 2000; ++round) {
    std::array<bool, 256> bytes = someBytes(random);
    std::vector<char> text(1 + random() % 199);
    for (char& c : text) c = "ab1_ ~(\n"[random() % 8];
    const char* const start = text.data();
    const char* const end = start + text.size();
    const tByteSet set(bytes);
    tStops<false> members(set, start, end);
    tStops<true> both(set, start, end);
    for (const char* p = start; p < end; ++p) {
      const bool member = bytes[static_cast<unsigned char>(*p)];
      if (member) {
        ASSERT_EQ(p, members.next());
      }
      if (member || (isWordByte(*p) && (p == start || !isWordByte(p[-1])))) {
        ASSERT_EQ(p, both.next());
      }
      if (random() % 16 != 0) continue;
      p += random() % static_cast<std::size_t>(end - p);
      members.goTo(p + 1);
      both.goTo(p + 1);
    }
    ASSERT_EQ(end, members.next());
    ASSERT_EQ(end, both.next());
  }
}

}  // namespace
}  // namespace precomp
