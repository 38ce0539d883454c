#include "cli/queryline.h"

#include <getopt.h>

#include <charconv>

#include "cli/paint.h"

namespace {

enum eLongOption { kHelp = 256, kJson, kKey, kColour };

const option kLongOptions[] = {
    {"help", no_argument, nullptr, kHelp},
    {"json", no_argument, nullptr, kJson},
    {"key", required_argument, nullptr, kKey},
    {"color", required_argument, nullptr, kColour},
    {nullptr, 0, nullptr, 0},
};

// Takes ":LINE" from the end of the name.
void splitLine(tQueryLine& query, std::string& file) {
  const std::size_t colon = file.rfind(':');
  const char* const end = file.data() + file.size();
  if (colon != std::string::npos) {
    const auto [stop, fault] = std::from_chars(file.data() + colon + 1, end, query.line);
    if (fault == std::errc() && stop == end && query.line > 0) {
      file.resize(colon);
      return;
    }
  }
  query.source.complain(file + ": FILE:LINE is wanted, with a line from 1");
}

void takeOption(tQueryLine& query, int code, bool withLine) {
  switch (code) {
    case kHelp:
      query.source.request = tCommandLine::kShowHelp;
      break;
    case kJson:
      query.json = true;
      break;
    case kKey:
      if (withLine) return query.source.complain("unknown option --key");
      query.key = optarg;
      break;
    case kColour:
      if (!readColour(optarg, query.colour)) {
        query.source.complain(std::string("--color=") + optarg +
                              ": always, never or auto is wanted");
      }
      break;
    case 'I':
      query.source.includeDirectories.emplace_back(optarg);
      break;
    case 'D':
      query.source.addDefine("-D", optarg);
      break;
    default:
      query.source.complain(
          std::string("unknown option or missing value: ") +
          (optopt > 0 && optopt < kHelp ? std::string("-") + static_cast<char>(optopt) : "--..."));
  }
}

}  // namespace

tQueryLine readQueryLine(int count, char** arguments, bool withLine) {
  tQueryLine query;
  readColour("auto", query.colour);
  opterr = 0;
  for (;;) {
    const int code = getopt_long(count, arguments, "-:I:D:", kLongOptions, nullptr);
    if (code == -1) break;
    if (code == 1) {
      query.source.files.emplace_back(optarg);
    } else {
      takeOption(query, code, withLine);
    }
    if (query.source.request == tCommandLine::kShowHelp) return query;
  }
  for (int i = optind; i < count; ++i) query.source.files.emplace_back(arguments[i]);
  if (query.source.files.size() != 1) {
    query.source.complain(withLine ? "one FILE:LINE is wanted" : "one FILE is wanted");
  } else if (withLine) {
    splitLine(query, query.source.files[0]);
  }
  query.source.checkFiles();
  return query;
}
