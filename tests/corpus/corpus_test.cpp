// Runs every source of the corpus through each entry point of the library and compares whole files.
// "corpus_test --library PATH" does so with another build of it.
//
// A case is <topic>/<case>.prw (or .zorb, ...). Beside it stands what must come of it:
//   <case>.ppo   the output file, byte for byte (.ppx_ for the extended language), or
//   <case>.err   for a source that must fail: everything printed; there must then be no output;
//   <case>.opt   when there are any: arguments of the library, one on each line.
// The other files of a topic are its headers. A case runs in a copy of its topic, with the shipped
// headers in a folder of it, so that names and messages depend on no path. An older output stands
// there before, and nothing but the new output may stand there after it.
//
// With KRPRE_ACCEPT=1 in the environment the expectations are written instead. Read the difference.

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <iterator>
#include <sstream>

#include "tests/corpus/entrypoint.h"
#include "tests/support/childprocess.h"

namespace fs = std::filesystem;

namespace {

const fs::path kCorpus = KRPRE_CORPUS;
const char* const kHeaders = "headers";
std::string library = KRPRE_LIBRARY;

struct tKind {
  const char* source;
  const char* output;
};
const tKind kKinds[] = {{".prw", ".ppo"},   {".prg", ".ppo"}, {".prx", ".ppo"},
                        {".zorb", ".ppx_"}, {".krh", ".ppo"}, {".khu", ".ppo"}};

// Null when the file is no source.
const char* outputExtension(const fs::path& source) {
  for (const tKind& kind : kKinds) {
    if (source.extension() == kind.source) return kind.output;
  }
  return nullptr;
}

bool isExpectation(const fs::path& file) {
  const std::string extension = file.extension();
  return extension == ".ppo" || extension == ".ppx_" || extension == ".err" || extension == ".opt";
}

fs::path withExtension(fs::path file, const char* extension) {
  return file.replace_extension(extension);
}

// Paths from the corpus folder, sorted.
std::vector<fs::path> allCases() {
  std::vector<fs::path> cases;
  for (const auto& topic : fs::directory_iterator(kCorpus)) {
    if (!topic.is_directory()) continue;
    for (const auto& file : fs::directory_iterator(topic)) {
      if (outputExtension(file.path()) != nullptr) {
        cases.push_back(fs::relative(file.path(), kCorpus));
      }
    }
  }
  std::sort(cases.begin(), cases.end());
  return cases;
}

void copyTopic(const fs::path& topic, const fs::path& to) {
  for (const auto& entry : fs::recursive_directory_iterator(topic)) {
    const fs::path target = to / fs::relative(entry.path(), topic);
    if (entry.is_directory()) {
      fs::create_directories(target);
    } else if (!isExpectation(entry.path())) {
      fs::copy_file(entry.path(), target);
    }
  }
}

std::vector<std::string> commandFor(const char* entryPoint) {
  return {"/proc/self/exe", "--call", library, entryPoint};
}

std::vector<std::string> commandFor(const char* entryPoint, const fs::path& source) {
  std::vector<std::string> command = commandFor(entryPoint);
  const fs::path options = withExtension(source, ".opt");
  if (fs::exists(options)) {
    std::istringstream lines(readBytes(options));
    for (std::string line; std::getline(lines, line);) command.push_back(line);
  }
  command.push_back("@F" + source.filename().string());
  return command;
}

// A command line has no way to say that a blank is part of an argument.
bool holdsBlank(const std::vector<std::string>& command) {
  return std::any_of(command.begin() + 4, command.end(),
                     [](const std::string& word) { return word.find(' ') != std::string::npos; });
}

// The number at the end of the messages.
int toldResult(const std::string& messages) {
  return std::stoi(messages.substr(messages.rfind(' ')));
}

// What must not differ from the expectation: the output file, or the messages when there is none.
std::string outcome(const tChildResult& result, const fs::path& output) {
  return fs::exists(output) ? readBytes(output) : result.output;
}

int fileCount(const fs::path& directory) {
  const fs::recursive_directory_iterator all(directory);
  return static_cast<int>(std::distance(begin(all), end(all)));
}

class Corpus : public testing::TestWithParam<fs::path> {
 protected:
  void accept(const fs::path& source, const tChildResult& result, const fs::path& output) {
    const char* kept = result.status == 0 ? outputExtension(source) : ".err";
    fs::remove(withExtension(source, outputExtension(source)));
    fs::remove(withExtension(source, ".err"));
    writeBytes(withExtension(source, kept), outcome(result, output));
  }

  void compare(const fs::path& source, const tChildResult& result, const fs::path& output) {
    const fs::path expectedErrors = withExtension(source, ".err");
    const bool mustFail = fs::exists(expectedErrors);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(fs::exists(output), !mustFail);
    const fs::path expected =
        mustFail ? expectedErrors : withExtension(source, outputExtension(source));
    ASSERT_TRUE(fs::exists(expected)) << "nothing says what must come of this case";
    EXPECT_EQ(outcome(result, output), readBytes(expected));
    EXPECT_EQ(result.status, mustFail ? toldResult(readBytes(expected)) : 0);
    if (!mustFail) {
      const std::string name = source.filename();
      EXPECT_EQ(result.output, "KOREL Preprocessor: Precompilation of file " + name + " ok.\n");
    }
  }
};

TEST_P(Corpus, MatchesItsExpectation) {
  const fs::path source = kCorpus / GetParam();
  const tTemporaryDirectory directory;
  copyTopic(source.parent_path(), directory.path());
  fs::create_directory_symlink(KRPRE_HEADERS, directory.path() / kHeaders);
  const fs::path output =
      directory.path() / withExtension(source.filename(), outputExtension(source));
  const int inputs = fileCount(directory.path());
  const bool accepting = std::getenv("KRPRE_ACCEPT") != nullptr;

  for (const char* entryPoint :
       {"doPreProc", "executeKrpreDll", "Java_Krpre_prebuild", "redirectOutPut"}) {
    SCOPED_TRACE(entryPoint);
    writeBytes(output, "from an earlier run");
    const std::vector<std::string> command = commandFor(entryPoint, source);
    if (command[3] == "executeKrpreDll" && holdsBlank(command)) continue;
    const tChildResult result = runChild(command, directory.path(), kHeaders);
    EXPECT_EQ(fileCount(directory.path()), fs::exists(output) ? inputs + 1 : inputs);
    if (accepting) return accept(source, result, output);
    compare(source, result, output);
  }
}

// The first run saves the standard header, the second uses it.
TEST_P(Corpus, ComesOutTheSameWithASavedHeader) {
  const fs::path source = kCorpus / GetParam();
  const tTemporaryDirectory directory;
  copyTopic(source.parent_path(), directory.path());
  fs::copy(KRPRE_HEADERS, directory.path() / kHeaders, fs::copy_options::recursive);
  const fs::path output =
      directory.path() / withExtension(source.filename(), outputExtension(source));
  std::vector<std::string> command = commandFor("doPreProc", source);
  command.emplace_back("@@PRECOMPILED=" + (directory.path() / "kept").string());
  runChild(command, directory.path(), kHeaders);
  compare(source, runChild(command, directory.path(), kHeaders), output);
}

TEST(CorpusFolder, HoldsNoExpectationWithoutSource) {
  const std::vector<fs::path> cases = allCases();
  ASSERT_FALSE(cases.empty());
  for (const auto& entry : fs::recursive_directory_iterator(kCorpus)) {
    if (!isExpectation(entry.path())) continue;
    const fs::path stem = withExtension(fs::relative(entry.path(), kCorpus), "");
    EXPECT_TRUE(std::any_of(cases.begin(), cases.end(), [&](const fs::path& source) {
      return withExtension(source, "") == stem;
    })) << entry.path();
  }
}

std::string caseName(const testing::TestParamInfo<fs::path>& info) {
  std::string name = withExtension(info.param, "").string();
  for (char& c : name) {
    if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
  }
  return name;
}

INSTANTIATE_TEST_SUITE_P(Files, Corpus, testing::ValuesIn(allCases()), caseName);

}  // namespace

int main(int argc, char** argv) {
  if (argc > 3 && std::string_view(argv[1]) == "--call") return callEntryPoint(argc - 2, argv + 2);
  testing::InitGoogleTest(&argc, argv);
  if (argc == 3 && std::string_view(argv[1]) == "--library") library = fs::absolute(argv[2]);
  return RUN_ALL_TESTS();
}
