#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/preprocess.h"

namespace {

TEST(Includes, TakeBackslashesForSlashesUnlessAFileBearsTheName) {
  const struct {
    const char *directive, *path;
    tFiles headers;
    const char* text;
  } kCases[] = {
      {"sub\\a.ch", "-Iinc", {{"inc/sub/a.ch", "1"}}, "#line 1 \"inc/a.ch\"\n1\n"},
      {"sub\\a.ch", "-Iw\\inc", {{"w/inc/sub/a.ch", "1"}}, "#line 1 \"w/inc/a.ch\"\n1\n"},
      {"a.ch", "-Iw\\inc;z", {{"w/inc/a.ch", "1"}, {"z/a.ch", "2"}}, "#line 1 \"w/inc/a.ch\"\n1\n"},
      {"a.ch", "-Iw\\i", {{"w/i/a.ch", "1"}, {"w\\i/a.ch", "2"}}, "#line 1 \"w\\i/a.ch\"\n2\n"},
      {"s\\a.ch", "-Ix;z", {{"x/s/a.ch", "1"}, {"z/s\\a.ch", "2"}}, "#line 1 \"z/s\\a.ch\"\n2\n"},
      // Headers are not looked for where another one was found.
      {"a.ch\"\n#include \"b.ch",
       "-Iy;x",
       {{"x/a.ch", "1"}, {"x/b.ch", "2"}, {"y/b.ch", "3"}},
       "#line 1 \"x/a.ch\"\n1\n#line 2 \"main.prw\"\n#line 1 \"y/b.ch\"\n3\n"},
  };
  for (const auto& row : kCases) {
    tDiskManMemory disk;
    disk.put("std.ch", "");
    for (const auto& [name, text] : row.headers) disk.put(name, text);
    disk.put("main.prw", std::string("#include \"") + row.directive + "\"\n");
    precomp::KorelPre16 session(disk);
    const tPreprocessed result = runSession(session, {row.path, "-Fmain.prw"});
    EXPECT_TRUE(result.text.starts_with(row.text)) << result.text << result.error;
  }
}

TEST(Includes, WithAZeroByteInTheirNameAreNotThoseThatEndThere) {
  EXPECT_EQ(preprocessFiles({{"main.prw", {"#include \"a\0b.ch\"\n", 18}}, {"a", "x"}}).error,
            "main.prw(1) Error C2090  File not found a\\x00b.ch\n");
}

TEST(Includes, AtTheEndAreFollowedByAMarkerBehindAllLines) {
  EXPECT_EQ(preprocessFiles({{"main.prw", "#include \"a.ch\"\n\n"},
                             {"a.ch", "x\n#include \"b.ch\"\n"},
                             {"b.ch", "y"}})
                .text,
            "#line 1 \"a.ch\"\nx\n#line 1 \"b.ch\"\ny\n#line 4 \"a.ch\"\n\n#line 4 \"main.prw\"");
}

TEST(StandardHeader, ComesFirstAndIsNeverWritten) {
  EXPECT_EQ(preprocessFiles({{"main.prw", "S T"}, {"std.ch", "#define S 1\nT\n"}}).text, "1 T");
  EXPECT_EQ(preprocessFiles({{"main.prw", "a"}, {"std.ch", "\n#endif"}}).error,
            "main.prw(0) Error std.ch(2) Error C2068  #ifdef/#ifndef without #endif\n");
}

class tHost : public precomp::KorelPreYaccClass {
 public:
  explicit tHost(tDiskMan& files) : KorelPreYaccClass(&files) {}
  bool hasExtLoadFile() override { return true; }
  bool extLoadFile(const tString& name, tString& text) override {
    asked += std::string(name.view()) + ";";
    // Each under another name, so that only the limit ends it.
    if (name.view().starts_with("deep")) text = tString::format("#include \"deep%d.ch\"\n", ++deep);
    if (name.view().ends_with("round.ch")) text = tString("#include \"./round.ch\"\nB\n");
    if (name == "d/h.ch" || name == "std.ch") text = tString("#define A 1\n");
    return !text.empty();
  }
  std::string asked;
  int deep = 0;
};

TEST(HostLoader, TakesThePlaceOfTheFileSystemUnderItsLimits) {
  tDiskManMemory disk;
  tHost host(disk);
  host.IncludePath().add(new tString("d"));
  tString output;
  EXPECT_TRUE(host.compileStr("text", "#include \"h.ch\"\n#include \"round.ch\"\nA", output));
  int depth = 0;
  host.processLines(output, depth);
  EXPECT_TRUE(host.asked.starts_with("std.ch;h.ch;d/h.ch;round.ch;")) << host.asked;
  EXPECT_EQ(output,
            "#line 1 \"d/h.ch\"\n#line 2 \"text\"\n"
            "#line 1 \"round.ch\"\n\nB\n#line 3 \"text\"\n1");
  EXPECT_THROW(host.compileStr("text", "#include \"deep.ch\"\n", output), SSException);
  EXPECT_EQ(host.deep, 201);  // the last one in vain
  EXPECT_EQ(host.errString(), "text(1) Error C9999  ERRO generico: include depth\n");
}

TEST(Session, KeepsItsErrorAndForgetsEverythingWhenItIsCleared) {
  tDiskManMemory disk;
  disk.put("std.ch", "");
  disk.put("sub/a.zorb", "#else\n");
  precomp::KorelPreYaccClass processor(&disk);
  processor.IncludePath().add(new tString("sub"));
  tString text;
  EXPECT_THROW(processor.compile("sub/a.zorb", nullptr, text, 0), SSException);
  EXPECT_EQ(processor.errString(), "a.zorb(1) Error C2070  #else does not match #ifdef\n");
  EXPECT_THROW(processor.compileStr("b", "\n#else\n", text), SSException);
  EXPECT_EQ(processor.errString(), "b(2) Error C2070  #else does not match #ifdef\n");
  processor.clear();
  EXPECT_EQ(processor.errString(), "");
  EXPECT_EQ(processor.GetCurDir(), "");
  EXPECT_EQ(processor.doIfDef(nullptr, 1), 1);
  EXPECT_THROW(processor.exception(2001, nullptr, nullptr), SSException);
  // Only an extended source may do without its standard header.
  disk.remove("std.ch");
  EXPECT_THROW(processor.compileStr("c", "x := 1\n", text), SSException);
}

TEST(Session, ReadsOptionsWhereverTheirMarkerStands) {
  tDiskManMemory disk;
  precomp::KorelPre16 session(disk);
  tAutoArray<tString> options;
  for (const char* option :
       {"/I/usr/inc;/opt/inc", "/Ux", "-Uy", "/DX=-F1", "/DP=/N", "zzz", "-dLEVEL= a b", "/DDEBUG",
        "-F\"a b.prw\"", "/S/DA", "-p/DB", "/Ix-F2"}) {
    options.add(new tString(option));
  }
  session.Init(options, 1);
  ASSERT_EQ(session.IncludePath().count(), 2);
  EXPECT_EQ(session.IncludePath()[1], "/opt/inc");
  EXPECT_EQ(session.userValue(), "y");
  ASSERT_EQ(session.fileList().count(), 3);
  EXPECT_EQ(session.fileList()[0], "1");
  EXPECT_EQ(session.fileList()[1], "a b.prw");
  EXPECT_EQ(session.fileList()[2], "2");
  int first = 0;
  int last = 0;
  EXPECT_EQ(session.defines()->count(), 2);
  EXPECT_EQ(session.defines()->Find(tString("LEVEL"), first, last, 0), 1);
  session.Init(options, 1);
  EXPECT_EQ(session.IncludePath().count(), 2);
}

TEST(Session, PrintsAStatementWithItsContinuations) {
  tDiskManMemory disk;
  precomp::KorelPreYaccClass processor(&disk);
  precomp::tTknString statement;
  const auto add = [](precomp::tTknString& to, const char* text) {
    to.tokens().add(new precomp::tSpcString(tString(text)));
  };
  for (const char* text : {"a", "b"}) add(statement, text);
  statement.keepOriginal();
  statement.tokens().removeAt(1);
  statement.continuations().add(new precomp::tTknString);
  add(statement.continuations()[0], "c");
  tStringSink sink;
  const tOutputScope scope(sink);
  processor.printLine(statement, 0);
  processor.printLine(statement, 1);
  add(statement, ";");
  processor.printLine(statement, 0);
  EXPECT_EQ(sink.text, "a;c\nab;c\na;c\n");
}

TEST(Session, CutsEveryValueButTheFileOfTheRun) {
  tDiskManMemory disk;
  precomp::KorelPre16 session(disk);
  const std::string value(300, 'x');
  runSession(session, {"-U" + value, "-F" + value, "/-F" + value});
  EXPECT_EQ(session.userValue().size(), 255U);
  EXPECT_EQ(session.fileList()[0].size(), 300U);
  EXPECT_EQ(session.fileList()[1].size(), 255U);
}

TEST(Defines, OfTheCommandLineAreReplacedByTheirText) {
  EXPECT_EQ(preprocess("A B", {"/DA=B + 2", "-dB"}).text, "B + 2");
  EXPECT_EQ(preprocess("x := .T. + T", {"/DT=u"}).text, "x := .T. + u");
  // The nameless define of "-D=1" is no name for the empty text of A.
  EXPECT_EQ(preprocess("x A", {"/DA=", "-D=1"}).text, "x ");
  // A later one stands behind the earlier and wins.
  EXPECT_EQ(preprocess("A", {"/DA=1", "/DA=2"}).text, "2");
  EXPECT_EQ(preprocess("b A c A", {"/DA=1 "}).text, "b 1  c 1 ");
  EXPECT_EQ(preprocess("x + 1.5 + \"A\"", {"/D+=-", "/D1.5=\"A\"", "/D\"A\"=y"}).text, "x - y - y");
}

// What a text that failed has left behind must not be touched.
TEST(Defines, OfATextThatFailedAreForgotten) {
  tMemoryProcessor processor;
  EXPECT_THROW(processor.run("a", "#define A 1\n#ifdef A\n"), SSException);
  EXPECT_EQ(processor.run("b", "#ifdef A\nx\n#endif\n#define A 2\nA"), "\n\n\n\n2");
  EXPECT_THROW(processor.run("c", "\n#else"), SSException);
  EXPECT_EQ(processor->errLine(), 2);
  EXPECT_THROW(processor.run("d", "If x\n"), SSException);
  EXPECT_EQ(processor.run("e", "y"), "y");
}

TEST(Defines, OfTheRunBeforeAreForgotten) {
  tDiskManMemory disk;
  disk.put("std.ch", "");
  disk.put("main.prw", "AB ABC");
  precomp::KorelPre16 session(disk);
  EXPECT_NE(runSession(session, {"-DAB=1", "-Fnone.prw"}).error, "");
  EXPECT_EQ(runSession(session, {"-DABC=2", "-Fmain.prw"}).text, "AB 2");
  EXPECT_EQ(session.errorCount(), 0);
}

// Neither a header that replaces one nor an include that comes to nothing touches the others.
TEST(Defines, OfTheMainFileStayForItsConditionals) {
  const char* const source = "#define A 1\n#define B 2\n#include \"a.ch\"\n#ifdef A\nA B\n#endif";
  EXPECT_EQ(
      preprocessFiles({{"main.prw", source}, {"a.ch", "#define B 3\n#include \"./a.ch\"\n"}}).text,
      "#line 1 \"a.ch\"\n#line 4 \"main.prw\"\n\n1 3");
}

std::string withoutHeaders(tFiles files) {
  tDiskManMemory disk;
  std::vector<std::string> options;
  for (const auto& [name, text] : files) {
    disk.put(name, text);
    options.push_back(std::string("-F").append(name));
  }
  precomp::KorelPre16 session(disk);
  const tPreprocessed result = runSession(session, options);
  return result.error.empty() ? result.text : result.error;
}

TEST(ExtendedSource, MayDoWithoutTheOptionalHeaders) {
  const char* const text = "#include \"krctldef.ch\"\nx\n";
  EXPECT_EQ(withoutHeaders({{"a.ZORB", text}}), "\nx");
  EXPECT_EQ(withoutHeaders({{"a.zorb.zorb", text}}),
            "a.zorb.zorb(0) Error C2090  File not found std.ch\n");
  EXPECT_EQ(withoutHeaders({{"a.prw", text}}), "a.prw(0) Error C2090  File not found std.ch\n");
}

TEST(ExtendedSource, LeavesAMissingHeaderToTheNextFileOnly) {
  EXPECT_EQ(withoutHeaders({{"a.zorb", "x"}, {"b.prw", "y"}, {"c.prw", "z"}}),
            "b.prw(0) Error C2090  File not found KRSQLDEF.CH or KRCTLDEF.CH\n");
  EXPECT_EQ(withoutHeaders({{"a.zorb", "x"}, {"b.zorb", "y"}, {"c.prw", "z"}}), "xyz");
}

}  // namespace
