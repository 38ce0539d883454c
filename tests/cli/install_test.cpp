#include <gtest/gtest.h>

#include "tests/support/childprocess.h"

namespace fs = std::filesystem;

namespace {

TEST(Installation, FindsItsLibraryAndItsHeadersAndCanMove) {
  const tTemporaryDirectory directory;
  const fs::path prefix = directory.path() / "first place";
  const tChildResult installed =
      runChild({KRPRE_CMAKE, "--install", KRPRE_BUILD, "--prefix", prefix}, directory.path());
  ASSERT_EQ(installed.status, 0) << installed.output << installed.errors;
  EXPECT_TRUE(fs::exists(prefix / "include/krpre.h"));

  const fs::path moved = directory.path() / "second place";
  fs::rename(prefix, moved);
  directory.write("a.prw", "x := __KOREL__\n");
  const tChildResult result = runChild({moved / "bin/krpre", "a.prw"}, directory.path());
  EXPECT_EQ(result.status, 0) << result.output << result.errors;
  EXPECT_EQ(readBytes(directory.path() / "a.ppo"), "x := 9\r\n");
}

}  // namespace
