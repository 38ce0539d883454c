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

namespace {

struct tHeard {
  std::filesystem::path directory;
  std::string messages;
  std::vector<std::string> rules;
  std::vector<std::string> steps;
  std::string files;
  std::string output;
};

tHeard& heard(void* context) {
  return *static_cast<tHeard*>(context);
}

void takeMessage(void* context, const char* text, std::size_t length) {
  heard(context).messages.append(text, length);
}

void takeRule(void* context, const krpre_rule* rule) {
  heard(context).rules.push_back(
      std::to_string(rule->kind) + " " + rule->listing + " @" +
      std::filesystem::relative(rule->file, heard(context).directory).string() + ":" +
      std::to_string(rule->line));
}

void takeFile(void* context, int event, const char* source, const char* name) {
  static const char* const kNames[] = {"", "read", "written", "unchanged"};
  const auto bare = [](const char* path) {
    return std::filesystem::path(path).filename().string();
  };
  heard(context).files += bare(source) + " " + kNames[event] + " " + bare(name) + "\n";
}

void takeOutput(void* context, const char*, const char* text, std::size_t length) {
  heard(context).output.append(text, length);
}

std::string captures(const krpre_step& step) {
  std::string text;
  for (int i = 0; i < step.captureCount; ++i) {
    text += std::string(" ") + step.captures[i].marker;
    for (int k = 0; k < step.captures[i].count; ++k) {
      text += std::string("|") + step.captures[i].texts[k];
    }
  }
  return text;
}

void takeStep(void* context, const krpre_step* step) {
  static const char* const kNames[] = {"", "begins", "tried", "matched", "applied", "ends"};
  std::string text = std::to_string(step->line) + "-" + std::to_string(step->lastLine) + " " +
                     kNames[step->kind] + ": " + step->statement;
  if (step->rule != nullptr) text += " / " + std::string(step->rule->key);
  if (step->kind == KRPRE_STEP_TRIED && step->score == 0) {
    text += std::string(" failed ") + step->failedMarker + " at " + step->failedToken;
  }
  heard(context).steps.push_back(text + captures(*step));
}

int run(const tTemporaryDirectory& directory, const krpre_host* host) {
  std::string file = "@F" + (directory.path() / "a.prw").string();
  char* vector[] = {nullptr, file.data()};
  return krpre_run(2, vector, host);
}

krpre_host hostOf(tHeard& heard) {
  krpre_host host{};
  host.size = sizeof host;
  host.context = &heard;
  host.message = takeMessage;
  return host;
}

TEST(RichHost, HearsMessagesRulesAndEveryStepOfAStatement) {
  const tTemporaryDirectory directory;
  directory.write("std.ch", "");
  directory.write("sub/rules.ch",
                  "#command SHOW <what,...> [AT <row>] => ShowAt({<what>}, <row>)\n"
                  "#command SHOW ALL => ShowAll()\n"
                  "#xtranslate TEN => 10\n");
  directory.write("a.prw", "#include \"sub/rules.ch\"\n#define TWO 2\nShow one,;\n TWO AT TEN\n");
  tHeard heard{directory.path(), {}, {}, {}, {}, {}};
  krpre_host host = hostOf(heard);
  host.rule = takeRule;
  host.step = takeStep;
  EXPECT_EQ(run(directory, &host), 0);
  EXPECT_NE(heard.messages.find("a.prw ok."), std::string::npos);
  const std::vector<std::string> rules = {
      "1 TWO  => 2 @a.prw:2",
      "2 TEN  => 10 @sub/rules.ch:3",
      "3 #xcommand SHOW <what ,...> [AT row] => ShowAt ( { what } , row ) @sub/rules.ch:1",
      "3 #xcommand SHOW ALL  => ShowAll ( ) @sub/rules.ch:2",
  };
  EXPECT_EQ(heard.rules, rules);
  const std::vector<std::string> steps = {
      "3-4 begins: Show one, TWO AT TEN",
      "3-4 tried: Show one, TWO AT TEN / TWO",
      "3-4 matched: Show one, TWO AT TEN / TWO",
      "3-4 applied: Show one, 2 AT TEN / TWO",
      "3-4 tried: Show one, 2 AT TEN / TEN",
      "3-4 matched: Show one, 2 AT TEN / TEN",
      "3-4 applied: Show one, 2 AT 10 / TEN",
      "3-4 tried: Show one, 2 AT 10 / SHOW failed ALL at one",
      "3-4 tried: Show one, 2 AT 10 / SHOW",
      "3-4 matched: Show one, 2 AT 10 / SHOW what|one, 2 row|10",
      "3-4 applied: ShowAt({one, 2}, 10) / SHOW",
      "3-4 ends: ShowAt({one, 2}, 10)",
  };
  EXPECT_EQ(heard.steps, steps);
  EXPECT_TRUE(std::filesystem::exists(directory.path() / "a.ppo"));
}

TEST(RichHost, HearsOfEveryFileOfTheProgramInOrder) {
  const tTemporaryDirectory directory;
  directory.write("std.ch", "");
  directory.write("a.prw",
                  "#include \"one.ch\"\n#ifdef NONE\n#include \"no.ch\"\n#endif\n"
                  "#include \"two.ch\"\n");
  directory.write("one.ch", "#include \"two.ch\"\n#include \"one.ch\"\n");
  directory.write("two.ch", "");
  tHeard heard;
  krpre_host host = hostOf(heard);
  host.file = takeFile;
  EXPECT_EQ(run(directory, &host), 0);
  EXPECT_EQ(heard.files,
            "a.prw read a.prw\na.prw read std.ch\na.prw read one.ch\na.prw read two.ch\n"
            "a.prw written a.ppo\n");

  heard.files.clear();
  directory.write("a.prw", "#include \"two.ch\"\n#else\n");
  EXPECT_EQ(run(directory, &host), 1);
  EXPECT_EQ(heard.files, "a.prw read a.prw\na.prw read std.ch\na.prw read two.ch\n");
}

TEST(RichHost, MayAskForNoOutputAndThenAnOlderOneStays) {
  const tTemporaryDirectory directory;
  directory.write("std.ch", "");
  directory.write("a.ppo", "old");
  tHeard heard;
  krpre_host host = hostOf(heard);
  host.flags = KRPRE_NO_OUTPUT;
  for (const char* source : {"x := 1\n", "#else\n"}) {
    directory.write("a.prw", source);
    run(directory, &host);
    EXPECT_EQ(readBytes(directory.path() / "a.ppo"), "old") << source;
  }
}

TEST(RichHost, MayKeepAnOutputThatWouldNotChange) {
  const tTemporaryDirectory directory;
  const auto output = directory.path() / "a.ppo";
  const auto longAgo = std::filesystem::file_time_type{} + std::chrono::hours(1);
  directory.write("std.ch", "");
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
    directory.write("a.prw", row.source);
    writeBytes(output, row.older);
    std::filesystem::last_write_time(output, longAgo);
    tHeard heard;
    krpre_host host = hostOf(heard);
    host.file = takeFile;
    host.flags = KRPRE_KEEP_UNCHANGED;
    ASSERT_EQ(run(directory, &host), 0);
    EXPECT_EQ(std::filesystem::last_write_time(output) == longAgo, row.kept) << row.older;
    EXPECT_NE(heard.files.find(row.kept ? "unchanged a.ppo" : "written a.ppo"), std::string::npos);
    const std::string written = readBytes(output);

    std::filesystem::last_write_time(output, longAgo);
    host.flags = 0;
    ASSERT_EQ(run(directory, &host), 0);
    EXPECT_NE(std::filesystem::last_write_time(output), longAgo);
    EXPECT_EQ(readBytes(output), written);
  }
}

TEST(RichHost, MayNameTheOutputButNeverASource) {
  const tTemporaryDirectory directory;
  directory.write("std.ch", "");
  directory.write("a.prw", "x := 1\n");
  directory.write("out/keep", "");
  tHeard heard;
  krpre_host host = hostOf(heard);
  const std::string output = directory.path() / "out/b.txt";
  host.outputName = output.c_str();
  EXPECT_EQ(run(directory, &host), 0);
  EXPECT_EQ(readBytes(output), "x := 1\r\n");
  EXPECT_FALSE(std::filesystem::exists(directory.path() / "a.ppo"));

  std::filesystem::create_symlink("../a.prw", directory.path() / "out/link");
  for (const char* name : {"a.prw", "A.PRX", "out/link", "out/b.ch"}) {
    const std::string source = directory.path() / name;
    host.outputName = source.c_str();
    EXPECT_EQ(run(directory, &host), KRPRE_BAD_SOURCE) << name;
  }
  EXPECT_EQ(readBytes(directory.path() / "a.prw"), "x := 1\n");
  EXPECT_FALSE(std::filesystem::exists(directory.path() / "out/b.ch"));
}

TEST(RichHost, GivesATextForATextAndTouchesNoFile) {
  const tTemporaryDirectory directory;
  directory.write("std.ch", "");
  directory.write("own.ch", "#define OWN 'own'\n");
  directory.write("a.ppo", "old");
  const std::string name = directory.path() / "a.prw";
  tHeard heard;
  krpre_host host = hostOf(heard);
  host.output = takeOutput;
  const auto give = [&](std::string_view text) {
    heard.output.clear();
    heard.messages.clear();
    return krpre_text(0, nullptr, &host, name.c_str(), text.data(), text.size());
  };
  EXPECT_EQ(give("#include 'own.ch'\nx := OWN"), 0);
  EXPECT_TRUE(heard.output.ends_with("a.prw\"\r\nx := 'own'\r\n")) << heard.output;
  EXPECT_EQ(give(""), 0);
  EXPECT_EQ(heard.output, "");
  EXPECT_EQ(give(std::string_view("x := 'a\0b'\n", 11)), 0);
  EXPECT_EQ(heard.output, std::string_view("x := 'a\0b'\r\n", 12));
  directory.write("a.prw", "another\n");
  EXPECT_EQ(give("x := __COMPTIMESTAMP__\n"), 0);
  EXPECT_TRUE(heard.output.starts_with("x := \"20")) << heard.output;
  EXPECT_EQ(give("\n#else\n"), 1);
  EXPECT_NE(heard.messages.find("a.prw(2) Error"), std::string::npos);
  EXPECT_EQ(heard.output, "");
  EXPECT_EQ(give(std::string(16 << 20, '\n')), KRPRE_BAD_SOURCE);
  EXPECT_EQ(krpre_text(0, nullptr, &host, "", "x", 1), KRPRE_BAD_SOURCE);

  EXPECT_EQ(readBytes(directory.path() / "a.ppo"), "old");
  const auto files = std::filesystem::directory_iterator(directory.path());
  EXPECT_EQ(std::distance(begin(files), end(files)), 4);
}

TEST(RichHost, LearnsHowAnOutputWillBeCalled) {
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

TEST(RichHost, MayWaitForAnotherWriter) {
  const tTemporaryDirectory directory;
  const std::filesystem::path temporary = directory.path() / "krpre0.ppo";
  directory.write("std.ch", "");
  directory.write("a.prw", "x := 1\n");
  writeBytes(temporary, "half");
  const int writer = open(temporary.c_str(), O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(flock(writer, LOCK_EX), 0);
  tHeard heard;
  krpre_host host = hostOf(heard);
  EXPECT_EQ(run(directory, &host), KRPRE_OUTPUT_FAILED);
  EXPECT_EQ(readBytes(temporary), "half");

  std::thread end([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    std::filesystem::rename(temporary, directory.path() / "a.ppo");
    close(writer);
  });
  host.flags = KRPRE_TAKE_TURNS;
  EXPECT_EQ(run(directory, &host), 0);
  end.join();
  EXPECT_EQ(readBytes(directory.path() / "a.ppo"), "x := 1\r\n");
  EXPECT_FALSE(std::filesystem::exists(temporary));
}

TEST(RichHost, OfAnUnknownSizeIsRefusedBeforeAnythingHappens) {
  const tTemporaryDirectory directory;
  directory.write("std.ch", "");
  directory.write("a.prw", "x := 1\n");
  tHeard heard;
  for (const std::size_t size : {std::size_t{0}, sizeof(krpre_host) + 8}) {
    krpre_host host = hostOf(heard);
    host.size = size;
    EXPECT_EQ(run(directory, &host), KRPRE_OUTPUT_FAILED);
  }
  EXPECT_EQ(heard.messages, "");
  EXPECT_FALSE(std::filesystem::exists(directory.path() / "a.ppo"));
}

TEST(RichHost, SharesHeadersAmongRuns) {
  const tTemporaryDirectory directory;
  directory.write("std.ch", "#xcommand BEEP => Tone(440)\n");
  directory.write("a.prw", "BEEP\n");
  tHeard heard;
  krpre_host host = hostOf(heard);
  host.headers = krpre_headers_new(0);
  for (int runs = 1; runs <= 3; ++runs) {
    EXPECT_EQ(run(directory, &host), 0);
    EXPECT_EQ(readBytes(directory.path() / "a.ppo"), "Tone(440)\r\n");
  }
  EXPECT_EQ(krpre_headers_read(host.headers), 1);
  EXPECT_EQ(krpre_headers_reused(host.headers), 2);
  krpre_headers_free(host.headers);
  krpre_headers_free(nullptr);
}

}  // namespace
