#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "tools/tablegen/emitcpp.h"
#include "tools/tablegen/generror.h"
#include "tools/tablegen/grammarrules.h"
#include "tools/tablegen/leximage.h"
#include "tools/tablegen/lexspec.h"
#include "tools/tablegen/yaccimage.h"

namespace {

using namespace tablegen;

constexpr const char* kUsage =
    "usage: tablegen --grammar NAME --lex FILE --yacc FILE --report FILE --out DIR\n"
    "\n"
    "Makes DIR/NAMEtokens.h, DIR/NAMEproductions.h and DIR/NAMEtables.cpp from a scanner source, "
    "a\n"
    "bison grammar and the XML report that bison writes of it. Fails when the grammar has a\n"
    "reduce/reduce conflict, or a shift/reduce conflict of a production that is not said to "
    "yield.\n";

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

void generate(tOptions& options) {
  const std::string& grammar = options["--grammar"];
  const std::string& yaccFile = options["--yacc"];
  std::ifstream yacc = opened(yaccFile);
  const tGrammarTokens tokens(yacc, yaccFile);
  std::ifstream yaccAgain = opened(yaccFile);
  const tGrammarRules rules(yaccAgain, yaccFile);

  std::ifstream lex = opened(options["--lex"]);
  const tLexSpec spec = readLexSpec(lex, options["--lex"], tokens);
  const tImage lexImage = buildLexImage(spec);

  std::ifstream xml = opened(options["--report"]);
  const std::string xmlText{std::istreambuf_iterator<char>(xml), std::istreambuf_iterator<char>()};
  tBisonReport report = readBisonReport(xmlText, options["--report"]);
  rules.number(report);
  const std::vector<tShiftConflict> conflicts = shiftConflicts(report);
  rules.expectConflicts(conflicts);

  const std::string prefix = options["--out"] + "/" + grammar;
  write(prefix + "tokens.h", tokenHeader(grammar, tokens, spec));
  write(prefix + "productions.h", productionHeader(grammar, rules, report));
  write(prefix + "tables.cpp", tableSource(grammar, tokens, lexImage, buildYaccImage(report)));
  std::printf("%s: %zu productions, %zu states, %zu known conflicts\n", grammar.c_str(),
              rules.all().size(), report.states.size(), conflicts.size());
}

bool readOptions(int argc, char** argv, tOptions& options) {
  if (argc % 2 == 0) return false;
  for (int at = 1; at < argc; at += 2) options[argv[at]] = argv[at + 1];
  std::size_t known = 0;
  for (const char* needed : {"--grammar", "--lex", "--yacc", "--report", "--out"}) {
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
