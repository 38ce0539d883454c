#include "cli/pack.h"

#include <cstdio>

#include "cli/exitstatus.h"
#include "include/krpre.h"

namespace {

struct tWork {
  const char* command;
  int (*change)(const char* in, const char* out);
  const char* done;
  const char* needless;
};

const char* const kFailures[] = {
    "cannot be read",                                 // KRPRE_UNREADABLE
    "is larger than 16 MiB",                          // KRPRE_TOO_LARGE
    "is damaged, or only starts like a packed file",  // KRPRE_DAMAGED
    "cannot be written",                              // KRPRE_NOT_WRITTEN
};

bool changeFile(const tWork& work, const char* in, const char* out) {
  const int code = work.change(in, out);
  if (code == KRPRE_PACKED || code == KRPRE_UNCHANGED) {
    std::printf("%s %s\n", in, code == KRPRE_PACKED ? work.done : work.needless);
    return true;
  }
  const char* name = code == KRPRE_NOT_WRITTEN && out != nullptr ? out : in;
  std::fprintf(stderr, "krpre: %s %s\n", name, kFailures[code - KRPRE_UNREADABLE]);
  return false;
}

int changeFiles(const tWork& work, const tCommandLine& line) {
  const bool named = !line.output.empty();
  if (named && line.files.size() > 1) {
    return refuseUsage("-o requires a single input file", work.command);
  }
  int result = kAllDone;
  for (const std::string& file : line.files) {
    const bool done = changeFile(work, file.c_str(), named ? line.output.c_str() : nullptr);
    if (!done) result = kSomeFailed;
  }
  return result;
}

}  // namespace

int pack(const tCommandLine& line) {
  return changeFiles({"krpre pack", krpre_pack, "packed", "is already packed"}, line);
}

int unpack(const tCommandLine& line) {
  return changeFiles({"krpre unpack", krpre_unpack, "unpacked", "is not packed"}, line);
}
