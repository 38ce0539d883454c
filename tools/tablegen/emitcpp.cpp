#include "tools/tablegen/emitcpp.h"

#include <cctype>
#include <cstdio>
#include <map>
#include <set>
#include <vector>

#include "ssvp40xpf/sstableformat.h"

namespace tablegen {
namespace {

std::string origin(const std::string& grammar) {
  return "// Made from " + grammar + ".lex and " + grammar + ".y; edit those.\n";
}

std::string capitalised(std::string name) {
  name.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(name.front())));
  return name;
}

std::string imageArray(const std::string& name, const tImage& image) {
  std::string text = "constexpr std::uint32_t " + name + "[] = {";
  for (std::size_t at = 0; at < image.size(); ++at) {
    char word[16];
    std::snprintf(word, sizeof word, "0x%xu,", image[at]);
    if (at % 8 == 0) text += "\n   ";
    text += ' ';
    text += word;
  }
  return text + "\n};\n\n";
}

std::string imageDefinition(const std::string& name, const std::string& array,
                            const std::string& file) {
  return "const sstable::tImage " + name + " = {" + array + ", sizeof " + array + ", \"" + file +
         "\"};\n";
}

/// The numbers of the members of each group.
using tGroups = std::map<std::string, std::set<std::uint32_t>>;

std::string predicates(const tGroups& groups, const std::string& noun) {
  std::string text;
  for (const auto& [group, members] : groups) {
    text.append("\n/// Whether a ").append(noun).append(" is one of those marked @").append(group);
    text.append(".\nconstexpr bool is").append(capitalised(group)).append(capitalised(noun));
    text.append("(std::uint32_t ").append(noun).append(") {\n  switch (").append(noun);
    text += ") {\n";
    for (const std::uint32_t member : members) {
      text.append("    case ").append(std::to_string(member)).append(":\n");
    }
    text += "      return true;\n    default:\n      return false;\n  }\n}\n";
  }
  return text;
}

std::string headerStart(const std::string& grammar) {
  return origin(grammar) + "#pragma once\n\n#include <cstdint>\n\nnamespace " + grammar + " {\n";
}

/// One enum per labelled nonterminal.
std::string labelEnums(const std::vector<const tGrammarRule*>& rules) {
  std::map<std::string, std::string> enums;
  for (const tGrammarRule* rule : rules) {
    if (rule->label.empty()) continue;
    enums[rule->left] += "  " + rule->label + " = " + std::to_string(rule->number) + ",\n";
  }
  std::string text;
  for (const auto& [left, labels] : enums) {
    text.append("\n/// The productions of `").append(left).append("`.\nenum e");
    text.append(capitalised(left)).append("Production : std::uint32_t {\n");
    text.append(labels).append("};\n");
  }
  return text;
}

/// The nonterminals in numerical order.
std::vector<std::string> nonterminals(const tBisonReport& report) {
  const std::map<std::string, std::uint32_t> numbers = numberNonterminals(report);
  std::vector<std::string> names(numbers.size());
  for (const auto& [name, number] : numbers) names[number - sstable::kFirstNonterminal] = name;
  return names;
}

std::string symbolName(const std::string& nonterminal) {
  return "kSym" + capitalised(nonterminal);
}

std::string leftSides(const tBisonReport& report) {
  std::string text = "\n/// The nonterminals.\nenum eSymbol : std::uint8_t {\n";
  for (const std::string& name : nonterminals(report)) text += "  " + symbolName(name) + ",\n";
  text +=
      "};\n\n/// The nonterminal that a production, counted from 1, makes.\n"
      "constexpr eSymbol leftSideOf(std::uint32_t production) {\n"
      "  constexpr eSymbol kLeftSides[] = {\n";
  for (std::size_t number = 1; number < report.productions.size(); ++number) {
    text += "    " + symbolName(report.productions[number].left) + ",\n";
  }
  return text + "  };\n  return kLeftSides[production - 1];\n}\n";
}

/// The tokens that `symbol` can consist of on their own.
std::set<std::uint32_t> singleTokens(const tBisonReport& report, const std::string& symbol,
                                     std::set<std::string>& visited) {
  const auto terminal = report.terminals.find(symbol);
  if (terminal != report.terminals.end()) return {terminal->second};
  std::set<std::uint32_t> tokens;
  if (!visited.insert(symbol).second) return tokens;
  for (const tBisonReport::tProduction& production : report.productions) {
    if (production.left != symbol || production.right.size() != 1) continue;
    tokens.merge(singleTokens(report, production.right[0], visited));
  }
  return tokens;
}

/// The case labels that map tokens to the production of `left` that derives them.
std::string singles(const tBisonReport& report, const std::string& left) {
  std::string text;
  std::set<std::uint32_t> known;
  for (std::size_t number = 1; number < report.productions.size(); ++number) {
    const tBisonReport::tProduction& production = report.productions[number];
    if (production.left != left || production.right.size() != 1) continue;
    std::set<std::string> visited{left};
    std::string cases;
    for (const std::uint32_t token : singleTokens(report, production.right[0], visited)) {
      if (known.insert(token).second) cases += "        case " + std::to_string(token) + ":\n";
    }
    if (!cases.empty()) text += cases + "          return " + std::to_string(number) + ";\n";
  }
  return text;
}

}  // namespace

std::string tokenHeader(const std::string& grammar, const tGrammarTokens& tokens,
                        const tLexSpec& spec) {
  std::string text = headerStart(grammar) +
                     "\n/// The tokens of the scanner and their numbers.\n"
                     "enum eToken : std::uint32_t {\n";
  tGroups groups;
  for (const tToken& token : tokens.all()) {
    text += "  kTok" + token.name + " = " + std::to_string(token.number) + ",";
    if (!token.spelling.empty()) text += "  // \"" + token.spelling + "\"";
    text += '\n';
    for (const std::string& group : token.groups) groups[group].insert(token.number);
  }
  text += "};\n\n/// The expression lists of the scanner.\nenum eList : std::uint32_t {\n";
  for (const tLexList& list : spec.lists) text += "  kList" + capitalised(list.name) + ",\n";
  return text +
         "};\n\n/// The spelling of a token, null for one without.\n"
         "const char* tokenSpelling(std::uint32_t token);\n" +
         predicates(groups, "token") + "\n}  // namespace " + grammar + "\n";
}

std::string productionHeader(const std::string& grammar, const tGrammarRules& rules,
                             const tBisonReport& report) {
  tGroups groups;
  std::set<std::string> labelled;
  for (const tGrammarRule& rule : rules.all()) {
    for (const std::string& group : rule.groups) groups[group].insert(rule.number);
    if (!rule.label.empty()) labelled.insert(rule.left);
  }
  std::string text =
      headerStart(grammar) + labelEnums(rules.byNumber()) + leftSides(report) +
      predicates(groups, "production") +
      "\n/// The production of `left` that a single token makes, at once or by way of "
      "other\n/// nonterminals; 0 when there is none. It knows the nonterminals with "
      "labels.\n"
      "constexpr std::uint32_t productionOf(eSymbol left, std::uint32_t token) {\n"
      "  switch (left) {\n";
  for (const std::string& left : labelled) {
    const std::string cases = singles(report, left);
    if (cases.empty()) continue;
    text += "    case " + symbolName(left) + ":\n      switch (token) {\n" + cases +
            "        default:\n          return 0;\n      }\n";
  }
  return text + "    default:\n      return 0;\n  }\n}\n\n}  // namespace " + grammar + "\n";
}

std::string tableSource(const std::string& grammar, const tGrammarTokens& tokens,
                        const tImage& lexImage, const tImage& yaccImage) {
  std::map<std::uint32_t, std::string> spellings;
  for (const tToken& token : tokens.all()) {
    if (!token.spelling.empty()) spellings[token.number] = token.spelling;
  }
  std::string text = origin(grammar) + "#include \"ssvp40xpf/" + grammar +
                     "tokens.h\"\n\n#include <iterator>\n\n"
                     "#include \"ssvp40xpf/builtintables.h\"\n\n"
                     "namespace {\n\nconstexpr const char* kSpellings[] = {\n";
  std::uint32_t next = 0;
  for (const auto& [number, spelling] : spellings) {
    for (; next < number; ++next) text += "    nullptr,\n";
    text += "    \"" + spelling + "\",\n";
    ++next;
  }
  text += "};\n\n" + imageArray("kLexImage", lexImage) + imageArray("kYaccImage", yaccImage) +
          "}  // namespace\n\nnamespace " + grammar +
          " {\n\nconst char* tokenSpelling(std::uint32_t token) {\n"
          "  return token < std::size(kSpellings) ? kSpellings[token] : nullptr;\n}\n\n"
          "}  // namespace " +
          grammar + "\n\nnamespace builtin {\n\n" +
          imageDefinition(grammar + "Dfa", "kLexImage", grammar + ".dfa") +
          imageDefinition(grammar + "Llr", "kYaccImage", grammar + ".llr") +
          "\n}  // namespace builtin\n";
  return text;
}

}  // namespace tablegen
