#include "preprocessor/run/options.h"

#include <gtest/gtest.h>

#include "tests/support/memorydisk.h"

namespace {

std::string joined(const tAutoArray<tString>& list) {
  std::string text;
  for (int i = 0; i < list.count(); ++i) text.append("<").append(list[i].view()).append(">");
  return text;
}

/// Everything the options hold, in one line, what has its default left out.
std::string described(const tRunOptions& options) {
  std::string text;
  const auto add = [&](const char* name, std::string_view value) {
    text.append(text.empty() ? "" : " ").append(name).append(value);
  };
  if (!options.files.empty()) add("files", joined(options.files));
  if (!options.sessionOptions.empty()) add("session", joined(options.sessionOptions));
  if (options.debug) add("debug", "");
  if (!options.captureFatal) add("nocapture", "");
  if (options.tag != "0") add("tag=", options.tag);
  if (!options.includePath.empty()) add("path", joined(options.includePath));
  if (options.trace) add("trace", "");
  if (options.httpSend) add("http", "");
  if (options.pageDebugInfo) add("pages", "");
  if (!options.outputDirectory.empty()) add("out=", options.outputDirectory);
  return text;
}

std::string parsed(std::vector<const char*> arguments) {
  tDiskManMemory disk;
  disk.put("four.lst", "a.prw;;b.prw;");
  disk.put("lines.lst", "a.prw;\n \"b c.prw\"\n");
  disk.put("empty.lst", "");
  arguments.insert(arguments.begin(), "@Fprogram.prw");
  tRunOptions options;
  const bool any = ParseCommandLine(disk, static_cast<int>(arguments.size()),
                                    const_cast<char* const*>(arguments.data()), options);
  EXPECT_EQ(any, !options.files.empty());
  return described(options);
}

}  // namespace

TEST(Options, FirstRuleThatFitsDecides) {
  const struct {
    std::vector<const char*> arguments;
    const char* expected;
  } rows[] = {
      {{}, ""},
      {{"-Ione;two", "-I\"a b;;c\""}, "path<a b><><c>"},
      {{"-I\""}, "path<\">"},
      {{"-Ione", "-I\"\""}, ""},
      {{"-Ifoo", "-TRACE", "@@DEBUGGER", "@@NOCAPTFATAL"}, "debug nocapture path<foo> trace"},
      {{"/DHTTPSEND", "/KRH_DEBUGINFO", "/DHTTP"}, "session</DHTTP> http pages"},
      {{"@F\"my file.prw\"", "@Fmy file.prw", "@F"}, "files<my file.prw><my file.prw><>"},
      {{"@I7", "@Ijob", "@Oout", "@O\"x\""}, "tag=job out=\"x\""},
      {{"@X", "-v", "-Fa", "-i.", "@f"}, "session<@X><-v><-Fa><-i.><@f>"},
      {{"/DA=\"1 /DB=2\"", "\t x  y"}, "session</DA=\"1></DB=2\"><><x><><y>"},
      {{nullptr, "@Fa", nullptr, ""}, "files<a> session<>"},
      {{"@Lfour.lst"}, "files<a.prw><><b.prw><>"},
      {{"@Llines.lst", "@Lempty.lst", "@Lmissing.lst"}, "files<a.prw><\n \"b c.prw\"\n>"},
  };
  for (const auto& row : rows) EXPECT_EQ(parsed(row.arguments), row.expected);
}
