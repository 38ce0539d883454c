#include "cli/commandline.h"

#include <getopt.h>

const char kHelpText[] =
    "Usage: krpre [OPTION]... FILE...\n"
    "  or:  krpre explain [OPTION]... FILE:LINE\n"
    "  or:  krpre rules [OPTION]... FILE\n"
    "  or:  krpre --classic ARGUMENT...\n"
    "Preprocess Korel sources: each FILE becomes a .ppo file.\n"
    "\n"
    "  -o DIR           write the outputs into DIR instead of beside their sources\n"
    "  -I DIR           search DIR for include files; may be repeated\n"
    "  -D NAME[=VALUE]  define NAME before the first line; may be repeated\n"
    "  -T               trace the steps of the run\n"
    "  -q               print no messages unless a file fails\n"
    "      --classic    hand every further argument to the library as it stands;\n"
    "                   must be the first argument\n"
    "      --help       print this text and exit\n"
    "      --version    print the version and exit\n"
    "\n"
    "Include files are searched in the directories of the variable INCLUDE, then in\n"
    "those of -I, then among the headers that come with the program.\n"
    "\n"
    "Exit status: 0 when every file was preprocessed, 1 when one failed, 2 when the\n"
    "usage is wrong.\n";

namespace {

enum eLongOption { kHelp = 256, kVersion, kClassic };

const option kLongOptions[] = {
    {"help", no_argument, nullptr, kHelp},
    {"version", no_argument, nullptr, kVersion},
    {"classic", no_argument, nullptr, kClassic},
    {nullptr, 0, nullptr, 0},
};

void complain(tCommandLine& line, std::string text) {
  if (line.request == tCommandLine::kWrongUsage) return;  // The first complaint is the clearest.
  line.request = tCommandLine::kWrongUsage;
  line.complaint = std::move(text);
}

void takeDirectory(tCommandLine& line, const char* directory) {
  if (*directory == '\0') return complain(line, "-I: the name of the directory is empty");
  line.includeDirectories.emplace_back(directory);
}

void takeOutput(tCommandLine& line, const char* directory) {
  if (*directory == '\0') return complain(line, "-o: the name of the directory is empty");
  if (!line.outputDirectory.empty()) return complain(line, "-o: given twice");
  line.outputDirectory = directory;
}

// What getopt could not make sense of: `optopt` is the letter of a short option and 0 for a long
// one.
std::string describeUnknown(const char* argument) {
  if (optopt > 0 && optopt < kHelp)
    return std::string("unknown option -") + static_cast<char>(optopt);
  return std::string("unknown option ") + argument;
}

void takeOption(tCommandLine& line, int code, const char* argument) {
  switch (code) {
    case 1:
      line.files.emplace_back(optarg);
      break;
    case 'o':
      takeOutput(line, optarg);
      break;
    case 'I':
      takeDirectory(line, optarg);
      break;
    case 'D':
      line.defines.emplace_back(optarg);
      break;
    case 'T':
      line.trace = true;
      break;
    case 'q':
      line.quiet = true;
      break;
    case kClassic:
      complain(line, "--classic must be the first argument");
      break;
    case ':':
      complain(line, std::string("-") + static_cast<char>(optopt) + " needs a value");
      break;
    default:
      complain(line, describeUnknown(argument));
      break;
  }
}

}  // namespace

tCommandLine readCommandLine(int count, char** arguments) {
  tCommandLine line;
  opterr = 0;
  // "-": files are handed out in place among the options; ":": a missing value is told apart.
  for (;;) {
    const char* argument = arguments[optind < count ? optind : 0];
    const int code = getopt_long(count, arguments, "-:o:I:D:Tq", kLongOptions, nullptr);
    if (code == -1) break;
    if (code == kHelp || code == kVersion) {
      line.request = code == kHelp ? tCommandLine::kShowHelp : tCommandLine::kShowVersion;
      return line;
    }
    takeOption(line, code, argument);
  }
  for (int i = optind; i < count; ++i) line.files.emplace_back(arguments[i]);
  if (line.files.empty()) complain(line, "no file to preprocess");
  return line;
}
