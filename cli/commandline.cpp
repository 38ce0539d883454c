#include "cli/commandline.h"

#include <getopt.h>

#include <algorithm>
#include <cstddef>
#include <utility>

#include "cli/optiontable.h"

namespace {

// getopt answers with a letter for a short option; for a long one with its index and this.
constexpr int kLongCodes = 256;

const tOption& optionOfCode(int code) {
  return programOptions()[static_cast<std::size_t>(code - kLongCodes)];
}

std::string longSpelling(int code) {
  return std::string("--") + optionOfCode(code).name;
}

/// The table of options as getopt wants it.
struct tGetoptTables {
  // "-": files are handed out in place among the options; ":": a missing value is told apart.
  std::string letters = "-:";
  std::vector<option> names;

  tGetoptTables() {
    int code = kLongCodes;
    for (const tOption& entry : programOptions()) {
      addLetter(entry);
      if (entry.name != nullptr) {
        const int value = entry.value != nullptr ? required_argument : no_argument;
        names.push_back({entry.name, value, nullptr, code});
      }
      ++code;
    }
    names.push_back({nullptr, 0, nullptr, 0});
  }

 private:
  void addLetter(const tOption& entry) {
    const char first = entry.letters[0];
    if (first == '\0' || letters.find(first) != std::string::npos) return;
    letters += first;
    // To getopt the further letters of a family are the value of the first.
    if (entry.value != nullptr || entry.letters[1] != '\0') letters += ':';
  }
};

// `optopt` is the letter of a short option and the code of a long one, 0 for one that nobody knows.
std::string describeMissing() {
  if (optopt >= kLongCodes) return longSpelling(optopt) + " needs a value";
  const std::string letter(1, static_cast<char>(optopt));
  if (optionOfLetters(letter) == nullptr) return "unknown option -" + letter;  // part of a family's
  return '-' + letter + " needs a value";
}

// What getopt could not make sense of.
std::string describeUnknown(const char* argument) {
  if (optopt >= kLongCodes) return longSpelling(optopt) + " takes no value";
  if (optopt > 0) return std::string("unknown option -") + static_cast<char>(optopt);
  return std::string("unknown option ") + argument;
}

/// Reads one argument after the other and sets what they ask for.
class tArgumentReader {
 public:
  tArgumentReader(int count, char** arguments, tCommandLine& line)
      : count_(count), arguments_(arguments), line_(line) {}

  void read();

 private:
  void takeLong(int code);
  void takeShort(char letter);
  void takeOfFamily(char letter);
  void set(const tOption& entry, std::string spelling, const char* value);

  int count_;
  char** arguments_;
  tCommandLine& line_;
};

void tArgumentReader::read() {
  const tGetoptTables tables;
  opterr = 0;
  for (;;) {
    const char* argument = arguments_[optind < count_ ? optind : 0];
    const int code =
        getopt_long(count_, arguments_, tables.letters.c_str(), tables.names.data(), nullptr);
    if (code == -1) break;
    if (code == 1) {
      line_.files.emplace_back(optarg);
    } else if (code == ':') {
      line_.complain(describeMissing());
    } else if (code == '?') {
      line_.complain(describeUnknown(argument));
    } else if (code >= kLongCodes) {
      takeLong(code);
    } else {
      takeShort(static_cast<char>(code));
    }
    if (line_.request == tCommandLine::kShowHelp || line_.request == tCommandLine::kShowVersion) {
      return;
    }
  }
  for (int i = optind; i < count_; ++i) line_.files.emplace_back(arguments_[i]);
  if (line_.files.empty()) line_.complain("no file to preprocess");
  line_.checkFiles();
}

void tArgumentReader::takeLong(int code) {
  set(optionOfCode(code), longSpelling(code), optarg);
}

void tArgumentReader::takeShort(char letter) {
  const tOption* entry = optionOfLetters(std::string(1, letter));
  if (entry == nullptr) return takeOfFamily(letter);
  set(*entry, std::string("-") + letter, optarg);
}

// Getopt has read the second letter, with what is written right behind it, as the first one's
// value.
void tArgumentReader::takeOfFamily(char letter) {
  const std::string given = std::string(1, letter) + optarg;
  const tOption* entry = optionOfLetters(given.substr(0, 2));
  const std::string spelling = '-' + given.substr(0, 2);
  const bool more = given.size() > 2;
  if (entry == nullptr || (more && entry->value == nullptr)) {
    return line_.complain("unknown option -" + given);
  }
  if (entry->value == nullptr) return set(*entry, spelling, nullptr);
  if (more) return set(*entry, spelling, optarg + 1);
  if (optind >= count_) return line_.complain(spelling + " needs a value");
  set(*entry, spelling, arguments_[optind++]);
}

void tArgumentReader::set(const tOption& entry, std::string spelling, const char* value) {
  entry.set(line_, {std::move(spelling), value});
}

}  // namespace

void tCommandLine::addDefine(const std::string& spelling, const std::string& definition) {
  constexpr const char* kNameCharacters =
      "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
  const std::size_t equals = definition.find('=');
  tDefine define{definition.substr(0, equals), std::nullopt};
  if (equals != std::string::npos) define.value = definition.substr(equals + 1);
  if (define.name.empty() || define.name.find_first_not_of(kNameCharacters) != std::string::npos) {
    return complain(spelling + " " + definition +
                    ": a name is made of letters, digits and underscores");
  }
  if (definition.find_first_of("\r\n") != std::string::npos) {
    return complain(spelling + " " + definition + ": a value is one line");
  }
  defines.push_back(std::move(define));
}

void tCommandLine::checkFiles() {
  for (const std::string& name : files) {
    if (name.empty()) return complain("FILE: the name is empty");
    if (name.find_last_not_of(" \t\n\v\f\r") != name.size() - 1) {
      return complain(name + ": the library would drop the white space at the end of the name");
    }
  }
}

void tCommandLine::complain(std::string text) {
  if (complaint.empty()) complaint = std::move(text);
}

bool tCommandLine::readsStandardInput() const {
  return std::find(files.begin(), files.end(), "-") != files.end();
}

tCommandLine readCommandLine(int count, char** arguments) {
  tCommandLine line;
  tArgumentReader(count, arguments, line).read();
  return line;
}
