// What leaves the build: the names of the library, an installation and how others build against it.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "tests/support/childprocess.h"

namespace fs = std::filesystem;

namespace {

std::set<std::string> matches(const std::string& text, const char* expression) {
  const std::regex regex(expression);
  std::set<std::string> found;
  for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match) {
    found.insert((*match)[1]);
  }
  return found;
}

/// Runs a shell command and expects it to succeed.
std::string run(const std::string& command, const fs::path& directory) {
  const tChildResult result = runChild({"/bin/sh", "-ec", command}, directory);
  EXPECT_EQ(result.status, 0) << command << "\n" << result.output << result.errors;
  return result.output;
}

std::string quoted(const fs::path& path) {
  return "'" + path.string() + "'";
}

TEST(Library, LetsOutWhatItsHeaderDeclaresAndNothingElse) {
  const std::string symbols = run("nm -D --defined-only '" KRPRE_LIBRARY "'", "/");
  const std::string header = readBytes(KRPRE_SOURCE "/include/krpre.h");
  const std::set<std::string> declared = matches(header, R"(\nKRPRE_API [^(;]*?\b(\w+)\()");
  EXPECT_GE(declared.size(), 7U);
  EXPECT_EQ(matches(symbols, R"( [^A ] ([^@\n]+))"), declared);
  const std::string listed = readBytes(KRPRE_SOURCE "/debian/libkrpre7.symbols");
  EXPECT_EQ(matches(listed, R"(\n ([^K]\w+)@)"), declared);
}

TEST(Library, IsVersioned) {
  EXPECT_EQ(matches(run("readelf -d '" KRPRE_LIBRARY "'", "/"), R"(SONAME.*\[(.*)\])"),
            std::set<std::string>{KRPRE_SONAME});
  EXPECT_TRUE(fs::is_symlink(fs::path(KRPRE_LIBRARY).parent_path() / "libkrpre.so"));
}

class InstalledPackage : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    directory_ = new tTemporaryDirectory;
    run("'" KRPRE_CMAKE "' --install '" KRPRE_BUILD "' --prefix " + quoted(built()), path());
    // What holds an absolute path will not be found any more.
    fs::rename(built(), prefix());
    directory_->write("good.prw", "x := __KOREL__\n");
    directory_->write("bad.prw", "#else\n");
  }
  static void TearDownTestSuite() { delete directory_; }

  static fs::path path() { return directory_->path(); }
  static fs::path built() { return path() / "as built"; }
  static fs::path prefix() { return path() / "in-use"; }
  static std::string pkgConfig(const std::string& question) {
    const std::string output = run("PKG_CONFIG_PATH=" + quoted(prefix() / "lib/pkgconfig") +
                                       " pkg-config " + question + " krpre",
                                   path());
    return output.substr(0, output.find_last_not_of(" \n") + 1);
  }

  /// The example must work, wherever it was built.
  static void expectToPreprocess(const fs::path& program) {
    fs::remove(path() / "good.ppo");
    const tChildResult result = runChild({program, "good.prw", "bad.prw"}, path());
    EXPECT_EQ(result.status, 1) << result.errors;
    EXPECT_EQ(result.output,
              "  | KOREL Preprocessor: Precompilation of file good.prw ok.\n"
              "good.prw preprocessed\n"
              "  | bad.prw(1) Error C2070  #else does not match #ifdef\n"
              "  | KOREL Preprocessor. Precompilation of file bad.prw with error. "
              "Exitecode equal to 1\n"
              "bad.prw has an error\n");
    EXPECT_EQ(readBytes(path() / "good.ppo"), "x := 9\r\n");
  }

 private:
  inline static tTemporaryDirectory* directory_ = nullptr;
};

TEST_F(InstalledPackage, HoldsAProgramThatFindsItsLibraryAndItsHeaders) {
  EXPECT_EQ(runChild({prefix() / "bin/krpre", "-q", "good.prw"}, path()).status, 0);
  EXPECT_EQ(readBytes(path() / "good.ppo"), "x := 9\r\n");
  EXPECT_TRUE(fs::exists(prefix() / "share/krpre/krpre.schema.json"));
}

TEST_F(InstalledPackage, HoldsDocumentsWhoseLinksLeadSomewhere) {
  run("'" KRPRE_PYTHON "' -B '" KRPRE_SOURCE "/tests/docs_test.py' " +
          quoted(prefix() / "share/doc/krpre") + " Documents.test_links_lead_to_files",
      path());
}

TEST_F(InstalledPackage, RunsEveryExampleOfItsDocuments) {
  run("'" KRPRE_PYTHON "' -B '" KRPRE_SOURCE "/tests/package/examples.py' " + quoted(prefix()) +
          " '" KRPRE_SOURCE "' '" KRPRE_JAVA "' '" KRPRE_FLAGS "'",
      path());
}

TEST_F(InstalledPackage, IsFoundByCMake) {
  run("'" KRPRE_CMAKE "' -G Ninja -S '" KRPRE_SOURCE
      "/examples/embed' -B embed -DCMAKE_PREFIX_PATH=" +
          quoted(prefix()) + " -DCMAKE_C_FLAGS='" KRPRE_FLAGS "' && ninja -C embed",
      path());
  expectToPreprocess(path() / "embed/embed");
}

TEST_F(InstalledPackage, IsFoundByPkgConfig) {
  const std::string flags = pkgConfig("--cflags --libs");
  for (const char* compiler : {"cc -std=c11", "c++ -x c++ -std=c++17"}) {
    run(compiler +
            std::string(" " KRPRE_FLAGS
                        " -Wall -Wextra -Wconversion -Werror -pedantic-errors '" KRPRE_SOURCE
                        "/examples/embed/embed.c' -o plain ") +
            flags + " -Wl,-rpath," + quoted(prefix() / "lib"),
        path());
    expectToPreprocess(path() / "plain");
  }
  EXPECT_TRUE(fs::exists(pkgConfig("--variable=headersdir") + "/std.ch"));
  EXPECT_EQ(pkgConfig("--modversion"), KRPRE_VERSION);
}

TEST_F(InstalledPackage, FindsItsModuleForHostsWithQt) {
  run("LD_LIBRARY_PATH=" + quoted(prefix() / "lib") +
          " '" KRPRE_HOST_TEST "' --gtest_filter=Host.SeesItsTranslationsInTheMessages",
      path());
}

TEST_F(InstalledPackage, FindsItsLibraryForJavaHosts) {
  const std::string jar = (prefix() / "share/java/krpre.jar").string();
  const std::string said =
      run(KRPRE_JAVA " -cp '" + jar + ":" KRPRE_JAVA_TESTS "' KrpreTest load ''", path());
  EXPECT_NE(said.find((prefix() / "lib/" KRPRE_SONAME).string()), std::string::npos) << said;
}

}  // namespace
