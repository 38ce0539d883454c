#include "cli/pack.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

#include "cli/exitstatus.h"
#include "cli/printer.h"
#include "cli/sourcequote.h"
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

bool changeFile(const tWork& work, const std::string& in, const std::string& chosen) {
  const bool toOutput = namesStandardOutput(chosen);
  const std::string out = toOutput ? kStandardOutput : chosen;
  const int code = work.change(in.c_str(), out.empty() ? nullptr : out.c_str());
  const int error = errno;
  if (code == KRPRE_PACKED || code == KRPRE_UNCHANGED) {
    std::fprintf(toOutput ? stderr : stdout, "%s %s\n", printable(in).c_str(),
                 code == KRPRE_PACKED ? work.done : work.needless);
    return true;
  }
  std::string complaint = code == KRPRE_NOT_WRITTEN && !out.empty() ? out : in;
  complaint.append(" ").append(kFailures[code - KRPRE_UNREADABLE]);
  const bool known = code == KRPRE_UNREADABLE || code == KRPRE_NOT_WRITTEN;
  if (known && error != 0) complaint.append(": ").append(std::strerror(error));
  complainAbout(complaint);
  return false;
}

int changeFiles(const tWork& work, const tCommandLine& line) {
  const bool named = !line.output.empty();
  if (named && line.files.size() > 1) {
    return refuseUsage("-o requires a single input file", work.command);
  }
  int result = kAllDone;
  for (const std::string& file : line.files) {
    if (!changeFile(work, file, line.output)) result = kSomeFailed;
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
