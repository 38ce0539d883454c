// How sources are preprocessed in parallel.
//
// Each thread takes the next source, runs the library over it and stores the result in the slot of
// that source. The main thread prints the results in order, each as soon as all before it have been
// printed, so that the output does not depend on timing. One source, or one job, needs no thread.

#include "cli/build.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <cstddef>
#include <cstring>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "cli/buildplan.h"
#include "cli/coverage.h"
#include "cli/exitstatus.h"
#include "cli/inputtext.h"
#include "cli/librarycall.h"
#include "cli/printer.h"
#include "cli/progress.h"
#include "cli/sourcerun.h"
#include "include/krpre.h"

namespace {

using tClock = std::chrono::steady_clock;

/// All sources of one command line.
class tBuild {
 public:
  tBuild(std::deque<tSourceRun>& runs, tPrinter& printer, const tProgressStyle& progress)
      : runs_(runs), printer_(printer), progress_(progress, runs.size(), tClock::now()) {}

  /// Whether all of them were preprocessed.
  bool run(std::size_t jobs);

 private:
  void runOneByOne();
  void runAtOnce(std::size_t jobs);
  std::size_t startThreads(std::size_t jobs, std::vector<std::jthread>& threads);
  void work();
  void printInOrder();
  void print(const tSourceResult& result);

  std::deque<tSourceRun>& runs_;
  tPrinter& printer_;
  tProgressLine progress_;
  bool done_ = true;

  // What the threads share.
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::optional<tSourceResult>> results_;
  std::size_t taken_ = 0;
  std::size_t finished_ = 0;
};

bool tBuild::run(std::size_t jobs) {
  jobs = std::min(jobs, runs_.size());
  if (jobs > 1) {
    runAtOnce(jobs);
  } else {
    runOneByOne();
  }
  progress_.erase();
  return done_;
}

void tBuild::runOneByOne() {
  for (std::size_t i = 0; i < runs_.size(); ++i) {
    if (runs_.size() > 1) progress_.show(i, runs_[i].job().source, tClock::now());
    print(runs_[i].run());
  }
}

void tBuild::runAtOnce(std::size_t jobs) {
  results_.resize(runs_.size());
  std::vector<std::jthread> threads;
  if (startThreads(jobs, threads) == 0) return runOneByOne();
  printInOrder();
}

// Starts as many as the system allows and returns their number.
std::size_t tBuild::startThreads(std::size_t jobs, std::vector<std::jthread>& threads) {
  threads.reserve(jobs);
  try {
    while (threads.size() < jobs) threads.emplace_back([this] { work(); });
  } catch (const std::exception&) {
    // The threads that did start do all the work.
  }
  return threads.size();
}

void tBuild::work() {
  std::unique_lock lock(mutex_);
  while (taken_ < runs_.size()) {
    const std::size_t mine = taken_++;
    lock.unlock();
    tSourceResult result = runs_[mine].run();
    lock.lock();
    results_[mine] = std::move(result);
    ++finished_;
    changed_.notify_one();
  }
}

void tBuild::printInOrder() {
  std::unique_lock lock(mutex_);
  for (std::size_t next = 0; next < runs_.size();) {
    if (results_[next]) {
      const tSourceResult result = std::move(*results_[next]);
      results_[next++].reset();
      lock.unlock();
      print(result);
      lock.lock();
      continue;
    }
    changed_.wait_for(lock, tProgressLine::kPause);
    const std::size_t finished = finished_;
    const tBuildJob& latest = runs_[std::max<std::size_t>(taken_, 1) - 1].job();
    lock.unlock();
    progress_.show(finished, latest.source, tClock::now());
    lock.lock();
  }
}

void tBuild::print(const tSourceResult& result) {
  progress_.erase();
  printer_.print(result);
  done_ = done_ && result.done;
}

std::size_t threadsFor(const tCommandLine& line) {
  if (line.jobs > 0) return line.jobs;
  return std::max(std::thread::hardware_concurrency(), 1U);
}

struct tFreeHeaders {
  void operator()(krpre_headers* headers) const { krpre_headers_free(headers); }
};
using tHeaders = std::unique_ptr<krpre_headers, tFreeHeaders>;

// Null when no two runs share any.
tHeaders headersFor(const tCommandLine& line, std::size_t sources) {
  const char* const directory = line.cache && !line.cache->empty() ? line.cache->c_str() : nullptr;
  if (line.cache) return tHeaders(krpre_headers_new_in(directory));
  return tHeaders(sources > 1 ? krpre_headers_new(0) : nullptr);
}

// What is not cached for later runs costs them time, and is no failure of this one.
void tellOfCache(const krpre_headers* headers) {
  const std::string problem = writtenText([headers](char* text, std::size_t size) {
    return krpre_headers_problem(headers, text, size);
  });
  if (!problem.empty()) complainAbout("the standard header is not cached: " + problem);
}

int buildFiles(const tCommandLine& line, std::deque<tSourceRun>& runs, tPrinter& printer) {
  const tProgressStyle progress =
      line.quiet || runs.size() < 2 ? tProgressStyle() : progressStyle(line.progress);
  return tBuild(runs, printer, progress).run(threadsFor(line)) ? kAllDone : kSomeFailed;
}

// One source, read from standard input, written to standard output, or both.
int buildStandardFiles(tSourceRun& run, bool input, tPrinter& printer) {
  std::string text;
  tSourceResult result;
  if (input) result.complaint = readToEnd(STDIN_FILENO, kStandardInput, "a source", text);
  if (result.complaint.empty()) result = run.run(input ? &text : nullptr);
  printer.print(result);
  if (!result.done) return kSomeFailed;
  const int error = writeAll(STDOUT_FILENO, result.text);
  if (error != 0) complainAbout(std::string("standard output: ") + std::strerror(error));
  return error == 0 ? kAllDone : kSomeFailed;
}

}  // namespace

int build(const tCommandLine& line, const std::string& shippedHeaders) {
  const tBuildPlan plan = planOf(line);
  if (!plan.complaint.empty()) {
    if (plan.wrongUsage) return refuseUsage(plan.complaint);
    complainAbout(plan.complaint);
    return kSomeFailed;
  }
  // What a check finds is its output.
  const int messages = line.checks ? STDOUT_FILENO : STDERR_FILENO;
  const tMessageStyle style = messageStyle(line, messages);
  const tHeaders headers = headersFor(line, plan.jobs.size());
  std::deque<tSourceRun> runs;
  for (const tBuildJob& job : plan.jobs) {
    runs.emplace_back(line, job, shippedHeaders, style, headers.get());
  }

  tPrinter printer(line.quiet && line.warnings.empty(), messages,
                   style.form == eDiagnosticForm::kSarif);
  int status = kSomeFailed;
  if (line.readsStandardInput() || line.writesStandardOutput()) {
    status = buildStandardFiles(runs.front(), line.readsStandardInput(), printer);
  } else {
    status = buildFiles(line, runs, printer);
  }
  if (line.unused && !line.readsStandardInput() && status == kAllDone) {
    const tSourceResult unused = unusedRules(line, style, shippedHeaders);
    printer.print(unused);
    if (!unused.done) status = kSomeFailed;
  }
  if (!printer.finish()) status = kSomeFailed;
  if (!line.quiet) tellOfCache(headers.get());
  return status;
}
