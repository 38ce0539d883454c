// What a host is told of the messages of a run, through the shared library.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "include/krpre.h"
#include "tests/support/childprocess.h"

namespace {

struct tTold {
  std::string directory;  // cut out of names and messages
  std::vector<std::string> diagnostics;
  std::string messages;
};

std::string without(std::string text, const std::string& directory) {
  for (std::size_t at; (at = text.find(directory)) != std::string::npos;) {
    text.erase(at, directory.size());
  }
  return text;
}

void takeDiagnostic(void* context, const krpre_diagnostic* diagnostic) {
  static const char* const kNames[] = {"", "error", "trace", "result"};
  tTold& told = *static_cast<tTold*>(context);
  std::string text = std::string(kNames[diagnostic->severity]) + " " +
                     std::to_string(diagnostic->code) + " " + diagnostic->slug + " " +
                     diagnostic->file + ":" + std::to_string(diagnostic->line) + ":" +
                     std::to_string(diagnostic->column) + " " + diagnostic->message;
  if (diagnostic->sourceLength > 0) {
    text += " [" + std::string(diagnostic->source, diagnostic->sourceLength).substr(0, 20) + "]";
  }
  for (int i = 0; i < diagnostic->includeCount; ++i) {
    text += std::string(" <") + diagnostic->includedFrom[i].file + ":" +
            std::to_string(diagnostic->includedFrom[i].line);
  }
  for (int i = 0; i < diagnostic->ruleCount; ++i) {
    text += std::string(" =") + diagnostic->rules[i].key + "@" + diagnostic->rules[i].file;
  }
  told.diagnostics.push_back(without(text, told.directory));
}

void takeMessage(void* context, const char* text, std::size_t length) {
  static_cast<tTold*>(context)->messages.append(text, length);
}

class Diagnostics : public testing::Test {
 protected:
  Diagnostics() { directory_.write("std.ch", ""); }

  std::vector<std::string> told(std::vector<std::string> arguments,
                                const char* language = nullptr) {
    told_ = {directory_.path().string() + "/", {}, {}};
    std::vector<char*> vector = {nullptr};
    for (std::string& argument : arguments) {
      if (argument.starts_with("@F")) argument.insert(2, told_.directory);
      vector.push_back(argument.data());
    }
    krpre_host host{};
    host.size = sizeof host;
    host.context = &told_;
    host.message = takeMessage;
    host.diagnostic = takeDiagnostic;
    host.language = language;
    krpre_run(static_cast<int>(vector.size()), vector.data(), &host);
    told_.messages = without(told_.messages, told_.directory);
    return told_.diagnostics;
  }

  tTemporaryDirectory directory_;
  tTold told_;
};

using tLines = std::vector<std::string>;

TEST_F(Diagnostics, SayWhereAnErrorOfASourceStandsAndWhatLedThere) {
  directory_.write("a.prw", "#include \"sub/a.ch\"\n\tx := SIDE\n\tWHEN x\n");
  directory_.write("sub/a.ch", "#define SIDE 1\n#command WHEN <x> => EndIf\n");
  const tLines expected = {
      "error 2027 endif-without-if a.prw:3:2 C2027  ENDIF does not match IF [\tWHEN x] "
      "=WHEN@sub/a.ch",
      "result 1 failed a.prw:0:0 KOREL Preprocessor. Precompilation of file a.prw with error. "
      "Exitecode equal to 1"};
  EXPECT_EQ(told({"@Fa.prw"}), expected);

  directory_.write("sub/a.ch", "\n#else\n");
  EXPECT_EQ(told({"@Fa.prw"}).front(),
            "error 2070 else-without-ifdef sub/a.ch:2:1 C2070  #else does not match #ifdef "
            "[#else] <a.prw:1");
}

TEST_F(Diagnostics, HaveANameForWhatHasNoNumber) {
  directory_.write("long.prw", "x\r\r\n" + std::string(4096, 'y') + "\n");
  EXPECT_EQ(told({"@Flong.prw"}).front(),
            "error 0 line-too-long long.prw:3:4096 Source line too big: 4096 bytes or more "
            "[yyyyyyyyyyyyyyyyyyyy]");
  EXPECT_EQ(told({"@Fnone.prw"}).front(), "error 0 file-not-found none.prw:0:0 File not found");
  directory_.write("a.ppo", "");
  EXPECT_EQ(told({"@Fa.ppo"}).front(),
            "error 0 output-is-source a.ppo:0:0 The output would take the source's place");
  directory_.write("b.prw", "x\n");
  directory_.write("b.ppo/x", "");
  EXPECT_EQ(told({"@Fb.prw"}).front().substr(0, 25), "error 0 output-failed b.p");
}

TEST_F(Diagnostics, AreEnglishWhateverTheLanguageOfTheMessages) {
  directory_.write("a.prw", "x\n");
  const tLines diagnostics = told({"-T", "@Fa.prw"}, "de_DE.UTF-8");
  EXPECT_EQ(diagnostics.back(),
            "result 0 preprocessed a.prw:0:0 KOREL Preprocessor: Precompilation of file a.prw ok.");
  EXPECT_EQ(diagnostics[2], "trace 0 trace a.prw:0:0 [TRACE] generated lines 1");
  EXPECT_NE(told_.messages.find("[TRACE] erzeugte Zeilen 1\n"), std::string::npos);
  EXPECT_NE(told_.messages.find("KOREL Pr\xC3\xA4prozessor: Vor\xC3\xBC"
                                "bersetzung der Datei a.prw in Ordnung.\n"),
            std::string::npos);
  EXPECT_EQ(told({"@Fa.prw"}, "xx").back(), diagnostics.back());
}

TEST(Translations, AreCutToTheSizeOfTheBuffer) {
  char buffer[8] = "before";
  EXPECT_EQ(krpre_translate("de", "Error", buffer, 0), 6U);
  EXPECT_STREQ(buffer, "before");
  EXPECT_EQ(krpre_translate("de", "Error", buffer, 6), 6U);
  EXPECT_STREQ(buffer, "Fehle");
  EXPECT_EQ(krpre_translate("de", "Error", buffer, 7), 6U);
  EXPECT_STREQ(buffer, "Fehler");
  EXPECT_EQ(krpre_translate(nullptr, "Error", buffer, sizeof buffer), 5U);
  EXPECT_STREQ(buffer, "Error");
}

}  // namespace
