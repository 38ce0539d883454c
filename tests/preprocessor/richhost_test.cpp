// What a host hears of a run through krpre_run.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <regex>
#include <string>
#include <thread>
#include <vector>

#include "include/krpre.h"
#include "tests/support/childprocess.h"

namespace fs = std::filesystem;

namespace {

struct tHeard {
  std::string messages;
  std::string files;
  std::string output;
  std::string slugs;
};

tHeard& heard(void* context) {
  return *static_cast<tHeard*>(context);
}

void takeMessage(void* context, const char* text, std::size_t length) {
  heard(context).messages.append(text, length);
}

void takeFile(void* context, int event, const char*, const char* name) {
  static const char* const kNames[] = {"", "read ", "written ", "unchanged "};
  heard(context).files += kNames[event] + fs::path(name).filename().string() + "\n";
}

void takeOutput(void* context, const char*, const char* text, std::size_t length) {
  heard(context).output.append(text, length);
}

void takeDiagnostic(void* context, const krpre_diagnostic* diagnostic) {
  heard(context).slugs += diagnostic->slug + std::string(" ");
}

TEST(Version, IsThatOfTheProjectInHeaderAndLibrary) {
  std::string numbers = std::to_string(KRPRE_VERSION_MAJOR);
  for (const int number : {KRPRE_VERSION_MINOR, KRPRE_VERSION_PATCH})
    numbers += "." + std::to_string(number);
  for (const std::string& version : {numbers, std::string(KRPRE_VERSION), {krpre_version()}}) {
    EXPECT_EQ(version, KRPRE_PROJECT_VERSION);
  }
}

/// A host that listens, in a directory with a source and an empty standard header.
class RichHost : public testing::Test {
 protected:
  RichHost() {
    directory_.write("std.ch", "");
    host_.size = sizeof host_;
    host_.context = &heard_;
    host_.message = takeMessage;
    host_.file = takeFile;
    host_.diagnostic = takeDiagnostic;
    directory_.write("a.prw", "x := 1\n");
  }
  fs::path path(const char* name) const { return directory_.path() / name; }
  int run() const {
    std::string file = "@F" + path("a.prw").string();
    char* vector[] = {nullptr, file.data()};
    return krpre_run(2, vector, &host_);
  }

  tTemporaryDirectory directory_;
  tHeard heard_;
  krpre_host host_{};
};

TEST_F(RichHost, MayKeepAnOutputThatWouldNotChange) {
  const auto output = path("a.ppo");
  const auto longAgo = fs::file_time_type{} + std::chrono::hours(1);
  const std::string lines(200000, '\n');
  const std::string ends = std::regex_replace(lines, std::regex("\n"), "\r\n");
  const struct {
    std::string source, older;
    bool kept;
  } kCases[] = {
      {"x := 1\ny := 2", "x := 1\r\ny := 2\r\n", true},
      {"x := 1\ny := 2\n", "x := 1\r\ny := 3\r\n", false},
      {"x := 1\n", "x := 1\n\r", false},   // as long
      {"x := 1\n", "x := 1\r\nx", false},  // longer
      {"x := 1\n", "x := 1\r", false},     // shorter
      {"", "", true},
      {"", "x", false},
      {"x" + lines + "y", "x" + ends + "y\r\n", true},
      {"x" + lines + "y", "x" + ends + "z\r\n", false},
  };
  for (const auto& row : kCases) {
    directory_.write("a.prw", row.source);
    writeBytes(output, row.older);
    fs::last_write_time(output, longAgo);
    heard_.files.clear();
    host_.flags = KRPRE_KEEP_UNCHANGED;
    ASSERT_EQ(run(), 0);
    EXPECT_EQ(fs::last_write_time(output) == longAgo, row.kept) << row.older;
    EXPECT_NE(heard_.files.find(row.kept ? "unchanged a.ppo" : "written a.ppo"), std::string::npos);
  }
}

TEST_F(RichHost, MayNameTheOutputButNeverASource) {
  directory_.write("out/keep", "");
  const std::string output = path("out/b.txt");
  host_.outputName = output.c_str();
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(readBytes(output), "x := 1\r\n");
  EXPECT_FALSE(fs::exists(path("a.ppo")));

  fs::create_symlink("../a.prw", path("out/link"));
  host_.flags = KRPRE_OUTPUT_CHOSEN;
  for (const char* name : {"a.prw", "A.PRX", "out/link", "out/b.ch"}) {
    const std::string source = path(name);
    host_.outputName = source.c_str();
    EXPECT_EQ(run(), KRPRE_BAD_SOURCE) << name;
    EXPECT_TRUE(heard_.slugs.ends_with("output-is-source failed ")) << heard_.slugs;
  }
  // A link that nobody has chosen is replaced.
  const std::string link = path("out/link");
  host_.outputName = link.c_str();
  host_.flags = 0;
  EXPECT_EQ(run(), 0);
  EXPECT_EQ(readBytes(path("a.prw")) + readBytes(link), "x := 1\nx := 1\r\n");
  EXPECT_FALSE(fs::exists(path("out/b.ch")) || fs::is_symlink(link));
}

TEST_F(RichHost, TakesNoSourceOfMoreThanSixteenMegabytes) {
  directory_.write("a.prw", std::string((16 << 20) + 1, '\n'));
  EXPECT_EQ(run(), KRPRE_BAD_SOURCE);
}

TEST_F(RichHost, GivesATextForATextThatHasANameAndIsNotTooLong) {
  directory_.write("a.prw", "another\n");
  const std::string name = path("a.prw");
  host_.output = takeOutput;
  const auto give = [&](const std::string& text) {
    return krpre_text(0, nullptr, &host_, name.c_str(), text.data(), text.size());
  };
  EXPECT_EQ(give("x := __COMPTIMESTAMP__\n"), 0);
  EXPECT_TRUE(heard_.output.starts_with("x := \"20")) << heard_.output;
  EXPECT_EQ(give(std::string(16 << 20, '\n')), KRPRE_BAD_SOURCE);
  EXPECT_EQ(krpre_text(0, nullptr, &host_, "", "x", 1), KRPRE_BAD_SOURCE);
}

TEST_F(RichHost, LearnsHowAnOutputWillBeCalled) {
  const auto outputOf = [](const char* source, const char* folder) {
    char name[64];
    const std::size_t length = krpre_output_name(source, folder, name, sizeof name);
    EXPECT_EQ(length, std::string(name).size());
    return std::string(name);
  };
  EXPECT_EQ(outputOf("dir/a.prw", nullptr), "dir/a.ppo");
  EXPECT_EQ(outputOf("dir/a.b.ZORB", "out"), "out/a.b.ppx_");
  EXPECT_TRUE(krpre_is_source("x/a.PRW") && krpre_is_source("a.ch") && !krpre_is_source("a.ppo"));
}

TEST_F(RichHost, MayWaitForAnotherWriter) {
  const fs::path temporary = path("krpre0.ppo");
  writeBytes(temporary, "half");
  const int writer = open(temporary.c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(flock(writer, LOCK_EX), 0);
  EXPECT_EQ(run(), KRPRE_OUTPUT_FAILED);
  EXPECT_EQ(heard_.slugs, "output-failed failed ");
  EXPECT_EQ(readBytes(temporary), "half");

  std::thread end([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    fs::rename(temporary, path("a.ppo"));
    close(writer);
  });
  host_.flags = KRPRE_TAKE_TURNS;
  EXPECT_EQ(run(), 0);
  end.join();
  EXPECT_EQ(readBytes(path("a.ppo")), "x := 1\r\n");
  EXPECT_FALSE(fs::exists(temporary));
}

TEST_F(RichHost, OfAnUnknownSizeIsRefusedBeforeAnythingHappens) {
  host_.defineCount = 1;  // of no defines: a fault, unless the host does not have the field
  for (const std::size_t size :
       {std::size_t{0}, offsetof(krpre_host, step), sizeof(krpre_host) + 8}) {
    host_.size = size;
    EXPECT_EQ(run(), KRPRE_OUTPUT_FAILED);
  }
  EXPECT_EQ(heard_.messages, "");
  EXPECT_FALSE(fs::exists(path("a.ppo")));
  host_.size = offsetof(krpre_host, defineCount);
  EXPECT_EQ(run(), KRPRE_OK);
}

TEST_F(RichHost, GivesDirectoriesAndDefinesAsTheyAre) {
  directory_.write("a.prw",
                   "#include \"one.ch\"\nx := { ONE, A, D , E }B\n#ifdef C\ny := 2\n#endif\n");
  directory_.write("first/one.ch", "#define ONE 'first'\n");
  directory_.write("a;\"b\" c/one.ch", "#define ONE 'host'\n");
  std::string file = "@F" + path("a.prw").string();
  std::string value = "/DA=vector";
  std::string first = "-I" + path("first").string();
  const std::string second = path("a;\"b\" c");
  const std::string lengthy(300, 'e');
  const char* const kDirectories[] = {"", second.c_str()};
  const krpre_define kDefines[] = {{"A", "1 /N  -F2"}, {"B", nullptr}, {"C", ""},
                                   {"D", "d"},         {"D", "A"},     {"E", lengthy.c_str()}};
  host_.includeDirectoryCount = std::size(kDirectories);
  host_.includeDirectories = kDirectories;
  host_.defineCount = std::size(kDefines);
  host_.defines = kDefines;
  host_.output = takeOutput;
  const std::string rest = ", 1 /N  -F2, 1 /N  -F2 , " + lengthy + " }\r\n\r\ny := 2\r\n";
  char* vector[] = {nullptr, file.data(), value.data(), first.data()};
  EXPECT_EQ(krpre_run(3, vector, &host_), 0) << heard_.messages;
  EXPECT_NE(heard_.output.find("x := { 'host'" + rest), std::string::npos) << heard_.output;
  EXPECT_EQ(krpre_run(4, vector, &host_), 0);
  EXPECT_NE(heard_.output.find("x := { 'first'" + rest), std::string::npos) << heard_.output;
}

TEST_F(RichHost, WithAFaultyDirectoryOrDefineIsRefusedBeforeAnythingHappens) {
  const char* const kNoDirectory[] = {nullptr};
  const krpre_define kDefines[] = {{nullptr, "1"},    {"", "1"},     {"A B", "1"}, {"A(x)", "x"},
                                   {"\xE9", nullptr}, {"A", "1\n2"}, {"A", "\r"}};
  const long long tooLate = KRPRE_LATEST_TIME + 1;
  const krpre_prefix prefixes[] = {{"a", "\""}, {nullptr, "b"}};
  const krpre_file files[] = {
      {nullptr, "", 0, nullptr}, {"a", nullptr, 1, nullptr}, {"a", "", 16 << 20, nullptr}};
  std::vector<krpre_host> hosts(11 + std::size(kDefines), host_);
  hosts[0].includeDirectoryCount = hosts[1].includeDirectoryCount = hosts[2].defineCount = 1;
  hosts[0].includeDirectories = kNoDirectory;
  for (std::size_t i = 0; i < std::size(kDefines); ++i) {
    hosts[3 + i].defineCount = 1;
    hosts[3 + i].defines = &kDefines[i];
  }
  hosts.back().mostErrors = -1;
  hosts[hosts.size() - 2].warnings = "all,no-such";
  hosts[hosts.size() - 3].timeStamp = &tooLate;
  for (std::size_t i = 0; i < std::size(prefixes); ++i) {
    hosts[hosts.size() - 4 - i].prefixCount = 1;
    hosts[hosts.size() - 4 - i].prefixes = &prefixes[i];
  }
  for (std::size_t i = 0; i < std::size(files); ++i) {
    hosts[hosts.size() - 6 - i].fileCount = 1;
    hosts[hosts.size() - 6 - i].files = &files[i];
  }
  for (const krpre_host& host : hosts) {
    host_ = host;
    heard_ = {};
    EXPECT_EQ(run(), KRPRE_OUTPUT_FAILED);
    EXPECT_TRUE(heard_.messages.starts_with("KOREL Preprocessor: ")) << heard_.messages;
    EXPECT_EQ(heard_.slugs, "invalid-host ");
  }
  EXPECT_FALSE(fs::exists(path("a.ppo")));
}

TEST_F(RichHost, FindsItsOwnFilesInPlaceOfThoseOnDiskOrAlone) {
  directory_.write("a.prw", "#include \"u.ch\"\n#include \"./u.ch\"\n#include \"d.ch\"\nU D\n");
  directory_.write("u.ch", "#define U disk\n");
  directory_.write("d.ch", "#define D disk\n");
  const std::string header = path("u.ch").string();
  const std::string source = path("a.prw").string();
  const std::string standard = path("std.ch").string();
  const std::string text = "#define U host\n";
  const krpre_file files[] = {
      {header.c_str(), text.data(), text.size(), nullptr},
      {source.c_str(), "#include \"u.ch\"\n#include \"d.ch\"\nU\n", 35, nullptr},
      {standard.c_str(), nullptr, 0, nullptr},
  };
  host_.files = files;
  host_.fileCount = 1;
  host_.output = takeOutput;
  const char* const directories[] = {directory_.path().c_str()};
  host_.includeDirectoryCount = 1;
  host_.includeDirectories = directories;
  // It is read for each of two sources.
  directory_.write("b.prw", readBytes(path("a.prw")));
  std::string sources[] = {"@F" + path("a.prw").string(), "@F" + path("b.prw").string()};
  char* vector[] = {nullptr, sources[0].data(), sources[1].data()};
  EXPECT_EQ(krpre_run(3, vector, &host_), 0) << heard_.messages;
  EXPECT_EQ(std::regex_replace(heard_.output, std::regex("#.*\r\n"), ""),
            "host disk\r\nhost disk\r\n");
  host_.fileCount = 3;
  host_.flags = KRPRE_ONLY_FILES;
  heard_ = {};
  EXPECT_NE(run(), 0);
  EXPECT_EQ(heard_.slugs, "include-not-found failed ");
  EXPECT_EQ(heard_.files, "read a.prw\nread std.ch\nread u.ch\n");
}

TEST_F(RichHost, SharesHeadersAmongRuns) {
  directory_.write("std.ch", "#xcommand BEEP => Tone(440)\n");
  directory_.write("a.prw", "BEEP\n");
  host_.headers = krpre_headers_new(0);
  for (int runs = 1; runs <= 3; ++runs) {
    EXPECT_EQ(run(), 0);
    EXPECT_EQ(readBytes(path("a.ppo")), "Tone(440)\r\n");
  }
  EXPECT_EQ(krpre_headers_read(host_.headers), 1);
  EXPECT_EQ(krpre_headers_reused(host_.headers), 2);
  krpre_headers_free(host_.headers);
  krpre_headers_free(nullptr);
}

}  // namespace
