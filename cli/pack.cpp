#include "cli/pack.h"

#include <getopt.h>

#include <cstdio>
#include <string>
#include <vector>

#include "cli/exitstatus.h"
#include "include/krpre.h"

namespace {

const char kHelp[] =
    "Usage: krpre pack [-o FILE] FILE...\n"
    "  or:  krpre unpack [-o FILE] FILE...\n"
    "Pack sources and headers, or unpack them again. The preprocessor reads a packed\n"
    "file as its text. Each FILE is replaced by the new one; one that is as it should\n"
    "be already stays as it is.\n"
    "\n"
    "  -o, --output=FILE  write the new file there and leave the old one; one FILE only\n"
    "      --help         print this text and exit\n";

struct tWork {
  const char* name;
  int (*change)(const char* in, const char* out);
  const char* done;
  const char* needless;
};

const tWork kPack = {"pack", krpre_pack, "packed", "is packed already"};
const tWork kUnpack = {"unpack", krpre_unpack, "unpacked", "is not packed"};

const char* const kFailures[] = {
    "cannot be read",                                 // KRPRE_UNREADABLE
    "is larger than 16 MiB",                          // KRPRE_TOO_LARGE
    "is damaged, or only begins like a packed file",  // KRPRE_DAMAGED
    "cannot be written",                              // KRPRE_NOT_WRITTEN
};

struct tLine {
  const char* output = nullptr;
  std::vector<const char*> files;
  bool help = false;
  std::string complaint;
};

tLine readLine(int count, char** arguments) {
  const option kLongOptions[] = {{"output", required_argument, nullptr, 'o'},
                                 {"help", no_argument, nullptr, 'h'},
                                 {nullptr, 0, nullptr, 0}};
  tLine line;
  opterr = 0;
  for (int code; (code = getopt_long(count, arguments, ":o:", kLongOptions, nullptr)) != -1;) {
    if (code == 'o' && line.output != nullptr) line.complaint = "-o: given twice";
    if (code == 'o') line.output = optarg;
    if (code == 'h') line.help = true;
    if (code == ':') line.complaint = "-o needs a value";
    if (code == '?') line.complaint = std::string("unknown option ") + arguments[optind - 1];
  }
  line.files.assign(arguments + optind, arguments + count);
  if (!line.complaint.empty()) return line;
  if (line.files.empty()) line.complaint = "no file";
  if (line.output != nullptr && *line.output == '\0') line.complaint = "-o: the name is empty";
  if (line.output != nullptr && line.files.size() > 1) line.complaint = "-o takes one file only";
  return line;
}

bool change(const tWork& work, const char* in, const char* out) {
  const int code = work.change(in, out);
  if (code == KRPRE_PACKED || code == KRPRE_UNCHANGED) {
    std::printf("%s %s\n", in, code == KRPRE_PACKED ? work.done : work.needless);
    return true;
  }
  const char* name = code == KRPRE_NOT_WRITTEN && out != nullptr ? out : in;
  std::fprintf(stderr, "krpre: %s %s\n", name, kFailures[code - KRPRE_UNREADABLE]);
  return false;
}

int run(const tWork& work, int count, char** arguments) {
  const tLine line = readLine(count, arguments);
  if (line.help) return std::fputs(kHelp, stdout) < 0 ? kSomeFailed : kAllDone;
  if (!line.complaint.empty()) {
    std::fprintf(stderr, "krpre %s: %s\nTry 'krpre %s --help'.\n", work.name,
                 line.complaint.c_str(), work.name);
    return kWrongUsage;
  }
  int result = kAllDone;
  for (const char* file : line.files) {
    if (!change(work, file, line.output)) result = kSomeFailed;
  }
  return result;
}

}  // namespace

int packCommand(int count, char** arguments) {
  return run(kPack, count, arguments);
}

int unpackCommand(int count, char** arguments) {
  return run(kUnpack, count, arguments);
}
