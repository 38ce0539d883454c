#include "tests/corpus/entrypoint.h"

#include <dlfcn.h>
#include <jni.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "include/krpre.h"
#include "tests/support/javamachine.h"

namespace {

void* library;

template <typename tFunction>
tFunction* entryPoint(tFunction* /*type*/, const char* name) {
  void* const function = library == nullptr ? nullptr : dlsym(library, name);
  if (function == nullptr) {
    std::fprintf(stderr, "%s\n", dlerror());
    std::exit(126);
  }
  return reinterpret_cast<tFunction*>(function);
}

#define ENTRY_POINT(name) entryPoint(static_cast<decltype(::name)*>(nullptr), #name)

// The arguments begin in slot 0 of `words` here, the place of the program's name is in front.
int runVector(int count, char** words) {
  return ENTRY_POINT(doPreProc)(count + 1, words - 1);
}

int runLine(int count, char** words) {
  std::string line;
  for (int at = 0; at < count; ++at) line.append(at == 0 ? "" : " ").append(words[at]);
  return ENTRY_POINT(executeKrpreDll)(count + 1, line.c_str());
}

int runJava(int count, char** words) {
  tMachine machine;
  std::vector<std::u16string> texts(1);
  for (int at = 0; at < count; ++at) {
    const std::string_view word = words[at];
    texts.emplace_back(word.begin(), word.end());
  }
  for (const std::u16string& text : texts) machine.elements.push_back(text.c_str());
  return ENTRY_POINT(Java_Krpre_prebuild)(machine.environment(), nullptr, tMachine::kArray);
}

int runSilenced(int count, char** words) {
  int silencer = -1;
  const int saved = ENTRY_POINT(redirectOutPut)(&silencer);
  const int silent = runVector(count, words);
  ENTRY_POINT(restoreOutPut)(saved, silencer);
  const int heard = runVector(count, words);
  return silent == heard ? heard : 125;
}

struct tEntryPoint {
  std::string_view name;
  int (*call)(int count, char** words);
};
constexpr tEntryPoint kEntryPoints[] = {{"doPreProc", runVector},
                                        {"executeKrpreDll", runLine},
                                        {"Java_Krpre_prebuild", runJava},
                                        {"redirectOutPut", runSilenced}};

}  // namespace

int callEntryPoint(int count, char** words) {
  library = dlopen(words[0], RTLD_NOW | RTLD_LOCAL);
  for (const tEntryPoint& entry : kEntryPoints) {
    if (entry.name == words[1]) return entry.call(count - 2, words + 2);
  }
  return 126;
}
