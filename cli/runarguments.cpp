// How the values of the program's own options are spelled for the library.
//
// Two stages read the vector. The run takes each argument by its first characters: "-I" an include
// list, cut at semicolons; "@F" a file, trimmed; "@O" the output directory; both "-I" and "@F" lose
// one pair of surrounding double quotes. Whatever it does not know is an option of the session; one
// that holds a blank is cut there. The session then looks for its markers anywhere in an option, in
// the order of kMarkers, and the first marker found decides what the option is and where its value
// begins, at most 255 characters of it.
//
// So lists and names travel in quotes of ours, which are removed again whatever stands inside. A
// define travels under the first spelling of its marker that both stages take for what it is.

#include "cli/runarguments.h"

#include <cstddef>
#include <string_view>

namespace {

const char kMarkers[][3] = {
    "-F",                    // a file
    "/U", "/u", "-U", "-u",  // the user value
    "/N", "/n", "-N", "-n",  // accepted, without effect
    "/S", "/s", "-S", "-s",  // accepted, without effect
    "/I", "/i", "-I", "-i",  // include directories
    "/P", "/p", "-P", "-p",  // accepted, without effect
    "/D", "/d", "-D", "-d",  // a define
};
const char kDefineSpellings[][3] = {"/D", "/d", "-D", "-d"};

// The run takes everything that begins so for a switch of its own.
constexpr std::string_view kSendSwitch = "/DHTTPSEND";

constexpr std::size_t kLongestValue = 255;
constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

// The marker by which the session would know `option`, or null; `at` is where it stands.
const char* decidingMarker(std::string_view option, std::size_t& at) {
  for (const char* marker : kMarkers) {
    at = option.find(marker);
    if (at != std::string_view::npos) return marker;
  }
  return nullptr;
}

bool readAsDefine(std::string_view option) {
  if (option.substr(0, kSendSwitch.size()) == kSendSwitch) return false;
  std::size_t at = 0;
  return decidingMarker(option, at) != nullptr && at == 0;
}

bool isNameCharacter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

bool isName(std::string_view text) {
  for (const char c : text) {
    if (!isNameCharacter(c)) return false;
  }
  return !text.empty();
}

bool holdsAny(std::string_view text, std::string_view characters) {
  return text.find_first_of(characters) != std::string_view::npos;
}

bool isWhite(char c) {
  return kWhiteSpace.find(c) != std::string_view::npos;
}

// The library drops white space and quotes at the beginning of a name, but not behind a directory.
std::string anchored(const std::string& name) {
  return isWhite(name.front()) || name.front() == '"' ? "./" + name : name;
}

// Why no spelling of the define is read back unchanged.
std::string misreading(std::string_view definition) {
  std::size_t at = 0;
  const char* marker = decidingMarker(definition, at);
  return std::string("the library would take the ") + marker + " in it for an option of its own";
}

}  // namespace

std::string nameInRun(const std::string& name) {
  return name.empty() ? name : anchored(name);
}

tRunArguments::tRunArguments(const tCommandLine& line, const std::string& shippedHeaders,
                             const std::string& tag) {
  texts_.emplace_back("krpre");
  if (line.trace) texts_.emplace_back("-T");
  if (!tag.empty()) texts_.push_back("@I" + tag);
  for (const std::string& definition : line.defines) addDefine(definition);
  addIncludePath(line.includeDirectories, shippedHeaders);
  for (const std::string& name : line.files) addFile(name);

  for (std::string& text : texts_) slots_.push_back(text.data());
}

void tRunArguments::addFile(const std::string& name) {
  if (name.empty()) return refuse("FILE", "the name is empty");
  if (isWhite(name.back())) {
    return refuse(name, "the library would drop the white space at the end of the name");
  }
  texts_.push_back("@F\"" + anchored(name) + '"');
}

void tRunArguments::addDefine(const std::string& definition) {
  const std::string option = "-D " + definition;
  const std::size_t nameLength = definition.find('=');
  if (!isName(std::string_view(definition).substr(0, nameLength))) {
    return refuse(option, "a name is made of letters, digits and underscores");
  }
  if (holdsAny(definition, " ")) return refuse(option, "the library would cut it at the blank");
  if (holdsAny(definition, "\r\n")) return refuse(option, "a value is one line");
  if (definition.size() > kLongestValue) {
    return refuse(option, "the library would cut it after 255 characters");
  }
  for (const char* spelling : kDefineSpellings) {
    const std::string spelled = spelling + definition;
    if (readAsDefine(spelled)) {
      texts_.push_back(spelled);
      return;
    }
  }
  refuse(option, misreading(definition).c_str());
}

void tRunArguments::addIncludePath(const std::vector<std::string>& directories,
                                   const std::string& last) {
  std::string list;
  for (const std::string& directory : directories) {
    if (holdsAny(directory, ";")) {
      return refuse("-I " + directory, "the library would cut it at the semicolon");
    }
    list += directory + ';';
  }
  if (holdsAny(last, ";")) return refuse(last, "the library would cut it at the semicolon");
  list += last;
  if (!list.empty()) texts_.push_back("-I\"" + list + '"');
}

void tRunArguments::refuse(const std::string& value, const char* reason) {
  if (refusal_.empty()) refusal_ = value + ": " + reason;
}
