#include "cli/runarguments.h"

#include <gtest/gtest.h>

namespace {

// The vector for `arguments` on a line, slot 0 left out; or the refusal, after "refused: ".
std::string spelled(std::vector<std::string> arguments, const std::string& headers = {},
                    const std::string& tag = {}) {
  tCommandLine line;
  for (std::size_t i = 0; i + 1 < arguments.size(); i += 2) {
    const std::string& option = arguments[i];
    const std::string& value = arguments[i + 1];
    if (option == "-D") line.defines.push_back(value);
    if (option == "-I") line.includeDirectories.push_back(value);
    if (option == "FILE") line.files.push_back(value);
  }
  tRunArguments vector(line, headers, tag);
  if (!vector.refusal().empty()) return "refused: " + vector.refusal();
  std::string text;
  for (int i = 1; i < vector.count(); ++i)
    text += std::string(i > 1 ? " " : "") + vector.vector()[i];
  return text;
}

struct tDefine {
  std::string definition;
  std::string spelling;  // empty: refused
};

const tDefine kDefines[] = {
    {"A", "/DA"},
    {"A=", "/DA="},
    {"A=1=2", "/DA=1=2"},
    {"A=x;y", "/DA=x;y"},
    {"A=\"x\"", "/DA=\"x\""},
    {"A=-Debug", "/DA=-Debug"},  // the first marker at the very beginning decides
    {"A=/Data", "/DA=/Data"},
    {"HTTPSENDER=1", "/dHTTPSENDER=1"},  // "/DHTTPSEND" would be a switch of the run
    {"HTTPSEND=/d", "/dHTTPSEND=/d"},
    {"HTTPSEND=/D", ""},
    {"A=-F1", ""},
    {"A=/Name", ""},
    {"A=x-u", ""},
    {"A=/usr/include", ""},
    {"A=-Sum", ""},
    {"A=-i", ""},
    {"A=/Path", ""},
    {"A=x y", ""},
    {"A= x", ""},
    {"A=x\ny", ""},
    {"", ""},
    {"=1", ""},
    {"A B", ""},
    {"A-B=1", ""},
    {"A(x)=x", ""},
};

TEST(RunArguments, DefinesAreReadBackUnchangedOrRefused) {
  for (const tDefine& define : kDefines) {
    const std::string result = spelled({"-D", define.definition});
    if (define.spelling.empty()) {
      EXPECT_EQ(result.find("refused: -D " + define.definition + ": "), 0U) << result;
    } else {
      EXPECT_EQ(result, define.spelling);
    }
  }
}

TEST(RunArguments, DefinesKeep255Characters) {
  const std::string longest = "A=" + std::string(253, 'x');
  EXPECT_EQ(spelled({"-D", longest}), "/D" + longest);
  EXPECT_EQ(spelled({"-D", longest + "x"}).find("refused: "), 0U);
}

TEST(RunArguments, RefusalNamesTheMarkerInTheWay) {
  EXPECT_EQ(spelled({"-D", "A=/Name"}),
            "refused: -D A=/Name: the library would take the /N in it for an option of its own");
}

TEST(RunArguments, IncludePathIsOneListWithTheShippedHeadersLast) {
  EXPECT_EQ(spelled({"-I", "a b", "-I", "\"c\""}, "/share"), "-I\"a b;\"c\";/share\"");
  EXPECT_EQ(spelled({}, "/share"), "-I\"/share\"");
  EXPECT_EQ(spelled({}), "");
  EXPECT_EQ(spelled({"-I", "a;b"}, "/share").find("refused: -I a;b: "), 0U);
  EXPECT_EQ(spelled({"-I", "a"}, "/x;y").find("refused: /x;y: "), 0U);
}

TEST(RunArguments, NamesAreNotTrimmedOrUnquoted) {
  EXPECT_EQ(spelled({"FILE", "a b.prw", "FILE", "-T"}, {}, "~1"), "@I~1 @F\"a b.prw\" @F\"-T\"");
  EXPECT_EQ(spelled({"FILE", "\"a.prw"}), "@F\"./\"a.prw\"");
  EXPECT_EQ(spelled({"FILE", "\ta.prw"}), "@F\"./\ta.prw\"");
  EXPECT_EQ(spelled({"FILE", "a.prw "}).find("refused: a.prw : "), 0U);
  EXPECT_EQ(spelled({"FILE", ""}).find("refused: "), 0U);
}

}  // namespace
