// What the program says of its options, and of arguments that it cannot use.

#include <sstream>

#include "tests/cli/program.h"

namespace {

using Usage = Program;

struct tMisuse {
  std::vector<std::string> arguments;
  std::string complaint;
};

const tMisuse kMisuses[] = {
    {{"-q"}, "no input file"},
    {{"a.prw", ""}, "a file name is empty"},
    {{"a.prw "}, "'a.prw ': a file name must not end in white space"},
    {{"a.prw", "-Tx"}, "unknown option -x"},
    {{"a.prw", "-M"}, "unknown option -M"},
    {{"--quite", "a.prw"}, "unknown option --quite; did you mean --quiet?"},
    {{"-quiet", "a.prw"}, "unknown option -quiet; did you mean --quiet?"},
    {{"--d=1", "a.prw"}, "ambiguous option --d: --define or --diagnostics"},
    {{"--quiet=1", "a.prw"}, "--quiet takes no value"},
    {{"a.prw", "-MF"}, "-MF needs a value"},
    {{"a.prw", "-o", ""}, "-o: the output name is empty"},
    {{"a.prw", "--output", "x", "-oy"}, "-o: given more than once"},
    {{"a.prw", "-D", "1+2"}, "-D 1+2: a name consists of letters, digits and underscores"},
    {{"a.prw", "-DA=1\n2"}, "-D A=1\\x0a2: a value is one line"},
    {{"a.prw", "-j4097"}, "-j: invalid number of jobs '4097'"},
    {{"a.prw", "--diagnostics=x"}, "unknown format 'x': use auto, classic, long, json or gcc"},
    {{"-q", "--classic", "@Fa.prw"}, "--classic must be the first argument"},
    {{"-MP", "a.prw"}, "-MF, -MT and -MP require -MD"},
    {{"-MD", "-MF", "x", "a.prw", "b.prw"}, "-MF requires a single source"},
    {{"-", "a.prw"}, "- (standard input) cannot be combined with other files"},
    {{"explan", "a.prw:1"}, "no file 'explan'; did you mean 'krpre explain'?"},
    {{"explain", "--jsn", "a.prw:1"}, "unknown option --jsn; did you mean --json?"},
    {{"explain", "--key=x", "a.prw:1"}, "unknown option --key: it belongs to 'krpre rules'"},
    {{"explain", "a.prw:99999999999"},
     "a.prw:99999999999: expected FILE:LINE, with lines counted from 1"},
    {{"rules", "a.prw", "b.prw"}, "expected one FILE"},
    {{"rules", "a.prw", "--color=red"}, "unknown colour mode 'red': use always, never or auto"},
    {{"pack", "a.prw", "b.prw", "-oc"}, "-o requires a single input file"},
    {{"unpack", "--ouptut", "c", "a.prw"}, "unknown option --ouptut; did you mean --output?"},
};

TEST_F(Usage, ThatIsWrongEndsWithAHintAndTouchesNothing) {
  write("a.prw", "x := 1\n");
  for (const auto& [arguments, complaint] : kMisuses) {
    const std::string& first = arguments[0];
    const bool sub =
        std::string(" explain rules pack unpack ").find(" " + first + " ") != std::string::npos;
    const tChildResult result = run(arguments);
    EXPECT_EQ(result.status, 2) << complaint;
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors,
              "krpre: " + complaint + "\nTry 'krpre " + (sub ? first + " " : "") + "--help'.\n");
  }
  EXPECT_EQ(files(), "a.prw ");
}

TEST_F(Usage, IsExplainedForEveryCommand) {
  for (const char* command : {"", "explain ", "rules ", "pack ", "unpack "}) {
    const tChildResult result = shell(std::string("krpre ") + command + "--help --nonsense");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output.find(std::string("Usage: krpre ") + command + "[OPTION]"), 0U);
    std::istringstream lines(result.output);
    for (std::string line; std::getline(lines, line);) EXPECT_LT(line.size(), 81U) << line;
  }
}

TEST_F(Usage, IsInCompletionsAndManualAsInTheTable) {
  const std::pair<std::string, std::string> kFiles[] = {{"bash", "/completions/krpre.bash"},
                                                        {"zsh", "/completions/_krpre"},
                                                        {"man", "/docs/krpre.1"}};
  for (const auto& [format, name] : kFiles) {
    const std::string made = run({"--completions", format}).output;
    const std::string kept = readBytes(KRPRE_SOURCES + name);
    const bool same = format == "man" ? kept.find(made) != std::string::npos : kept == made;
    EXPECT_TRUE(same && !made.empty()) << name << " is not what --completions prints";
  }
}

TEST_F(Usage, IsCompletedByBash) {
  for (const char* file : {"a b.prw", "notes.txt", "sub/x"}) write(file, "");
  const std::string load = "source '" KRPRE_SOURCES "/completions/krpre.bash'; ";
  const std::pair<std::string, std::string> kCases[] = {
      {"COMP_WORDS=(krpre --diag) COMP_CWORD=1", "--diagnostics\n"},
      {"COMP_WORDS=(krpre --diagnostics = j) COMP_CWORD=3", "json\n"},
      {"COMP_WORDS=(krpre --diagnostics =) COMP_CWORD=2", "auto\nclassic\nlong\njson\ngcc\n"},
      {"COMP_WORDS=(krpre -I '') COMP_CWORD=2", "sub\n"},
      {"COMP_WORDS=(krpre -q '') COMP_CWORD=2", "sub\na b.prw\n"},
      {"COMP_WORDS=(krpre ex) COMP_CWORD=1", "explain\n"},
      {"COMP_WORDS=(krpre rules --) COMP_CWORD=2",
       "--include\n--define\n--key\n--json\n--color\n--help\n"},
      {"COMP_WORDS=(krpre pack n) COMP_CWORD=2", "notes.txt\n"},
  };
  for (const auto& [words, expected] : kCases) {
    const tChildResult result =
        runChild({"/bin/bash", "-c", load + words + R"(; _krpre; printf '%s\n' "${COMPREPLY[@]}")"},
                 directory_.path());
    EXPECT_EQ(result.output + result.errors, expected) << words;
  }
}

TEST(Readme, ShowsWhatExplainPrints) {
  const tChildResult result =
      runChild({KRPRE_PROGRAM, "explain", "examples/orders/orders.prw:65"}, KRPRE_SOURCES);
  ASSERT_EQ(result.status, 0);
  std::string sample;
  std::istringstream lines(result.output);
  for (std::string line; std::getline(lines, line);) {
    sample += (line.empty() ? "" : "    " + line) + "\n";
  }
  EXPECT_NE(readBytes(KRPRE_SOURCES "/README.md").find(sample), std::string::npos) << sample;
}

}  // namespace
