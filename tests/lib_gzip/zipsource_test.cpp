#include "lib_gzip/zipsource.h"

#include <gtest/gtest.h>

#include <string>

// What else can be wrong is what the seeds of packed files show.
TEST(ZipSource, HasTheWrittenLayout) {
  // zlib data of a stored block, made by hand.
  const std::string data("\x78\x01\x01\x02\x00\xfd\xffHi\x00\xfb\x00\xb2", 13);
  const std::string lengths("\x02\0\0\0\x0d\0\0\0", 8);
  std::string file = "#zap" + lengths + data;
  tString text("untouched");
  EXPECT_EQ(unpackZipSource(file, 2, text), eZipResult::kShortHeader);
  EXPECT_EQ(text, "untouched");
  for (const char* tag : {"#zip", "#ZIP", "#zIp"}) {
    EXPECT_EQ(unpackZipSource(file.replace(0, 4, tag), 2, text), eZipResult::kOk);
    EXPECT_EQ(text, "Hi");
  }
}
