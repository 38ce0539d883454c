#include <dlfcn.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include "include/krpre.h"
#include "preprocessor/run/options.h"
#include "preprocessor/run/report.h"

namespace {

// Note [host's exception]
// The library carries a C++ runtime of its own, unwinder included. An exception that this one
// throws cannot pass through the frames of a host that uses another: the process would be aborted.
// So the host's runtime throws, wherever the host has loaded it.
[[noreturn]] void throwNullCommandLine() {
  constexpr char kText[] = "basic_string::_M_construct null not valid";
  using tThrow = void (*)(const char*);
  if (void* runtime = dlopen("libstdc++.so.6", RTLD_LAZY | RTLD_NOLOAD)) {
    void* throwLogicError = dlsym(runtime, "_ZSt19__throw_logic_errorPKc");
    dlclose(runtime);  // gives back only what this look-up has counted
    if (throwLogicError != nullptr) reinterpret_cast<tThrow>(throwLogicError)(kText);
  }
  throw std::logic_error(kText);
}

int runPieces(int count, const char* commandLine) {
  std::vector<std::string> pieces;
  splitKorelc(commandLine, " ", pieces);
  std::vector<char*> slots = {nullptr};
  for (std::string& piece : pieces) slots.push_back(piece.data());
  // Null slots behind the pieces mean nothing to the run, however many the host has counted, but
  // that one argument alone may be the version request. So one null slot stands for all of them.
  slots.push_back(nullptr);
  const int most = static_cast<int>(slots.size()) - 1;
  return doPreProc(std::min(count, most) + 1, slots.data());
}

}  // namespace

int executeKrpreDll(int count, const char* commandLine) {
  if (commandLine == nullptr) throwNullCommandLine();  // See note [host's exception].
  try {
    return runPieces(count, commandLine);
  } catch (...) {
    tRunHost nobody;
    tRunReport(nobody, {}).tellException();
    return KRPRE_OUTPUT_FAILED;
  }
}
