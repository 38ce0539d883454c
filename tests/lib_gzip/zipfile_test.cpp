#include "lib_gzip/zipfile.h"

#include <gtest/gtest.h>

#include <string>

#include "lib_gzip/zipsource.h"
#include "tests/support/maxsizescope.h"
#include "tests/support/memorydisk.h"

namespace {

const std::string kText = std::string("#define A \"1\"\r\n\0\n\r\xff", 19) + std::string(500, 'x');

std::string bytesOf(const tDiskManMemory& disk, const char* name) {
  const std::string* bytes = disk.bytes(name);
  return bytes == nullptr ? "(none)" : *bytes;
}

std::string packed(std::string_view text) {
  return std::string(packZipSource(text).view());
}

}  // namespace

TEST(ZipFile, PacksAndUnpacksInPlaceOrElsewhere) {
  for (const std::string& text : {kText, std::string(), std::string("\n")}) {
    tDiskManMemory disk;
    disk.put("a.ch", text);
    disk.put("b.ch", "older");
    disk.put("a.ch.krpre-new", "half");  // of a process that was killed
    EXPECT_EQ(packFile(disk, "a.ch", "b.ch"), eFileResult::kDone);
    EXPECT_EQ(bytesOf(disk, "a.ch"), text);
    EXPECT_EQ(bytesOf(disk, "b.ch"), packed(text));
    EXPECT_EQ(packFile(disk, "a.ch", nullptr), eFileResult::kDone);
    EXPECT_EQ(bytesOf(disk, "a.ch"), packed(text));
    EXPECT_EQ(unpackFile(disk, "a.ch", "./a.ch"), eFileResult::kDone);
    EXPECT_EQ(bytesOf(disk, "a.ch"), text);
    EXPECT_EQ(unpackFile(disk, "b.ch", "c.ch"), eFileResult::kDone);
    EXPECT_EQ(bytesOf(disk, "c.ch"), text);
    EXPECT_EQ(disk.fileCount(), 3U);
    // What is as it should be is copied at most.
    EXPECT_EQ(unpackFile(disk, "a.ch", nullptr), eFileResult::kUnchanged);
    EXPECT_EQ(unpackFile(disk, "a.ch", "b.ch"), eFileResult::kUnchanged);
    EXPECT_EQ(bytesOf(disk, "b.ch"), text);
  }
}

TEST(ZipFile, FailuresChangeNothing) {
  tDiskManMemory disk;
  const std::string damaged = packed(kText).substr(0, 40);
  disk.put("damaged", damaged);
  disk.put("text", kText);
  disk.put("large", std::string(kLargestSource + 1, 'x'));
  disk.put("full", "older");
  disk.limitWrites("full.krpre-new", 30);
  disk.put("refused", "older");
  disk.refuseCreate("refused.krpre-new");
  disk.put("stuck", "older");
  disk.refuseRename("stuck.krpre-new");
  EXPECT_EQ(unpackFile(disk, "damaged", nullptr), eFileResult::kDamaged);
  EXPECT_EQ(bytesOf(disk, "damaged"), damaged);
  EXPECT_EQ(packFile(disk, "nowhere", nullptr), eFileResult::kUnreadable);
  EXPECT_EQ(packFile(disk, nullptr, nullptr), eFileResult::kUnreadable);
  EXPECT_EQ(packFile(disk, "large", "text"), eFileResult::kTooLarge);
  EXPECT_EQ(unpackFile(disk, "large", nullptr), eFileResult::kTooLarge);
  for (const char* out : {"full", "refused", "stuck"}) {
    EXPECT_EQ(packFile(disk, "text", out), eFileResult::kNotWritten) << out;
    EXPECT_EQ(bytesOf(disk, out), "older");
  }
  EXPECT_EQ(bytesOf(disk, "text"), kText);
  EXPECT_EQ(disk.fileCount(), 6U);
}

TEST(ZipFile, LargestSourceFits) {
  tDiskManMemory disk;
  disk.put("a", std::string(kLargestSource, 'x'));
  EXPECT_EQ(packFile(disk, "a", "b"), eFileResult::kDone);
  EXPECT_EQ(unpackFile(disk, "b", nullptr), eFileResult::kDone);
  EXPECT_EQ(bytesOf(disk, "b"), bytesOf(disk, "a"));

  // In a host that has run the preprocessor, and packed to more than the text was.
  const tMaxSizeScope scope(kLargestSource);
  EXPECT_EQ(packFile(disk, "a", "b"), eFileResult::kTooLarge);
}
