// Delta debugging by lines: of each file ever smaller runs of lines are left out, and stay out when
// the symptom is still there, until no single line can go. All of it happens in memory.

#include "cli/reduce.h"

#include <cctype>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

#include "cli/bundle.h"
#include "cli/exitstatus.h"
#include "cli/librarycall.h"
#include "cli/printer.h"

namespace {

constexpr int kMostRuns = 20'000;
constexpr auto kMostTime = std::chrono::seconds(60);

using tLines = std::vector<std::string>;

tLines linesOf(const std::string& text) {
  tLines lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size() - 1) + 1;
    lines.push_back(text.substr(at, end - at));
    at = end;
  }
  return lines;
}

std::string textOf(const tLines& lines) {
  std::string text;
  for (const std::string& line : lines) text += line;
  return text;
}

class tReduction {
 public:
  tReduction(const tCommandLine& line, const std::vector<tMember>& files) : line_(line) {
    for (const tMember& file : files) files_.push_back({file.name, linesOf(file.text)});
  }

  bool showsSymptom() { return shows(runOnce(false)); }
  void run();
  tRunRecord runOnce(bool collects);
  std::size_t lineCount() const;
  const tCommandLine& line() const { return line_; }

 private:
  struct tFile {
    std::string name;
    tLines lines;
  };

  bool shows(const tRunRecord& record) const;
  bool shrink(tFile& file);
  bool goesWithout(tFile& file, std::size_t first, std::size_t count);
  bool isSpent() const {
    return runs_ >= kMostRuns || std::chrono::steady_clock::now() - start_ > kMostTime;
  }

  tCommandLine line_;
  std::vector<tFile> files_;
  int runs_ = 0;
  const std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

tRunRecord tReduction::runOnce(bool collects) {
  std::vector<tHostFile> files;
  for (const tFile& file : files_) files.push_back({file.name, textOf(file.lines), {}});
  line_.setHostFiles(std::move(files), true);
  ++runs_;
  return recordRun(line_, collects);
}

bool tReduction::shows(const tRunRecord& record) const {
  if (!line_.wantedText.empty()) {
    return record.done && record.text.find(line_.wantedText) != std::string::npos;
  }
  const std::string& code = line_.wantedError;
  const bool number = code.size() > 1 && (code[0] == 'C' || code[0] == 'c') &&
                      std::isdigit(static_cast<unsigned char>(code[1])) != 0;
  return record.codes.find(" " + (number ? code.substr(1) : code) + " ") != std::string::npos;
}

bool tReduction::goesWithout(tFile& file, std::size_t first, std::size_t count) {
  const auto begin = file.lines.begin() + static_cast<std::ptrdiff_t>(first);
  const tLines all = file.lines;
  file.lines.erase(begin, begin + static_cast<std::ptrdiff_t>(count));
  if (showsSymptom()) return true;
  file.lines = all;
  return false;
}

bool tReduction::shrink(tFile& file) {
  bool shrunk = false;
  for (std::size_t size = file.lines.size(); size > 0; size /= 2) {
    for (std::size_t at = 0; at < file.lines.size() && !isSpent();) {
      if (goesWithout(file, at, std::min(size, file.lines.size() - at))) {
        shrunk = true;
      } else {
        at += size;
      }
    }
  }
  return shrunk;
}

void tReduction::run() {
  bool shrunk = true;
  while (shrunk && !isSpent()) {
    shrunk = false;
    for (tFile& file : files_) shrunk = shrink(file) || shrunk;
  }
}

std::size_t tReduction::lineCount() const {
  std::size_t count = 0;
  for (const tFile& file : files_) count += file.lines.size();
  return count;
}

}  // namespace

int reduce(const tCommandLine& given) {
  if (given.wantedError.empty() == given.wantedText.empty()) {
    return refuseUsage("reduce needs either --error=CODE or --output=TEXT", "krpre reduce");
  }
  tCommandLine line = given;
  if (!line.time) line.time = std::time(nullptr);
  line.includeDirectories.push_back(shippedHeaders());
  const std::string& source = line.files[0];
  const tRunRecord whole = recordRun(line, true);
  tReduction reduction(line, whole.files);
  const std::size_t before = reduction.lineCount();
  if (!reduction.showsSymptom()) {
    complainAbout(source + ": it does not show the " +
                  (line.wantedText.empty() ? "error" : "output") + " to keep");
    return kSomeFailed;
  }
  reduction.run();
  const tRunRecord left = reduction.runOnce(true);
  const std::string name = line.reducedFile.empty()
                               ? source.substr(source.rfind('/') + 1) + ".reduced.zip"
                               : line.reducedFile;
  const std::string trouble = storeBundle(reduction.line(), left, name);
  if (!trouble.empty()) {
    complainAbout(trouble);
    return kSomeFailed;
  }
  if (namesStandardOutput(name)) return kAllDone;
  return printText(source + ": " + std::to_string(before) + " lines in " +
                   std::to_string(whole.files.size()) + " files reduced to " +
                   std::to_string(reduction.lineCount()) + " in " +
                   std::to_string(left.files.size()) + ": " + name + "\n");
}
