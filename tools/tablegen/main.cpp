#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>

#include "tools/tablegen/emitcpp.h"
#include "tools/tablegen/generror.h"
#include "tools/tablegen/leximage.h"
#include "tools/tablegen/lexspec.h"
#include "tools/tablegen/yaccimage.h"

namespace {

using namespace tablegen;

constexpr const char* kUsage =
    "usage: tablegen --grammar NAME --lex FILE --yacc FILE --report FILE --out DIR\n"
    "                --conflicts COUNT [--states COUNT]\n"
    "\n"
    "Makes DIR/NAMEtokens.h and DIR/NAMEtables.cpp from a scanner source, a bison grammar and the\n"
    "XML report that bison writes of it. Fails when the grammar has a reduce/reduce conflict, or\n"
    "another number of shift/reduce conflicts or of states than expected.\n";

using tOptions = std::map<std::string, std::string>;

std::ifstream opened(const std::string& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw tGenError(file, 0, "cannot be read");
  return stream;
}

void write(const std::string& file, const std::string& text) {
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) throw tGenError(file, 0, "cannot be written");
}

void expect(const std::string& file, const char* what, std::size_t count,
            const std::string& expected) {
  if (std::to_string(count) == expected) return;
  throw tGenError(file, 0, std::to_string(count) + " " + what + ", " + expected + " expected");
}

void generate(tOptions& options) {
  const std::string& grammar = options["--grammar"];
  const std::string& yaccFile = options["--yacc"];
  std::ifstream yacc = opened(yaccFile);
  const tGrammarTokens tokens(yacc, yaccFile);

  std::ifstream lex = opened(options["--lex"]);
  const tLexSpec spec = readLexSpec(lex, options["--lex"], tokens);
  const tImage lexImage = buildLexImage(spec);

  std::ifstream xml = opened(options["--report"]);
  const std::string xmlText{std::istreambuf_iterator<char>(xml), std::istreambuf_iterator<char>()};
  const tBisonReport report = readBisonReport(xmlText, options["--report"]);
  const int conflicts = countShiftConflicts(report);
  expect(yaccFile, "shift/reduce conflicts", static_cast<std::size_t>(conflicts),
         options["--conflicts"]);
  if (options.count("--states") > 0) {
    expect(yaccFile, "states", report.states.size(), options["--states"]);
  }

  const std::string prefix = options["--out"] + "/" + grammar;
  write(prefix + "tokens.h", tokenHeader(grammar, tokens, spec));
  write(prefix + "tables.cpp", tableSource(grammar, tokens, lexImage, buildYaccImage(report)));
}

bool readOptions(int argc, char** argv, tOptions& options) {
  if (argc % 2 == 0) return false;
  for (int at = 1; at < argc; at += 2) options[argv[at]] = argv[at + 1];
  std::size_t known = options.count("--states");
  for (const char* needed : {"--grammar", "--lex", "--yacc", "--report", "--out", "--conflicts"}) {
    if (options.count(needed) == 0) return false;
    ++known;
  }
  return known == options.size();
}

}  // namespace

int main(int argc, char** argv) {
  tOptions options;
  if (!readOptions(argc, argv, options)) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  try {
    generate(options);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
  return 0;
}
