#include "lib_gzip/zipsource.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

constexpr std::size_t kLimit = std::size_t{16} << 20;

std::string unpacked(std::string_view file, std::size_t limit = kLimit) {
  tString text("untouched");
  const eZipResult result = unpackZipSource(file, limit, text);
  if (result == eZipResult::kOk) return std::string(text.view());
  EXPECT_EQ(text, "untouched");
  return "<" + std::to_string(static_cast<int>(result)) + ">";
}

const std::string kShortHeader = "<1>", kBadLengths = "<2>", kDamaged = "<3>";

/// A text that packs well but not to nothing.
std::string someText(std::size_t size) {
  std::mt19937 random(11);
  std::string text(size, ' ');
  for (char& c : text) c = "#define A 1\r\n\0"[random() % 14];
  return text;
}

TEST(ZipSource, GivesBackWhatWasPacked) {
  for (std::size_t size : {0u, 1u, 2u, 100u, 65536u, 1000000u}) {
    const std::string text = someText(size);
    const tString file = packZipSource(text);
    EXPECT_TRUE(isZipSource(file.view().substr(0, 4)));
    EXPECT_EQ(unpacked(file), text);
    EXPECT_EQ(unpacked(std::string(file.view()) + "behind"), text);
    EXPECT_EQ(unpacked(file, size), text);
    if (size == 0) continue;
    EXPECT_EQ(unpacked(file, size - 1), kBadLengths);
  }
}

TEST(ZipSource, HasTheWrittenLayout) {
  // zlib data of a stored block, made by hand.
  const std::string data("\x78\x01\x01\x02\x00\xfd\xffHi\x00\xfb\x00\xb2", 13);
  const std::string lengths("\x02\0\0\0\x0d\0\0\0", 8);
  std::string file = "#zap";
  file.append(lengths).append(data);
  EXPECT_EQ(unpacked(file), kShortHeader);
  for (const char* tag : {"#zip", "#ZIP", "#zIp"})
    EXPECT_EQ(unpacked(file.replace(0, 4, tag)), "Hi");
}

TEST(ZipSource, ChecksTheLengthsBeforeItUnpacks) {
  const std::string text = someText(300);
  const std::string file(packZipSource(text).view());
  struct tCase {
    std::size_t at;
    std::string_view length;
    const std::string& result;
  };
  using std::string_view_literals::operator""sv;
  const tCase kCases[] = {
      {4, "\x2b\x01\0\0"sv, kDamaged},     // one byte less than the text
      {4, "\x2d\x01\0\0"sv, kDamaged},     // one more
      {4, "\0\0\0\x01"sv, kDamaged},       // just within the limit
      {4, "\x01\0\0\x01"sv, kBadLengths},  // just past it
      {4, "\xff\xff\xff\xff"sv, kBadLengths},
      {8, "\xff\xff\xff\xff"sv, kBadLengths},
      {8, "\0\0\0\0"sv, kDamaged},
  };
  for (const tCase& c : kCases) {
    std::string changed = file;
    changed.replace(c.at, 4, c.length);
    EXPECT_EQ(unpacked(changed), c.result) << c.at;
  }
}

TEST(ZipSource, FailsOnEveryTruncation) {
  const std::string file(packZipSource(someText(200)).view());
  for (std::size_t size = 0; size < file.size(); ++size) {
    // Storage of exactly this size, so that a read past its end is seen.
    const tString part(file.data(), size);
    EXPECT_EQ(unpacked(part), size < 12 ? kShortHeader : kBadLengths) << size;
  }
}

}  // namespace
