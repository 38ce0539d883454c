#include "tools/tablegen/emitcpp.h"

#include <cctype>
#include <cstdio>
#include <map>

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

}  // namespace

std::string tokenHeader(const std::string& grammar, const tGrammarTokens& tokens,
                        const tLexSpec& spec) {
  std::string text = origin(grammar) + "#pragma once\n\n#include <cstdint>\n\nnamespace " +
                     grammar +
                     " {\n\n/// The tokens of the scanner and their numbers.\n"
                     "enum eToken : std::uint32_t {\n";
  for (const tToken& token : tokens.all()) {
    text += "  kTok" + token.name + " = " + std::to_string(token.number) + ",";
    if (!token.spelling.empty()) text += "  // \"" + token.spelling + "\"";
    text += '\n';
  }
  text += "};\n\n/// The expression lists of the scanner.\nenum eList : std::uint32_t {\n";
  for (const tLexList& list : spec.lists) text += "  kList" + capitalised(list.name) + ",\n";
  return text +
         "};\n\n/// The spelling of a token, null for one without.\n"
         "const char* tokenSpelling(std::uint32_t token);\n\n}  // namespace " +
         grammar + "\n";
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
