#pragma once

#include <new>
#include <string>
#include <vector>

#include "cli/commandline.h"
#include "include/krpre.h"

/// The name by which the library knows the file that is called `name` on the command line.
std::string nameInRun(const std::string& name);

/// The text that a function of the library writes, `write(buffer, size)`, which answers the length
/// of the whole. Empty when memory is short, be it at the first call or at the second.
template <class tWrite>
std::string writtenText(const tWrite& write) {
  std::string text(write(nullptr, 0), '\0');
  if (write(text.data(), text.size() + 1) != text.size()) text.clear();
  return text;
}

/// The directory of the headers that come with the library. Empty if it cannot be determined.
std::string shippedHeaders();

/// Runs what callbacks do. Nothing may be thrown out of them: the library, which calls them, is C
/// to this program and has a C++ runtime of its own.
class tCallbackGuard {
 public:
  template <class tAction>
  void run(const tAction& action) noexcept {
    try {
      if (!failed_) action();
    } catch (...) {
      failed_ = true;
    }
  }
  /// Throws std::bad_alloc if anything was thrown: nothing else is, there.
  void check() const {
    if (failed_) throw std::bad_alloc();
  }

 private:
  bool failed_ = false;
};

/// The arguments of one call of the library, and what its host has beside them that affects
/// outputs.
class tLibraryCall {
 public:
  /// Takes from `line` what affects the output of `source`; `shippedHeaders` is searched last, and
  /// `tag` becomes part of the names of temporary files. `line` and `shippedHeaders` must outlive
  /// this object.
  tLibraryCall(const tCommandLine& line, const std::string& source,
               const std::string& shippedHeaders, const std::string& tag = {});
  tLibraryCall(const tLibraryCall&) = delete;
  tLibraryCall& operator=(const tLibraryCall&) = delete;

  /// The slots of the argument vector; the last one names the source. Valid, as what prepare()
  /// gives, as long as this object.
  int count() const { return static_cast<int>(slots_.size()); }
  char** vector() { return slots_.data(); }
  void prepare(krpre_host& host) const;

 private:
  std::vector<std::string> arguments_;
  std::vector<char*> slots_;
  std::vector<const char*> directories_;
  std::vector<krpre_define> defines_;
  std::vector<krpre_prefix> prefixes_;
  std::vector<krpre_file> files_;
  bool onlyFiles_;
  const long long* time_;
};
