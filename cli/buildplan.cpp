#include "cli/buildplan.h"

#include <limits.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <new>

#include "cli/librarycall.h"
#include "include/krpre.h"

namespace {

std::string directoryOf(const std::string& name) {
  return name.substr(0, name.rfind('/') + 1);
}

std::string bareOf(const std::string& name) {
  return name.substr(name.rfind('/') + 1);
}

std::string withExtension(const std::string& name, const char* extension) {
  const std::size_t bare = name.rfind('/') + 1;
  const std::size_t dot = name.rfind('.');
  const bool has = dot != std::string::npos && dot > bare;
  return name.substr(0, has ? dot : name.size()) + extension;
}

std::string outputName(const std::string& source, const std::string& directory) {
  std::string name = writtenText([&](char* buffer, std::size_t size) {
    return krpre_output_name(source.c_str(), directory.c_str(), buffer, size);
  });
  if (name.empty()) throw std::bad_alloc();
  return name;
}

bool isDirectory(const std::string& name) {
  struct stat status {};
  return stat(name.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// The FNV-1a hash, in 64 bits, of the bare name.
std::string tagOf(const std::string& output) {
  std::uint64_t hash = 0xcbf29ce484222325;
  for (const char c : bareOf(output)) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3;
  }
  char text[20];
  std::snprintf(text, sizeof text, "~%016llx", static_cast<unsigned long long>(hash));
  return text;
}

/// Turns names into unique ones: equal for the same file, whether it exists or not.
class tFileNames {
 public:
  const std::string& unique(const std::string& name) {
    const std::string directory = directoryOf(name);
    auto at = directories_.find(directory);
    if (at == directories_.end()) at = directories_.emplace(directory, resolve(directory)).first;
    return unique_ = at->second + '/' + bareOf(name);
  }

 private:
  static std::string resolve(const std::string& directory) {
    char path[PATH_MAX];
    return realpath(directory.empty() ? "." : directory.c_str(), path) != nullptr ? path
                                                                                  : directory;
  }

  std::map<std::string, std::string> directories_;
  std::string unique_;
};

class tPlanner {
 public:
  explicit tPlanner(const tCommandLine& line) : line_(line) {}

  tBuildPlan plan();

 private:
  bool refuse(std::string complaint) { return fail(std::move(complaint), true); }
  bool fail(std::string complaint, bool wrongUsage = false);
  bool checkOptions();
  bool checkOutputOption();
  bool checkDirectory(const std::string& name);
  void addJob(const std::string& name);
  bool checkNames();
  bool checkTarget(const tBuildJob& job, const std::string& target);

  const tCommandLine& line_;
  tBuildPlan plan_;
  std::string outputDirectory_;
  std::string outputFile_;

  tFileNames names_;
  std::map<std::string, std::string> sources_;  // by their unique names
  std::map<std::string, std::string> writers_;  // the source of each file that is written
};

tBuildPlan tPlanner::plan() {
  if (!checkOptions() || !checkOutputOption()) return std::move(plan_);
  for (const std::string& name : line_.files) addJob(name);
  if (!checkNames()) plan_.jobs.clear();
  return std::move(plan_);
}

bool tPlanner::fail(std::string complaint, bool wrongUsage) {
  plan_.complaint = std::move(complaint);
  plan_.wrongUsage = wrongUsage;
  return false;
}

bool tPlanner::checkOptions() {
  const bool input = line_.readsStandardInput();
  if (input && line_.files.size() > 1)
    return refuse("- (standard input) cannot be combined with other files");
  if (!input && !line_.standardInputName.empty())
    return refuse("--stdin-name requires the file - (standard input)");
  if (line_.writesNothing()) return true;
  if (namesStandardOutput(line_.output) && line_.files.size() > 1)
    return refuse("-o - (standard output) requires a single source");
  if (line_.saveTemps && line_.writesStandardOutput())
    return refuse("--save-temps requires -o FILE when the output goes to standard output");
  const tDependencyOptions& rules = line_.dependencies;
  if (!rules.wanted && (!rules.file.empty() || !rules.targets.empty() || rules.phony)) {
    return refuse("-MF, -MT and -MP require -MD");
  }
  if (!rules.wanted) return true;
  if (line_.files.size() > 1 && !rules.file.empty()) return refuse("-MF requires a single source");
  if (line_.files.size() > 1 && !rules.targets.empty())
    return refuse("-MT requires a single source");
  if (line_.writesStandardOutput())
    return refuse("-MD requires -o FILE when the output goes to standard output");
  return true;
}

bool tPlanner::checkOutputOption() {
  const std::string& output = line_.output;
  if (output.empty() || line_.writesNothing() || line_.writesStandardOutput()) return true;
  if (output.back() == '/' || isDirectory(output) || line_.files.size() > 1) {
    outputDirectory_ = output;
    return checkDirectory(output);
  }
  if (krpre_is_source(output.c_str()) != 0) {
    return refuse("-o " + output + ": this is the extension of a source or header");
  }
  outputFile_ = output;
  const std::string directory = directoryOf(output);
  return directory.empty() || checkDirectory(directory);
}

bool tPlanner::checkDirectory(const std::string& name) {
  struct stat status {};
  if (stat(name.c_str(), &status) != 0) {
    return fail(name + ": " + (errno == ENOENT ? "no such directory" : std::strerror(errno)));
  }
  return S_ISDIR(status.st_mode) || fail(name + ": not a directory");
}

void tPlanner::addJob(const std::string& name) {
  const bool input = line_.readsStandardInput();
  tBuildJob job;
  job.source = input && !line_.standardInputName.empty() ? line_.standardInputName
               : input                                   ? "stdin.prw"
                                                         : name;
  const bool writes = !line_.writesNothing();
  if (!outputFile_.empty()) {
    job.output = outputFile_;
    job.outputIsChosen = true;
  } else if (writes && !line_.writesStandardOutput()) {
    job.output = outputName(job.source, outputDirectory_);
  }
  const std::string& rule = line_.dependencies.file;
  if (writes && line_.dependencies.wanted) {
    job.dependencies = rule.empty()                ? withExtension(job.output, ".d")
                       : namesStandardOutput(rule) ? kStandardOutput
                                                   : rule;
  }
  job.tag = tagOf(writes ? job.output : job.source);
  plan_.jobs.push_back(std::move(job));
}

bool tPlanner::checkNames() {
  // A single source can only collide with its own dependency file.
  if (plan_.jobs.size() == 1 && plan_.jobs[0].dependencies.empty()) return true;
  std::vector<tBuildJob> jobs;
  for (tBuildJob& job : plan_.jobs) {
    if (sources_.emplace(names_.unique(job.source), job.source).second) {
      jobs.push_back(std::move(job));
    }
  }
  plan_.jobs = std::move(jobs);
  if (line_.writesNothing()) return true;
  for (const tBuildJob& job : plan_.jobs) {
    if (!checkTarget(job, job.output)) return false;
    if (!job.dependencies.empty() && !checkTarget(job, job.dependencies)) return false;
  }
  return true;
}

bool tPlanner::checkTarget(const tBuildJob& job, const std::string& target) {
  const std::string name = names_.unique(target);
  const auto source = sources_.find(name);
  const bool own = source != sources_.end() && source->second == job.source;
  // A source that is its own output fails by itself, in the library; the others are still done.
  if ((source != sources_.end() && !(own && target == job.output)) ||
      (target == job.dependencies && krpre_is_source(target.c_str()) != 0)) {
    return refuse(job.source + ": " + target + " is a source and would be overwritten");
  }
  const auto [writer, first] = writers_.emplace(name, job.source);
  if (first) return true;
  if (writer->second == job.source)
    return refuse(target + ": output and dependency file would be the same file");
  return refuse(writer->second + " and " + job.source + " would both be written to " + target);
}

}  // namespace

tBuildPlan planOf(const tCommandLine& line) {
  return tPlanner(line).plan();
}
