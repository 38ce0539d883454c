// `krpre pack` and `krpre unpack`, run as children.

#include "tests/cli/program.h"

namespace fs = std::filesystem;

namespace {

using Pack = Program;

TEST_F(Pack, FilesChangeInPlaceAndAreReadAsTheirText) {
  write("a.prw", "#include \"b.ch\"\nx := ONE\n");
  write("b.ch", "#define ONE 1\n");
  EXPECT_EQ(run({"pack", "a.prw", "b.ch"}).output, "a.prw packed\nb.ch packed\n");
  EXPECT_EQ(bytes("b.ch").substr(0, 4), "#zip");
  EXPECT_EQ(run({"a.prw"}).status, 0);
  EXPECT_NE(bytes("a.ppo").find("x := 1"), std::string::npos);
  const tChildResult again = run({"pack", "b.ch"});
  EXPECT_EQ(again.output, "b.ch is already packed\n");
  EXPECT_EQ(again.status, 0);
  EXPECT_EQ(run({"unpack", "--", "b.ch", "a.prw"}).output, "b.ch unpacked\na.prw unpacked\n");
  EXPECT_EQ(bytes("b.ch"), "#define ONE 1\n");
  EXPECT_EQ(run({"unpack", "b.ch"}).output, "b.ch is not packed\n");
}

TEST_F(Pack, LinksAndPermissionsStay) {
  write("real/a.ch", "#define A 1\n");
  fs::permissions(path("real/a.ch"), fs::perms::owner_read | fs::perms::owner_write);
  fs::create_symlink("real/a.ch", path("link.ch"));
  EXPECT_EQ(run({"pack", "link.ch"}).status, 0);
  EXPECT_TRUE(fs::is_symlink(path("link.ch")));
  EXPECT_EQ(bytes("real/a.ch").substr(0, 4), "#zip");
  EXPECT_EQ(fs::status(path("real/a.ch")).permissions(),
            fs::perms::owner_read | fs::perms::owner_write);
  EXPECT_EQ(std::distance(fs::directory_iterator(path("real")), {}), 1);
}

TEST_F(Pack, FailuresAreToldAndTheOthersAreDone) {
  write("damaged", "#zip none");
  write("b", "x\n");
  const tChildResult result = run({"unpack", "damaged", "none", "b"});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output, "b is not packed\n");
  EXPECT_EQ(result.errors,
            "krpre: damaged is damaged, or only starts like a packed file\n"
            "krpre: none cannot be read\n");
  EXPECT_EQ(bytes("damaged"), "#zip none");
  EXPECT_EQ(run({"pack", "b", "-o", "no/where"}).errors,
            "krpre: no/where cannot be written: No such file or directory\n");
  EXPECT_EQ(run({"pack", "b", "--output=c"}).status, 0);
  EXPECT_EQ(bytes("b"), "x\n");
}

}  // namespace
