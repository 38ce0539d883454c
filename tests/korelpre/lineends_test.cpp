#include "korelpre/text/lineends.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

std::string normalByHand(const std::string& text) {
  std::string normal;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r' && text[i] != '\n') {
      normal += text[i];
      continue;
    }
    normal += "\r\n";
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
  }
  return normal;
}

TEST(LineEnds, BecomeNormalWhereverTheyStand) {
  std::minstd_rand random(7);
  for (int round = 0; round < 3000; ++round) {
    std::string text(random() % 70, ' ');
    const auto kinds = 3 + random() % 40;
    for (char& c : text) {
      const auto kind = random() % kinds;
      c = kind == 0 ? '\r' : kind == 1 ? '\n' : 'x';
    }
    const std::string expected = normalByHand(text);
    EXPECT_EQ(precomp::hasNormalLineEnds(text), text == expected);
    tString given(text.data(), text.size());
    precomp::normaliseLineEnds(given);
    ASSERT_EQ(given.view(), expected);
  }
}

}  // namespace
