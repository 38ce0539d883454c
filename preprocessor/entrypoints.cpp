#include "include/krpre.h"

#include <cstddef>
#include <cstring>

#include "lib_base/diskman.h"
#include "lib_gzip/zipfile.h"
#include "preprocessor/hostbridge.h"
#include "preprocessor/preprocessor.h"

namespace {

constexpr std::size_t kSmallestHost = offsetof(krpre_host, step) + sizeof(krpre_host::step);

int runFor(const krpre_host& host, int count, char** vector) {
  tDiskManLocal disk;
  tHostBridge bridge(host);
  if (!bridge.wantsMessages()) return runPreprocessor(disk, count, vector, bridge);
  const tOutputScope messages(bridge);
  return runPreprocessor(disk, count, vector, bridge);
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

int change(eFileResult (*changeFile)(tDiskMan&, const char*, const char*), const char* in,
           const char* out) {
  try {
    tDiskManLocal disk;
    return codeOf(changeFile(disk, in, out));
  } catch (...) {
    return KRPRE_NOT_WRITTEN;
  }
}

}  // namespace

extern "C" int doPreProc(int count, char** vector) {
  // The run reports its failures itself; this keeps what fails in reporting away from the host.
  try {
    return __get_xx__(count, vector);
  } catch (...) {
    return KRPRE_OUTPUT_FAILED;
  }
}

extern "C" int krpre_run(int count, char** vector, const krpre_host* host) {
  if (host == nullptr) return doPreProc(count, vector);
  // A host that was built against an earlier header knows fewer fields, one against a later more.
  if (host->size < kSmallestHost || host->size > sizeof(krpre_host)) return KRPRE_OUTPUT_FAILED;
  krpre_host known{};
  std::memcpy(&known, host, host->size);
  try {
    return runFor(known, count, vector);
  } catch (...) {
    return KRPRE_OUTPUT_FAILED;
  }
}

extern "C" int krpre_pack(const char* in, const char* out) {
  return change(packFile, in, out);
}

extern "C" int krpre_unpack(const char* in, const char* out) {
  return change(unpackFile, in, out);
}
