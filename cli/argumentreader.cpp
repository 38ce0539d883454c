#include "cli/argumentreader.h"

#include <getopt.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

#include "cli/bundle.h"
#include "cli/filelist.h"
#include "cli/optiontable.h"
#include "include/krpre.h"
#include "lib_base/nearest.h"

namespace {

// getopt returns this plus the index for a long option, the letter for a short one.
constexpr int kLongCodes = 256;

/// The options of a command in the form that getopt_long expects.
struct tGetoptTables {
  // "-": return files in place, as code 1; ":": report a missing value as such.
  std::string letters = "-:";
  std::vector<option> names;

  explicit tGetoptTables(const std::vector<const tOption*>& options) {
    int code = kLongCodes;
    for (const tOption* entry : options) {
      const char first = entry->letters[0];
      if (first != '\0' && letters.find(first) == std::string::npos) {
        letters += first;
        // getopt takes the further letters of a family for the value of the first.
        if (entry->value != nullptr || entry->letters[1] != '\0') letters += ':';
      }
      const int value = entry->value == nullptr  ? no_argument
                        : entry->value->optional ? optional_argument
                                                 : required_argument;
      if (entry->name != nullptr) names.push_back({entry->name, value, nullptr, code});
      ++code;
    }
    names.push_back({nullptr, 0, nullptr, 0});
  }
};

// What the build says of the time, so that its outputs can be made again.
void takeTime(tCommandLine& line) {
  const char* const given = std::getenv("SOURCE_DATE_EPOCH");
  if (given == nullptr) return;
  const char* const end = given + std::strlen(given);
  long long time = -1;
  const auto [stop, fault] = std::from_chars(given, end, time);
  if (fault != std::errc() || stop != end || time < 0 || time > KRPRE_LATEST_TIME) {
    return line.complain(std::string("SOURCE_DATE_EPOCH: '") + given +
                         "' is no number of seconds since 1970 (0 to " +
                         std::to_string(KRPRE_LATEST_TIME) + ")");
  }
  line.time = time;
}

// Of digits only; 0 if it is none above that.
int numberOf(std::string_view digits) {
  int number = 0;
  const auto [stop, fault] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return fault == std::errc() && stop == digits.data() + digits.size() ? std::max(number, 0) : 0;
}

/// Reads the arguments in order and applies each option to the command line.
class tArgumentReader {
 public:
  tArgumentReader(const tCommand& command, int count, char** arguments, tCommandLine& line)
      : command_(command),
        options_(optionsOf(command.set)),
        count_(count),
        arguments_(arguments),
        line_(line) {}

  void read();

 private:
  const tOption& optionOfCode(int code) const {
    return *options_[static_cast<std::size_t>(code - kLongCodes)];
  }
  const tOption* optionOfLetters(const std::string& letters) const;
  const tOption* optionOfFamily(std::string_view given) const;
  void take(int code, const char* argument);
  void takeOfFamily(char letter);
  void set(const tOption& entry, const std::string& spelling, const char* value);
  void complainOfUnknown(const std::string& spelling, const std::string& given);
  void checkFiles();
  void splitLineNumber(std::string& file);

  const tCommand& command_;
  const std::vector<const tOption*> options_;
  int count_;
  char** arguments_;
  tCommandLine& line_;
};

void tArgumentReader::read() {
  const tGetoptTables tables(options_);
  opterr = 0;
  for (;;) {
    const char* argument = arguments_[optind < count_ ? optind : 0];
    const int code =
        getopt_long(count_, arguments_, tables.letters.c_str(), tables.names.data(), nullptr);
    if (code == -1) break;
    take(code, argument);
    if (line_.request != tCommandLine::kCarryOut) return;
  }
  for (int i = optind; i < count_; ++i) line_.files.emplace_back(arguments_[i]);
  if (line_.zeroSeparated && line_.fileList.empty()) line_.complain("-0 requires --files-from");
  addListedFiles(line_);
  if (line_.bundle.empty()) {
    addArchives(line_);
  } else {
    loadBundle(line_);
  }
  checkFiles();
}

void tArgumentReader::take(int code, const char* argument) {
  if (code == 1) {
    line_.files.emplace_back(optarg);
  } else if (code >= kLongCodes) {
    set(optionOfCode(code), optionOfCode(code).longForm(), optarg);
  } else if (code != ':' && code != '?') {
    const std::string letter(1, static_cast<char>(code));
    const tOption* entry = optionOfLetters(letter);
    if (entry == nullptr) return takeOfFamily(letter[0]);
    set(*entry, '-' + letter, optarg);
  } else if (optopt >= kLongCodes) {
    const std::string spelling = optionOfCode(optopt).longForm();
    line_.complain(spelling + (code == ':' ? " needs a value" : " takes no value"));
  } else {
    const std::string given(argument, std::strcspn(argument, "="));
    const std::string letter(1, static_cast<char>(optopt));
    // The first letter of a family is no option by itself.
    const bool known = code == ':' && optionOfLetters(letter) != nullptr;
    if (known) return line_.complain('-' + letter + " needs a value");
    complainOfUnknown(optopt > 0 ? '-' + letter : given, given);
  }
}

// getopt has returned the first letter, with the second and all that follows as its value.
void tArgumentReader::takeOfFamily(char letter) {
  const std::string given = std::string(1, letter) + optarg;
  const tOption* entry = optionOfFamily(given);
  if (entry == nullptr) {
    const std::string name = '-' + given.substr(0, given.find('='));
    return complainOfUnknown(name, name);
  }
  const std::string spelling = entry->shortForm();
  if (entry->value == nullptr) return set(*entry, spelling, nullptr);
  const std::size_t length = std::strlen(entry->letters);
  if (given.size() > length) {
    // Behind the word stands "=".
    return set(*entry, spelling, optarg + length - (entry->isWord() ? 0 : 1));
  }
  if (entry->isWord() || optind >= count_) return line_.complain(spelling + " needs a value");
  set(*entry, spelling, arguments_[optind++]);
}

void tArgumentReader::set(const tOption& entry, const std::string& spelling, const char* value) {
  tGivenOption given{spelling, value, -1};
  if (value != nullptr && entry.value->kind == tValue::kWords) {
    const std::vector<std::string> words = wordsOf(entry.value->words);
    const auto at = std::find(words.begin(), words.end(), value);
    given.word = static_cast<int>(at - words.begin());
    if (at == words.end()) {
      std::string known;
      for (const std::string& word : words) {
        known += (known.empty() ? "" : &word == &words.back() ? " or " : ", ") + word;
      }
      return line_.complain(std::string("unknown ") + entry.value->noun + " '" + value + "': use " +
                            known);
    }
  } else if (value != nullptr && *value == '\0' && entry.value->noun != nullptr) {
    return line_.complain(spelling + ": the " + entry.value->noun + " is empty");
  }
  entry.set(line_, given);
}

const tOption* tArgumentReader::optionOfLetters(const std::string& letters) const {
  for (const tOption* option : options_) {
    if (option->letters == letters) return option;
  }
  return nullptr;
}

const tOption* tArgumentReader::optionOfFamily(std::string_view given) const {
  for (const tOption* option : options_) {
    const std::string_view letters = option->letters;
    if (letters.size() < 2 || !given.starts_with(letters)) continue;
    const std::string_view rest = given.substr(letters.size());
    const bool joined = option->value != nullptr && (!option->isWord() || rest.starts_with('='));
    if (rest.empty() || joined) return option;
  }
  return nullptr;
}

// `spelling` is what getopt failed at, "-j"; `given` the argument that it stands in, "-json".
void tArgumentReader::complainOfUnknown(const std::string& spelling, const std::string& given) {
  std::vector<std::string> forms;
  std::string meant;
  for (const tOption* option : options_) {
    if (option->name != nullptr) forms.push_back(option->longForm());
    if (option->isWord()) forms.push_back("-" + option->shortForm());
    const bool fits = option->longForm().starts_with(spelling) && spelling.starts_with("--");
    if (fits) meant += (meant.empty() ? "" : " or ") + option->longForm();
  }
  if (!meant.empty()) return line_.complain("ambiguous option " + spelling + ": " + meant);
  std::string nearest = nearestTo((given.starts_with("--") ? "" : "-") + given, forms);
  for (const tOption* option : options_) {
    if (nearest == "-" + option->shortForm()) nearest = option->shortForm();
  }
  if (!nearest.empty()) {
    return line_.complain("unknown option " + given + "; did you mean " + nearest + "?");
  }
  for (const tCommand& other : programCommands()) {
    for (const tOption* option : optionsOf(other.set)) {
      const bool whole = option->shortForm() == given;
      if (!whole && option->shortForm() != spelling && option->longForm() != spelling) continue;
      return line_.complain("unknown option " + (whole ? given : spelling) + ": it belongs to '" +
                            other.spelling() + "'");
    }
  }
  line_.complain("unknown option " + spelling);
}

void tArgumentReader::checkFiles() {
  std::vector<std::string>& files = line_.files;
  if (command_.oneFile ? files.size() != 1 : files.empty()) {
    return line_.complain(command_.oneFile ? std::string("expected one ") + command_.file
                                           : "no input file");
  }
  if (command_.set == kExplain) splitLineNumber(files[0]);
  if (command_.anyFile) return;
  std::vector<std::string> names = files;
  if (!line_.standardInputName.empty()) names.push_back(line_.standardInputName);
  for (const std::string& name : names) {
    const std::string fault = faultOfName(name);
    if (!fault.empty()) return line_.complain(fault);
  }
}

// Takes the place from the end of the name, as any message writes it: ":LINE", ":LINE:COLUMN",
// "(LINE)", "(LINE,COLUMN)" and so on.
void tArgumentReader::splitLineNumber(std::string& file) {
  std::string_view rest = file;
  const bool brackets = rest.ends_with(')');
  if (brackets) rest.remove_suffix(1);
  const std::size_t before = brackets ? rest.rfind('(') : rest.rfind(':');
  if (before != std::string_view::npos) {
    const int last =
        numberOf(brackets ? rest.substr(before + 1, rest.find(',', before) - before - 1)
                          : rest.substr(before + 1));
    const std::string_view name = rest.substr(0, before);
    const std::size_t colon = brackets ? std::string_view::npos : name.rfind(':');
    const int line = colon == std::string_view::npos ? 0 : numberOf(name.substr(colon + 1));
    // "a:1:2" is line 2 of a file "a:1" if there is one.
    const bool column = line > 0 && access(std::string(name).c_str(), F_OK) != 0;
    line_.lineNumber = column ? line : last;
    if (last > 0) return file.resize(column ? colon : before);
  }
  line_.complain(file + ": expected FILE:LINE, with lines counted from 1");
}

}  // namespace

tCommandLine readCommandLine(const tCommand& command, int count, char** arguments) {
  tCommandLine line;
  line.checks = command.set == kCheck;
  if (line.checks) line.warnings = "all";
  tArgumentReader(command, count, arguments, line).read();
  if (!command.anyFile) takeTime(line);
  return line;
}
