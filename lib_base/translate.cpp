#include "lib_base/translate.h"

#include <dlfcn.h>
#include <link.h>

#include <atomic>
#include <cstddef>
#include <cstdio>
#include <mutex>
#include <string_view>

#include "lib_base/language.h"
#include "lib_base/owndirectory.h"
#include "lib_base/pathname.h"
#include "lib_base/translateqt.h"

namespace {

using tTranslateFunction = decltype(&krpreQtTranslate);

/// Null if the module is missing or incompatible.
tTranslateFunction loadModule() {
  const tString directory = ownDirectory();
  if (directory.empty()) return nullptr;
  for (const char* place : {"krpre/libkrpre-qt.so", "../lib/krpre/libkrpre-qt.so"}) {
    void* module = dlopen(joinPath(directory, place).c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module) continue;
    if (void* symbol = dlsym(module, "krpreQtTranslate")) {
      return reinterpret_cast<tTranslateFunction>(symbol);
    }
    dlclose(module);
  }
  return nullptr;
}

// Called for every text. dlopen with RTLD_NOLOAD would search the file system each time when Qt is
// not loaded, and take as long as a small run.
bool qtIsLoaded() {
  const auto isQt = [](dl_phdr_info* object, std::size_t, void*) {
    const std::string_view name = object->dlpi_name;
    return name.substr(name.rfind('/') + 1).starts_with("libQt5Core.so.5") ? 1 : 0;
  };
  return dl_iterate_phdr(isQt, nullptr) != 0;
}

/// Null as long as the host does not use Qt. The module is looked up once and then stays loaded,
/// because the host may still use what it returned.
tTranslateFunction translateFunction() {
  static std::atomic<tTranslateFunction> found{nullptr};
  static std::once_flag searched;
  const tTranslateFunction known = found.load(std::memory_order_acquire);
  if (known || !qtIsLoaded()) return known;
  std::call_once(searched, [] { found.store(loadModule(), std::memory_order_release); });
  return found.load(std::memory_order_acquire);
}

void translateFatal(const char* text, char* buffer, std::size_t size) {
  std::snprintf(buffer, size, "%s", translate(text).c_str());
}

[[maybe_unused]] const bool fatalErrorsAreTranslated = [] {
  setFatalTranslator(translateFatal);
  return true;
}();

}  // namespace

tString translate(const char* text) {
  if (const tLanguage* language = tLanguageScope::current()) {
    return tString(language->translation(text != nullptr ? text : ""));
  }
  const tTranslateFunction ask = translateFunction();
  if (!ask) return tString::borrow(text ? text : "");
  tString translated;
  std::size_t size = 256;
  // Retry until it fits: the translator may have changed in between.
  for (;;) {
    translated.resize(size);
    const std::size_t length = ask(text, translated.writable(), size);
    if (length == 0) return tString::borrow(text ? text : "");
    if (length <= size) {
      translated.resize(length);
      return translated;
    }
    size = length;
  }
}

tString toldOf(const tFatalError& failure) {
  const char* const text = *failure.text() != '\0' ? failure.text() : "assert failed";
  return tString::format("%s %s %s %s %u", text, translate("in file").c_str(), failure.unit(),
                         translate("at line").c_str(), failure.line());
}
