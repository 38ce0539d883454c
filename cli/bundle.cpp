// A bundle is an archive with these members:
//
//   bundle.json          the source, the names of the files, the options
//   files/0001-NAME ...  the files, the source first
//   output.ppo           what became of the source, or
//   messages.txt         why nothing did
//
// Names of files only tell a run what it finds where. Nothing is ever unpacked to disk.

#include "cli/bundle.h"

#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <map>
#include <new>
#include <nlohmann/json.hpp>
#include <set>
#include <utility>

#include "cli/exitstatus.h"
#include "cli/inputtext.h"
#include "cli/librarycall.h"
#include "cli/printer.h"
#include "cli/wholefile.h"

namespace {

using tJson = nlohmann::ordered_json;

constexpr const char* kFormat = "krpre bundle 1";
constexpr const char* kIndex = "bundle.json";
constexpr const char* kPathVariable = "INCLUDE";

// A name may hold any bytes: what is no UTF-8 is written as their numbers.
tJson jsonOf(const std::string& text) {
  try {
    if (!tJson(text).dump().empty()) return text;
  } catch (const tJson::type_error&) {
    // No UTF-8.
  }
  tJson bytes = tJson::array();
  for (const char c : text) bytes.push_back(static_cast<unsigned char>(c));
  return bytes;
}

// No such text comes from outside with a zero, which would end it early.
std::string textOf(const tJson& value) {
  std::string text;
  if (value.is_array()) {
    for (const tJson& byte : value) text += static_cast<char>(byte.get<unsigned char>());
  } else {
    text = value.get<std::string>();
  }
  if (text.find('\0') != std::string::npos) throw std::invalid_argument("zero byte");
  return text;
}

std::string memberName(std::size_t number, const std::string& file) {
  char digits[32];
  std::snprintf(digits, sizeof digits, "files/%04zu-", number);
  std::string name = digits;
  for (const char c : file.substr(file.rfind('/') + 1)) {
    const bool plain = std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '.' || c == '-';
    name += plain ? c : '_';
  }
  return name;
}

std::string indexOf(const tCommandLine& line, const tRunRecord& record) {
  tJson files = tJson::array();
  for (std::size_t i = 0; i < record.files.size(); ++i) {
    const std::string& name = record.files[i].name;
    files.push_back({{"name", jsonOf(name)}, {"member", memberName(i + 1, name)}});
  }
  tJson directories = tJson::array();
  for (const std::string& name : line.includeDirectories) directories.push_back(jsonOf(name));
  tJson defines = tJson::array();
  for (const tDefine& define : line.defines) {
    defines.push_back(
        {{"name", define.name}, {"value", define.value ? jsonOf(*define.value) : tJson(nullptr)}});
  }
  tJson prefixes = tJson::array();
  for (const tPrefixMap& map : line.prefixes) {
    prefixes.push_back({{"from", jsonOf(map.from)}, {"to", jsonOf(map.to)}});
  }
  const char* const path = std::getenv(kPathVariable);
  return tJson({{"format", kFormat},
                {"krpre", KRPRE_VERSION},
                {"source", jsonOf(line.files[0])},
                {"files", files},
                {"includeDirectories", directories},
                {"includePath", path == nullptr ? tJson(nullptr) : jsonOf(path)},
                {"defines", defines},
                {"prefixes", prefixes},
                {"time", *line.time},
                {"warnings", line.warnings},
                {"maxErrors", line.mostErrors},
                {"done", record.done}})
             .dump(2) +
         "\n";
}

// The texts of the files that were read, from the host's files or from disk.
void collectFiles(const tCommandLine& line, const std::vector<std::string>& read,
                  std::vector<tMember>& files) {
  std::map<std::string, const tHostFile*> known;
  for (const tHostFile& file : line.hostFiles()) known.emplace(file.name, &file);
  std::set<std::string> seen;
  for (const std::string& name : read) {
    if (!seen.insert(name).second) continue;
    tMember file{name, {}};
    const auto found = known.find(name);
    if (found != known.end()) file.text = found->second->text;
    // What is gone meanwhile shows when the run is repeated.
    const bool there = found != known.end() || readFile(name, "a source", file.text).empty();
    if (there) files.push_back(std::move(file));
  }
}

tCommandLine replayOf(const tCommandLine& line, const tRunRecord& record) {
  tCommandLine replay = line;
  std::vector<tHostFile> files;
  for (const tMember& file : record.files) files.push_back({file.name, file.text, {}});
  replay.setHostFiles(std::move(files), true);
  return replay;
}

// Throws what the JSON library throws of an index that is none.
void readIndex(const tJson& index, const std::map<std::string, std::string>& members,
               tCommandLine& line) {
  if (index.at("format") != kFormat) throw std::invalid_argument("format");
  line.files = {textOf(index.at("source"))};
  std::vector<tHostFile> files;
  for (const tJson& file : index.at("files")) {
    files.push_back({textOf(file.at("name")), members.at(file.at("member")), {}});
  }
  line.setHostFiles(std::move(files), true);
  line.includeDirectories.clear();
  for (const tJson& name : index.at("includeDirectories")) {
    line.includeDirectories.push_back(textOf(name));
  }
  for (const tJson& define : index.at("defines")) {
    const tJson& value = define.at("value");
    line.defines.push_back(
        {textOf(define.at("name")), value.is_null() ? std::nullopt : std::optional(textOf(value))});
  }
  for (const tJson& map : index.at("prefixes")) {
    line.prefixes.push_back({textOf(map.at("from")), textOf(map.at("to"))});
  }
  line.time = index.at("time").get<long long>();
  if (line.warnings.empty()) line.warnings = textOf(index.at("warnings"));
  if (line.mostErrors == 0) line.mostErrors = index.at("maxErrors").get<int>();
  const tJson& path = index.at("includePath");
  if (path.is_null()) {
    unsetenv(kPathVariable);
  } else {
    setenv(kPathVariable, textOf(path).c_str(), 1);
  }
}

}  // namespace

tRunRecord recordRun(const tCommandLine& line, bool collects) {
  tBuildJob job;
  job.source = line.files[0];
  const std::string noOthers;  // directories
  const tMessageStyle style{.form = eDiagnosticForm::kLong, .colour = false, .language = {}};
  std::vector<std::string> read;
  tSourceRun run(line, job, noOthers, style, nullptr);
  tRunRecord record{run.run(nullptr, collects ? &read : nullptr), {}};
  if (record.outOfMemory) throw std::bad_alloc();
  if (collects) collectFiles(line, read, record.files);
  return record;
}

std::string storeBundle(const tCommandLine& line, const tRunRecord& record,
                        const std::string& name) {
  std::vector<tMember> members = {{kIndex, indexOf(line, record)}};
  for (std::size_t i = 0; i < record.files.size(); ++i) {
    members.push_back({memberName(i + 1, record.files[i].name), record.files[i].text});
  }
  if (record.done) members.push_back({"output.ppo", record.text});
  if (!record.messages.empty()) members.push_back({"messages.txt", record.messages});
  std::string trouble;
  const std::string bytes = archiveOf(members, trouble);
  if (!trouble.empty()) return name + ": " + trouble;
  const int error = writeFile(name, bytes);
  return error == 0 ? std::string() : name + ": " + std::strerror(error);
}

int writeBundle(const tCommandLine& given) {
  tCommandLine line = given;
  // The same bytes later, too.
  if (!line.time) line.time = std::time(nullptr);
  line.includeDirectories.push_back(shippedHeaders());
  const tRunRecord record = recordRun(line, true);
  if (record.files.empty()) {
    std::fputs(record.messages.c_str(), stderr);
    return kSomeFailed;
  }
  const tRunRecord again = recordRun(replayOf(line, record), false);
  if (again.done != record.done || again.text != record.text) {
    complainAbout(line.files[0] + ": the run cannot be repeated from the files that it has read; " +
                  "foreign sources cannot be bundled, nor files that change meanwhile");
    return kSomeFailed;
  }
  const std::string& source = line.files[0];
  const std::string name =
      line.output.empty() ? source.substr(source.rfind('/') + 1) + ".zip" : line.output;
  const std::string trouble = storeBundle(line, record, name);
  if (!trouble.empty()) complainAbout(trouble);
  return trouble.empty() ? kAllDone : kSomeFailed;
}

void loadBundle(tCommandLine& line) {
  const auto refuse = [&](const std::string& reason) {
    line.complain("--bundle " + line.bundle + ": " + reason);
  };
  if (!line.files.empty() || !line.includeDirectories.empty() || !line.defines.empty()) {
    return refuse("the bundle decides on sources, directories and defines");
  }
  std::vector<tMember> list;
  const std::string trouble = readArchive(line.bundle, list);
  if (!trouble.empty()) return refuse(trouble);
  std::map<std::string, std::string> members;
  for (tMember& member : list) members[member.name] = std::move(member.text);
  try {
    readIndex(tJson::parse(members.at(kIndex)), members, line);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {
    return refuse("no bundle that krpre has written");
  }
  if (line.output.empty()) line.output = "-";
}

void addArchives(tCommandLine& line) {
  if (line.readsOnlyHostFiles()) return;
  std::vector<tHostFile> files;
  for (const std::string& name : line.includeDirectories) {
    if (!mayBeArchive(name)) continue;
    std::vector<tMember> members;
    const std::string trouble = readArchive(name, members);
    if (!trouble.empty()) {
      return line.complain(std::string("-I ").append(name).append(": ").append(trouble));
    }
    for (tMember& member : members) {
      std::string inside = name;
      inside.append("/").append(member.name);
      files.push_back({std::move(inside), std::move(member.text), name});
    }
  }
  line.setHostFiles(std::move(files), false);
}
