// What a host hears of a run through krpre_run.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
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

TEST_F(RichHost, MayAskForNoOutputAndThenAnOlderOneStays) {
  directory_.write("a.ppo", "old");
  host_.flags = KRPRE_NO_OUTPUT;
  for (const char* source : {"x := 1\n", "#else\n"}) {
    directory_.write("a.prw", source);
    run();
    EXPECT_EQ(readBytes(path("a.ppo")), "old") << source;
  }
}

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
    const std::string written = readBytes(output);

    fs::last_write_time(output, longAgo);
    host_.flags = 0;
    ASSERT_EQ(run(), 0);
    EXPECT_NE(fs::last_write_time(output), longAgo);
    EXPECT_EQ(readBytes(output), written);
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
  for (const char* name : {"a.prw", "A.PRX", "out/link", "out/b.ch"}) {
    const std::string source = path(name);
    host_.outputName = source.c_str();
    EXPECT_EQ(run(), KRPRE_BAD_SOURCE) << name;
    EXPECT_TRUE(heard_.slugs.ends_with("output-is-source failed ")) << heard_.slugs;
  }
  EXPECT_EQ(readBytes(path("a.prw")), "x := 1\n");
  EXPECT_FALSE(fs::exists(path("out/b.ch")));
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
  EXPECT_EQ(outputOf("a", "out/"), "out/a.ppo");
  char name[4] = "???";
  EXPECT_EQ(krpre_output_name("a.prw", nullptr, name, sizeof name), 5U);
  EXPECT_STREQ(name, "a.p");
  EXPECT_EQ(krpre_output_name("a.prw", nullptr, nullptr, 0), 5U);
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
  for (const std::size_t size : {std::size_t{0}, sizeof(krpre_host) + 8}) {
    host_.size = size;
    EXPECT_EQ(run(), KRPRE_OUTPUT_FAILED);
  }
  EXPECT_EQ(heard_.messages, "");
  EXPECT_FALSE(fs::exists(path("a.ppo")));
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
