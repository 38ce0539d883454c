#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lib_gzip/zipsource.h"
#include "tests/support/preprocess.h"

namespace {

struct tCase {
  const char* source;
  const char* text;
};

TEST(Conditionals, ChooseLines) {
  const tCase kCases[] = {
      {"#ifdef A\na\n#else\nb\n#endif\nc", "\n\n\nb\n\nc"},
      {"#define A\n#ifdef A\na\n#else\nb\n#endif", "\n\na"},
      {"#ifndef A\na\n#else\nb\n#endif\nc", "\na\n\n\n\nc"},
      {"#ifdef A\na\n#else\nb\n#else\nc\n#endif\nd", "\n\n\nb\n\n\n\nd"},
      {"#ifdef A\n#ifdef B\n#else\na\n#endif\n#else\nb\n#endif", "\n\n\n\n\n\nb"},
      {"#ifdef A\n) => ~ \"\n#define 1\n#endif garbage\nc", "\n\n\n\nc"},
      {"#ifdef A\n/*\n#endif\n*/ x ;\n#endif\n  #endif\nc", "\n\n\n\n\n\nc"},
      {"#ifdef A\n#define B 1\n#command X => Y\n#endif\nB", "\n\n\n\nB"},
      {"  #IfDef A // c\na\n\t#EndIf\nb", "\n\n\nb"},
      {"#ifdef if\n#endif\n#define if x\n#ifdef if\ny\n#endif", "\n\n\n\ny"},
  };
  for (const tCase& row : kCases) {
    const tPreprocessed result = preprocess(row.source);
    EXPECT_EQ(result.text, row.text) << row.source;
    EXPECT_EQ(result.error, "") << row.source;
  }
}

TEST(Directives, FailAtTheirLine) {
  const tCase kCases[] = {
      {"a\n#else", "main.prw(2) Error C2070  #else does not match #ifdef\n"},
      {"a\n#endif", "main.prw(2) Error C2068  #ifdef/#ifndef without #endif\n"},
      {"#ifndef A\n\n#ifndef B\n#endif\n#ifndef C\n",
       "main.prw(5) Error C2068  #ifdef/#ifndef without #endif\n"},
      {"a\n#ifdef\n", "main.prw(2) Error C2001  Syntax error:\n"},
      {"a\n#include h.ch\n", "main.prw(2) Error C2001  Syntax error:\n"},
      {"a\n#command A\n* c\n", "main.prw(2) Error C2001  Syntax error:\n"},
      {"a ;\n=> b", "main.prw(2) Error C2001  Syntax error:\n"},
      {"a\nb /* c\nd\n", "main.prw(3) Error C2001  Syntax error:\n"},
      {"a\n b\x7f", "main.prw(2) Error SSLex0105e: Invalid token, Line 2, Offset 3, \x7f\n"},
      {"a\n\n#include \"no.ch\"", "main.prw(3) Error C2090  File not found no.ch\n"},
  };
  for (const tCase& row : kCases) {
    const tPreprocessed result = preprocess(row.source);
    EXPECT_EQ(result.error, row.text) << row.source;
    EXPECT_EQ(result.printed, row.text) << row.source;
  }
}

TEST(Directives, FailByACodeThatTheTextNeedNotRepeat) {
  const struct {
    int code;
    const char* text;
  } kCases[] = {
      {2028, "C2029  ENDDO does not match WHILE"},
      {2069, "C2068  #ifdef/#ifndef without #endif"},
      {2002, "C2002  Statement unterminated at end of line/unbalanced parentesis/brackets"},
      {9999, "C9999  ERRO generico"},
  };
  tDiskManMemory disk;
  precomp::KorelPreYaccClass processor(&disk);
  for (const auto& row : kCases) {
    try {
      processor.exceptionAt(row.code, 1, nullptr);
    } catch (const SSException& failure) {
      EXPECT_EQ(failure.errorId(), row.code);
      EXPECT_STREQ(failure.message(), row.text);
    }
  }
}

TEST(Includes, FailAtTheLineOfTheMainFile) {
  const tFiles files = {
      {"main.prw", "x\n#include \"a.ch\"\n"},
      {"a.ch", "\n\n#include \"b.ch\"\n"},
      {"b.ch", "y\n#endif\n"},
  };
  EXPECT_EQ(preprocessFiles(files).error,
            "main.prw(2) Error b.ch(2) Error C2068  #ifdef/#ifndef without #endif\n");
  EXPECT_EQ(preprocessFiles({{"main.prw", "x\n#include \"a.ch\"\n"}, {"a.ch", "\n\xc0~\n"}}).error,
            "main.prw(2) Error a.ch(2) Error "
            "SSLex0105e: Invalid token, Line 2, Offset 2, ~\n");
  EXPECT_EQ(
      preprocessFiles({{"main.prw", "\n#include \"a.ch\"\n"}, {"a.ch", "\n#include \"no\""}}).error,
      "main.prw(2) Error C2090  File not found no\n");
  EXPECT_EQ(preprocessFiles({{"main.prw", "\n#include \"a.ch\"\n"}, {"a.ch", "#define A A\n\nA\n"}})
                .error,
            "main.prw(2) Error a.ch(3) Error C2078  Circular #translate/#command/#define\n");
}

TEST(Includes, AreMarkedInTheOutput) {
  const tPreprocessed result = preprocessFiles(
      {
          {"main.prw", "a\n#include \"one.ch\"\n\nb\n#include \"ONE.CH\"\nc\n#include 'two.ch'\n"},
          {"inc/one.ch", "#include \"two.ch\"\n\no\n#include \"two.ch\"\n"},
          {"two.ch", "t\n"},
      },
      {"-Iinc"});
  EXPECT_EQ(result.error, "");
  EXPECT_EQ(result.text,
            "a\n#line 1 \"inc/one.ch\"\n#line 1 \"two.ch\"\nt\n#line 3 \"one.ch\"\no\n"
            "#line 4 \"main.prw\"\nb\n\nc");
}

TEST(Includes, OfTheirOwnNameInOtherCaseAreRead) {
  EXPECT_EQ(preprocessFiles({{"main.prw", "#include \"a.ch\"\nx"},
                             {"a.ch", "#include \"a.ch\"\n#include \"A.CH\"\ny"},
                             {"A.CH", "z"}})
                .text,
            "#line 1 \"a.ch\"\n#line 1 \"A.CH\"\nz\n#line 3 \"a.ch\"\ny\n"
            "#line 2 \"main.prw\"\nx");
}

TEST(Includes, StopAtCyclesAndDepth) {
  EXPECT_EQ(preprocessFiles({{"main.prw", "#include \"a.ch\"\nx\n"},
                             {"a.ch", "#include \"b.ch\"\n#define A 1\n"},
                             {"b.ch", "#include \"./a.ch\"\n#include \"main.prw\"\n#define B 2\n"}})
                .error,
            "");
  std::vector<std::pair<std::string, std::string>> chain;
  for (int i = 0; i < 1000; ++i) {
    chain.emplace_back("h" + std::to_string(i), "#include \"h" + std::to_string(i + 1) + "\"\n");
  }
  tDiskManMemory disk;
  disk.put("std.ch", "");
  disk.put("main.prw", "\n#include \"h0\"\n");
  for (const auto& [name, text] : chain) disk.put(name, text);
  tAutoArray<tString> options;
  options.add(new tString("-Fmain.prw"));
  tStringSink sink;
  const tOutputScope scope(sink);
  precomp::KorelPre16 session(disk);
  session.Init(options, 1);
  tString output;
  tString error;
  session.doIt(output, error);
  EXPECT_EQ(error, "main.prw(2) Error C9999  ERRO generico: include depth\n");
}

TEST(Includes, MayBePacked) {
  const tString packed = packZipSource("#define A 7\n");
  EXPECT_EQ(preprocessFiles({{"main.prw", "#include \"z.ch\"\nA"}, {"z.ch", packed}}).text,
            "#line 1 \"z.ch\"\n#line 2 \"main.prw\"\n7");
  EXPECT_EQ(preprocessFiles({{"main.prw", "\n#include \"z.ch\"\nA"},
                             {"z.ch", packed.view().substr(0, packed.size() - 3)}})
                .error,
            "main.prw(2) Error C9999  ERRO generico: damaged file\n");
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
    if (name != "d/h.ch" && name != "std.ch") return false;
    text = tString("#define A 1\n");
    return true;
  }
  std::string asked;
};

TEST(HostLoader, TakesThePlaceOfTheFileSystem) {
  tDiskManMemory disk;
  tHost host(disk);
  host.IncludePath().add(new tString("d"));
  tString output;
  EXPECT_TRUE(host.compileStr("text", "#include \"h.ch\"\nA", output));
  int depth = 0;
  host.processLines(output, depth);
  EXPECT_EQ(host.asked, "std.ch;h.ch;d/h.ch;");
  EXPECT_EQ(output, "#line 1 \"d/h.ch\"\n#line 2 \"text\"\n1");
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

/// Preprocesses the files that the options name; the error, or the output when there is none.
std::string runSession(precomp::KorelPre16& session, const std::vector<std::string>& options) {
  tAutoArray<tString> list;
  for (const std::string& option : options) list.add(new tString(option));
  session.Init(list, 1);
  tStringSink sink;
  const tOutputScope scope(sink);
  tString output;
  tString error;
  session.doIt(output, error);
  EXPECT_EQ(sink.text, error.view());
  return std::string(error.empty() ? output.view() : error.view());
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

TEST(Session, StartsAnewWithEachInit) {
  tDiskManMemory disk;
  disk.put("std.ch", "#define A 1\n");
  disk.put("h.ch", "#define B 2\n");
  disk.put("a.prw", "#include \"h.ch\"\nA B");
  precomp::KorelPre16 session(disk);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(runSession(session, {"-Fa.prw"}), "#line 1 \"h.ch\"\n#line 2 \"a.prw\"\n1 2");
  }
}

TEST(Session, PutsTheDirectoryOfEachFileInFrontOfThePath) {
  tDiskManMemory disk;
  for (const char* name : {"std.ch", "d/a.prw", "d/b.prw"}) disk.put(name, "");
  precomp::KorelPre16 session(disk);
  runSession(session, {"/Ie", "-Fd/a.prw", "-Fd/b.prw"});
  ASSERT_EQ(session.IncludePath().count(), 3);
  EXPECT_EQ(session.IncludePath()[0], session.IncludePath()[1]);
  EXPECT_EQ(session.IncludePath()[2], "e");
}

TEST(Session, ReportsAMissingFile) {
  tDiskManMemory disk;
  precomp::KorelPre16 session(disk);
  EXPECT_EQ(runSession(session, {"-Fd/no.prw"}), "File not found no.prw\n");
  EXPECT_EQ(session.errorCount(), 1);
}

std::string withoutHeaders(tFiles files) {
  tDiskManMemory disk;
  std::vector<std::string> options;
  for (const auto& [name, text] : files) {
    disk.put(name, text);
    options.push_back(std::string("-F").append(name));
  }
  precomp::KorelPre16 session(disk);
  return runSession(session, options);
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
