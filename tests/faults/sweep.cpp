#include "tests/faults/sweep.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string_view>

#include "tests/faults/faultlayer.h"
#include "tests/support/childprocess.h"

namespace fs = std::filesystem;

namespace {

using tFiles = std::map<std::string, std::string>;

/// What processes of a sweep share; it survives their deaths.
struct tShared {
  long at;     // the failure at work, from 1
  long calls;  // how many there are
  long tried;
  tFaultCount counted;  // by a program
  std::size_t size;     // of what was found
  char found[1 << 20];
};

struct tKind {
  const char* name;
  tFault fault;
};
constexpr tKind kKinds[] = {
    {"memory", {eFaulty::kMemory, 0, false, 0}},
    {"memory for ever", {eFaulty::kMemory, 0, true, 0}},
    {"EIO", {eFaulty::kFile, 0, false, EIO}},
    {"EIO for ever", {eFaulty::kFile, 0, true, EIO}},
    {"ENOSPC", {eFaulty::kFile, 0, false, ENOSPC}},
    {"ENOSPC for ever", {eFaulty::kFile, 0, true, ENOSPC}},
    {"EACCES", {eFaulty::kFile, 0, false, EACCES}},
    {"EACCES for ever", {eFaulty::kFile, 0, true, EACCES}},
    {"EMFILE", {eFaulty::kFile, 0, false, EMFILE}},
    {"EMFILE for ever", {eFaulty::kFile, 0, true, EMFILE}},
    {"ENOMEM", {eFaulty::kFile, 0, false, ENOMEM}},
    {"EINTR", {eFaulty::kFile, 0, false, EINTR}},
    {"short", {eFaulty::kPart, 0, false, 0}},
    {"short for ever", {eFaulty::kPart, 0, true, 0}},
    {"machine", {eFaulty::kMachine, 0, false, 0}},
};

class tSweep {
 public:
  tSweep(const tEntry& entry, const tFiles& inputs, const tFiles& older)
      : entry_(entry), inputs_(inputs), older_(older) {
    void* const memory =
        mmap(nullptr, sizeof(tShared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    shared_ = new (memory) tShared{};
    messages_ = memfd_create("messages", 0);
  }
  ~tSweep() {
    close(messages_);
    munmap(shared_, sizeof *shared_);
  }
  tSweep(const tSweep&) = delete;
  tSweep& operator=(const tSweep&) = delete;

  std::string run();

 private:
  void runKind(const tKind& kind);
  void attempt(const tKind& kind);
  void tryFrom(const tKind& kind);
  tCame perform(const tFault& fault, tFaultCount& count);
  void carryOut(tCame& came, const tFault& fault, tFaultCount& count);
  void carryOutAlone(tCame& came, const tFault& fault, tFaultCount& count);
  void reset();
  void judge(const tKind& kind, const tCame& came, const tFaultCount& count);
  void judgeFailure(const tKind& kind, const tCame& came, const tFaultCount& count);
  void find(const tKind& kind, const char* function, const std::string& what);
  static long most();

  const tEntry& entry_;
  const tFiles& inputs_;
  const tFiles& older_;
  tTemporaryDirectory directory_;
  tShared* shared_;
  int messages_;
  tCame expected_;
};

long tSweep::most() {
  const char* const wanted = std::getenv("KRPRE_FAULTS");
  if (wanted == nullptr) return 3;
  return std::strcmp(wanted, "all") == 0 ? 1L << 40 : std::atol(wanted);
}

std::string tSweep::run() {
  std::printf("%s:", entry_.name);
  for (const tKind& kind : kKinds) runKind(kind);
  std::printf("\n");
  return {shared_->found, shared_->size};
}

void tSweep::runKind(const tKind& kind) {
  shared_->at = 0;
  shared_->tried = 0;
  shared_->calls = 0;
  do {
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
      attempt(kind);
      _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (status == 0) break;
    find(kind, "?", "died: " + std::to_string(status));
  } while (shared_->at > 0 && shared_->at < shared_->calls);
  if (shared_->tried > 0) std::printf(" %s %ld of %ld,", kind.name, shared_->tried, shared_->calls);
}

// In a process of its own. What ends it here is a fault of this test.
void tSweep::attempt(const tKind& kind) try {
  fs::current_path(directory_.path());
  dup2(messages_, STDOUT_FILENO);
  dup2(messages_, STDERR_FILENO);
  tryFrom(kind);
} catch (const std::exception& failure) {
  find(kind, nullptr, std::string("the sweep: ") + failure.what());
}

void tSweep::tryFrom(const tKind& kind) {
  tFaultCount count{};
  tFault fault = kind.fault;
  expected_ = perform(fault, count);
  // What is made once in a process has been made.
  if (!entry_.isProgram) expected_ = perform(fault, count);
  if (expected_.status != entry_.status)
    find(kind, "none", "fails without faults: " + expected_.told);
  const long calls = shared_->calls = count.calls;
  const long step = std::max(1L, calls / most());
  for (fault.nth = shared_->at + (shared_->at == 0 ? 1 : step); fault.nth <= calls;
       fault.nth += step) {
    shared_->at = fault.nth;
    ++shared_->tried;
    alarm(60);
    const tHeld before = held();
    judge(kind, perform(fault, count), count);
    const tHeld after = held();
    if (entry_.isProgram) continue;
    if (before != after) {
      find(kind, count.function,
           "lost " + std::to_string(after.blocks - before.blocks) + " blocks, " +
               std::to_string(after.descriptors - before.descriptors) + " descriptors");
    }
    const tCame again = perform({}, count);
    if (again.files != expected_.files || again.told != expected_.told ||
        again.text != expected_.text) {
      find(kind, count.function, "the next run is wrong: " + again.told.substr(0, 300));
    }
  }
}

tCame tSweep::perform(const tFault& fault, tFaultCount& count) {
  reset();
  static_cast<void>(ftruncate(messages_, 0));
  lseek(messages_, 0, SEEK_SET);
  tCame came;
  if (entry_.isProgram) {
    carryOutAlone(came, fault, count);
  } else {
    carryOut(came, fault, count);
  }
  came.told += readBytes("/proc/self/fd/" + std::to_string(messages_));
  for (const auto& file : fs::directory_iterator(".")) {
    const std::string name = file.path().filename();
    if (!inputs_.contains(name)) came.files[name] = readBytes(name);
  }
  return came;
}

void tSweep::carryOut(tCame& came, const tFault& fault, tFaultCount& count) {
  arm(fault);
  entry_.run(came);
  count = disarm();
  std::fflush(stdout);
}

void tSweep::carryOutAlone(tCame& came, const tFault& fault, tFaultCount& count) {
  shared_->counted = {};
  const pid_t child = fork();
  if (child == 0) {
    dup2(open(inputs_.begin()->first.c_str(), O_RDONLY | O_CLOEXEC), STDIN_FILENO);
    // As with a program, what is thrown out of it ends it.
    [&]() noexcept { carryOut(came, fault, shared_->counted); }();
    _exit(came.status);
  }
  int status = 0;
  waitpid(child, &status, 0);
  came.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  if (WIFSIGNALED(status)) came.broken = "died of signal " + std::to_string(WTERMSIG(status));
  count = shared_->counted;
}

void tSweep::reset() {
  for (const auto& file : fs::directory_iterator(".")) fs::remove_all(file.path());
  for (const tFiles* files : {&inputs_, &older_}) {
    for (const auto& [name, bytes] : *files) writeBytes(name, bytes);
  }
}

void tSweep::judge(const tKind& kind, const tCame& came, const tFaultCount& count) {
  if (!came.broken.empty()) find(kind, count.function, came.broken);
  if (came.status != 0) return judgeFailure(kind, came, count);
  for (const auto& [name, bytes] : expected_.files) {
    const auto file = came.files.find(name);
    // What is cached for later runs need not be there.
    if (file == came.files.end() && name.ends_with(".pch")) continue;
    if (file == came.files.end() || file->second != bytes) {
      find(kind, count.function, "done, but " + name + " is wrong");
    }
  }
  if (came.files.size() > expected_.files.size())
    find(kind, count.function, "done, a file is left");
  if (came.text != expected_.text)
    find(kind, count.function, "done, but wrong: " + came.text.substr(0, 300));
  if (came.told != expected_.told)
    find(kind, count.function, "done, but told: " + came.told.substr(0, 300));
  if (expected_.status != 0) find(kind, count.function, "done, but cannot be");
}

void tSweep::judgeFailure(const tKind& kind, const tCame& came, const tFaultCount& count) {
  if (came.told.empty()) find(kind, count.function, "fails without a word");
  if (!came.text.empty() && came.text != expected_.text) {
    find(kind, count.function, "fails, and returns " + came.text.substr(0, 300));
  }
  for (const auto& [name, bytes] : came.files) {
    const auto whole = expected_.files.find(name);
    if (whole != expected_.files.end() && whole->second == bytes) continue;
    const auto old = older_.find(name);
    const bool stays = old != older_.end() && old->second == bytes;
    // What was there already goes with the failure of its source, which may not have been reached,
    // unless it could not be found out that it is not the source itself.
    const bool mayStay =
        came.told.find(fs::path(name).stem().string() + ".prw with error") == std::string::npos ||
        std::string_view(count.function) == "unlink" || kind.fault.what == eFaulty::kMemory;
    // Nothing can be removed any more.
    if (kind.fault.what == eFaulty::kFile && kind.fault.lasting) continue;
    if (!stays || !mayStay) find(kind, count.function, "fails, and leaves " + name);
  }
}

void tSweep::find(const tKind& kind, const char* function, const std::string& what) {
  const std::string line = std::string(entry_.name) + ", " + kind.name + " " +
                           std::to_string(shared_->at) + " (" +
                           (function == nullptr ? "none" : function) + "): " + what + "\n";
  shared_->size += line.copy(shared_->found + shared_->size, sizeof shared_->found - shared_->size);
}

}  // namespace

std::string sweep(const tEntry& entry, const std::map<std::string, std::string>& inputs,
                  const std::map<std::string, std::string>& older) {
  return tSweep(entry, inputs, older).run();
}
