#include "preprocessor/convert/page.h"

#include <gtest/gtest.h>

#include "testrun.h"
#include "tests/support/maxsizescope.h"

namespace {

/// The converted page without head and end, or "(line) error".
std::string converted(std::string_view page, const tPageForm& form = {tString("P")}) {
  const std::string head = form.httpSend ? "Function P()" : "Function P(); Local __cPage := \"\"";
  const std::string end = "Return " + std::string(form.httpSend ? "\"\"" : "__cPage") + "\n";
  tString text(page);
  tPageError error;
  if (HTMLParse(text, form, error) == eConversion::kError) {
    EXPECT_EQ(text, page);
    const tString message = diagnosisOf(error.what).message;
    return tString::format("(%d) %s", error.line, message.c_str()).c_str();
  }
  std::string result(text.view());
  const std::size_t at = result.find(head);
  EXPECT_TRUE(at != std::string::npos && result.ends_with(end)) << result;
  result.resize(result.size() - end.size());
  return result.erase(at, head.size());
}

/// What a page in a run comes to: the output, or what was printed.
std::string preprocessed(const std::string& page, std::vector<std::string> options = {},
                         const std::string& name = "a.krh") {
  tSources disk;
  disk.put(name, page);
  options.push_back("@F" + name);
  const tRun run = runOver(disk, options);
  EXPECT_EQ(disk.count(), run.result == 0 ? 2U : 1U);
  return run.result == 0 ? fileText(disk, "a.ppo") : run.printed;
}

}  // namespace

TEST(Page, LocalsReachTheHeadAndBareReturnsTheText) {
  const struct {
    const char *page, *lines;
  } rows[] = {
      {"<% Local a := 1, b %>", "; Local a := 1, b; "},
      {".<% Local a := 1, b %>", ", a, b; __cPage += \".\"; a := 1; "},
      {"<% x()\nLOCA a[2] := f(1, 2), ;\n  b As Numeric = {|| c := \", ;\"} // d\ny() %>",
       ", a[2], b As Numeric; x()\na := f(1, 2); b := {|| c := \", ;\"}\n\ny(); "},
      {"<% Static s := 1\nLocal a\nx()\nLocal a, A := 2, b; y() %>",
       ", b; Static s := 1\nLocal a\nx()\nA := 2; y(); "},
      {".<% Local a %>\n<% Local a %>", ", a; __cPage += \".\" + Chr(10)\n"},
      {".<% local := 1\nx(local) %>", "; __cPage += \".\"; local := 1\nx(local); "},
      {"<%\n* it's\nx() // 5 % 'a %>", "\n\nx(); "},
      {"<% Return %>", "; Return __cPage; "},
      {"<% Return // c\nRetu; Return ; \n 1; return := 2 %>",
       "; Return __cPage\nRetu __cPage; Return ; \n 1; return := 2; "},
  };
  for (const auto& row : rows) EXPECT_EQ(converted(row.page), row.lines) << row.page;
  EXPECT_EQ(converted("<% #undef A %>\n.\n<% Local a := 1 %>", {tString("P"), true, false}),
            "#undef A\n__IGNOREDEBUGLINE__(); , a; __cPage += \".\" + Chr(10); "
            "__SYNCHRONIZEDEBUG__(3)\na := 1; ");
  EXPECT_EQ(converted(".<% Local a\nReturn; y() %>", {tString("P"), false, true}),
            "; Local a; HTTPSend(\".\")\nReturn \"\"; y(); ");
}

TEST(Page, DirectivesTakeALineEach) {
  EXPECT_EQ(converted("<% #define A ;\n 1 %>\n."), "#define A ;\n1\n; __cPage += \".\"; ");
  EXPECT_EQ(converted("<% #include \"h.ch\" %>\n<% #undef A %>"),
            "#include \"h.ch\"\n#undef A\n; ");
}

TEST(Page, ErrorsNameTheLine) {
  const struct {
    const char *page, *error;
  } rows[] = {
      {"\n<% If x\n\n", "(2) A block is not closed"},
      {"<%", "(1) A block is not closed"},
      {"a\r\n<%= x\n", "(2) A block is not closed"},
      {"<% x := \"%> \n", "(1) A string is not closed"},
      {"\n\n<%-- --%\n", "(3) A comment is not closed"},
      {"<% x := 'a %>b", "(1) A string is not closed"},
      {"<%= a\n + 'b %>", "(2) A string is not closed"},
      {"\n<%= // nothing\n %>", "(2) A block for a value is empty"},
      {"\na<% #define B %>", "(2) A directive needs a line of its own"},
      {"\n<% #define B %>a", "(2) A directive needs a line of its own"},
      {"\n<% #define B %><%= a %>", "(2) A directive needs a line of its own"},
      {"\n<% #define B %><% a %>", "(2) A directive needs a line of its own"},
      {"<% #ifdef B %>", "(1) A page cannot begin with a conditional directive"},
      {"<% #include \"b\"\n#IFNDEF B\n%>", "(2) A page cannot begin with a conditional directive"},
      {"<%\nReturn\nStatic Function x() %>", "(3) A page is one function and cannot hold another"},
      {"<% Proc x %>", "(1) A page is one function and cannot hold another"},
  };
  for (const auto& row : rows) EXPECT_EQ(converted(row.page), row.error) << row.page;
  EXPECT_EQ(preprocessed("a\n<% b"),
            "a.krh(2) Error A block is not closed\n"
            "KOREL Preprocessor. Precompilation of file a.krh with error. Exitecode equal to 1\n");
  EXPECT_EQ(preprocessed("a\n<%= b( %>\nc").substr(0, 20), "a.krh(2) Error C2002");
  EXPECT_EQ(preprocessed("a\n<% EndIf %>\n", {"/KRH_DEBUGINFO"}).substr(0, 20),
            "a.krh(2) Error C2027");
}

TEST(Page, FunctionIsNamedAfterTheFile) {
  EXPECT_EQ(pageFunctionName("Order_2"), "Order_2");
  EXPECT_EQ(pageFunctionName("my-page.v2"), "my_page_v2");
  EXPECT_EQ(pageFunctionName("2nd"), "_2nd");
  EXPECT_EQ(pageFunctionName("\xc3\xa9t\xc3\xa9"), "__t__");
  EXPECT_EQ(pageFunctionName(""), "_");
}

TEST(Page, SizeIsLimited) {
  const tMaxSizeScope scope(1 << 20);
  std::string quotes;
  while (quotes.size() < 400000) quotes += "\"'";
  for (const std::string& page : {std::string(600000, '\n'), quotes}) {
    tString text = tString::borrow(page);
    tPageError error;
    EXPECT_EQ(HTMLParse(text, {tString("P")}, error), eConversion::kTooLarge);
  }
}
