#include "include/krpre.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lib_base/diskman.h"
#include "lib_base/language.h"
#include "lib_base/pathname.h"
#include "lib_gzip/zipfile.h"
#include "preprocessor/convert/sourcekind.h"
#include "preprocessor/host/hostbridge.h"
#include "preprocessor/host/hostdisk.h"
#include "preprocessor/host/shippedheaders.h"
#include "preprocessor/run/cachedirectory.h"
#include "preprocessor/run/filenames.h"
#include "preprocessor/run/options.h"
#include "preprocessor/run/preprocessor.h"
#include "preprocessor/run/report.h"

namespace {

constexpr std::size_t kSmallestHost = offsetof(krpre_host, step) + sizeof(krpre_host::step);

/// What `host` wants, fields that it does not know being null. False when it cannot be a host.
bool readHost(const krpre_host* host, krpre_host& known) {
  known = {};
  if (host == nullptr) return true;
  // A host that was built against an earlier header knows fewer fields, one against a later more.
  if (host->size < kSmallestHost || host->size > sizeof(krpre_host)) return false;
  std::memcpy(&known, host, host->size);
  return true;
}

/// Runs `action` with messages as the host wants them. What is thrown becomes one of them.
template <class tAction>
int runFor(const krpre_host* host, const tAction& action) {
  krpre_host known;
  if (!readHost(host, known)) return KRPRE_OUTPUT_FAILED;
  tHostBridge bridge(known);
  std::optional<tOutputScope> messages;
  if (bridge.wantsMessages()) messages.emplace(bridge);
  try {
    std::optional<tLanguageScope> language;
    if (known.language != nullptr) language.emplace(languageNamed(known.language));
    if (const tString fault = bridge.fault(); !fault.empty()) {
      bridge.refuse(fault);
      return KRPRE_OUTPUT_FAILED;
    }
    return action(bridge);
  } catch (...) {
    tRunReport(bridge, {}).tellException();
    return KRPRE_OUTPUT_FAILED;
  }
}

int codeOf(eFileResult result) {
  switch (result) {
    case eFileResult::kDone:
      return KRPRE_PACKED;
    case eFileResult::kUnchanged:
      return KRPRE_UNCHANGED;
    case eFileResult::kUnreadable:
      return KRPRE_UNREADABLE;
    case eFileResult::kTooLarge:
      return KRPRE_TOO_LARGE;
    case eFileResult::kDamaged:
      return KRPRE_DAMAGED;
    case eFileResult::kNotWritten:
      break;
  }
  return KRPRE_NOT_WRITTEN;
}

int change(eFileResult (*changeFile)(tDiskMan&, const char*, const char*, int&), const char* in,
           const char* out) {
  int error = 0;
  int code = KRPRE_NOT_WRITTEN;
  try {
    tDiskManLocal disk;
    code = codeOf(changeFile(disk, in, out, error));
  } catch (...) {
    error = ENOMEM;
  }
  errno = error;
  return code;
}

int runText(tHostBridge& bridge, int count, char** vector, const char* name,
            std::string_view text) {
  if (name == nullptr || (text.data() == nullptr && !text.empty())) return KRPRE_BAD_SOURCE;
  if (text.size() >= kLongestText) return KRPRE_BAD_SOURCE;
  // As the run reads a name, so that both mean the same file.
  tString source(name);
  source.trim();
  if (source.empty()) return KRPRE_BAD_SOURCE;

  tDiskManLocal machine;
  tHostDisk disk(machine, bridge.host());
  disk.keepInMemory(source);
  if (!disk.create(source.c_str())->write(text)) return KRPRE_BAD_SOURCE;
  std::string argument = std::string("@F\"").append(source.view()).append("\"");
  std::vector<char*> slots(vector, vector + (vector == nullptr ? 0 : std::max(count, 0)));
  if (slots.empty()) slots.push_back(nullptr);
  slots.push_back(argument.data());
  return runPreprocessor(disk, static_cast<int>(slots.size()), slots.data(), bridge);
}

/// Copies as much of a text as fits, with a zero behind it. Returns its full length.
std::size_t copyCut(std::string_view text, char* target, std::size_t size) {
  if (size > 0 && target != nullptr)
    *std::copy_n(text.data(), std::min(text.size(), size - 1), target) = '\0';
  return text.size();
}

}  // namespace

extern "C" int doPreProc(int count, char** vector) {
  return __get_xx__(count, vector);
}

extern "C" krpre_headers* krpre_headers_new(int precompiled) {
  if (precompiled != 0) return krpre_headers_new_in(nullptr);
  try {
    return new krpre_headers({});
  } catch (...) {
    return nullptr;
  }
}

extern "C" krpre_headers* krpre_headers_new_in(const char* directory) {
  try {
    auto headers = std::make_unique<krpre_headers>(directory == nullptr ? cacheDirectory()
                                                                        : tString(directory));
    if (!headers->cache.saves()) {
      headers->cache.noteProblem("neither XDG_CACHE_HOME nor HOME names a directory");
    }
    return headers.release();
  } catch (...) {
    return nullptr;
  }
}

extern "C" size_t krpre_headers_problem(const krpre_headers* headers, char* problem, size_t size) {
  try {
    return copyCut(headers == nullptr ? std::string() : headers->cache.problem(), problem, size);
  } catch (...) {
    return copyCut({}, problem, size);
  }
}

extern "C" void krpre_headers_free(krpre_headers* headers) {
  delete headers;
}

extern "C" int krpre_headers_read(const krpre_headers* headers) {
  return headers == nullptr ? 0 : headers->cache.compiled();
}

extern "C" int krpre_headers_reused(const krpre_headers* headers) {
  return headers == nullptr ? 0 : headers->cache.reused();
}

extern "C" int krpre_run(int count, char** vector, const krpre_host* host) {
  return runFor(host, [&](tHostBridge& bridge) {
    tDiskManLocal machine;
    tHostDisk disk(machine, bridge.host());
    return runPreprocessor(disk, count, vector, bridge);
  });
}

extern "C" int krpre_pack(const char* in, const char* out) {
  return change(packFile, in, out);
}

extern "C" int krpre_unpack(const char* in, const char* out) {
  return change(unpackFile, in, out);
}

extern "C" int krpre_text(int count, char** vector, const krpre_host* host, const char* name,
                          const char* text, std::size_t length) {
  return runFor(host, [&](tHostBridge& bridge) {
    return runText(bridge, count, vector, name, {text, length});
  });
}

extern "C" std::size_t krpre_output_name(const char* source, const char* directory, char* name,
                                         std::size_t size) {
  if (source == nullptr) return copyCut({}, name, size);
  try {
    tRunOptions options;
    if (directory != nullptr) options.outputDirectory = tString(directory);
    const tString output = composeNames(options, tString(source)).output;
    return copyCut(output, name, size);
  } catch (...) {
    return copyCut({}, name, size);
  }
}

extern "C" std::size_t krpre_headers_directory(char* directory, std::size_t size) {
  try {
    return copyCut(shippedHeaders(), directory, size);
  } catch (...) {
    return copyCut({}, directory, size);
  }
}

extern "C" int krpre_is_source(const char* name) {
  return name != nullptr && isSourceExtension(extensionOf(name)) ? 1 : 0;
}

extern "C" const krpre_warning* krpre_warning_at(std::size_t index) {
  static constexpr krpre_warning kWarnings[] = {
#define WARNING(name, slug, text, advice) {slug, text},
#include "korelpre/lint/warnings.def"
#undef WARNING
  };
  return index < std::size(kWarnings) ? &kWarnings[index] : nullptr;
}

extern "C" std::size_t krpre_translate(const char* language, const char* text, char* translation,
                                       std::size_t size) {
  if (text == nullptr) return copyCut({}, translation, size);
  try {
    return copyCut(languageNamed(language).translation(text), translation, size);
  } catch (...) {
    return copyCut({}, translation, size);
  }
}

extern "C" const char* krpre_version() {
  return KRPRE_VERSION;
}
