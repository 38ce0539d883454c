#pragma once

#include <string>

#include "cli/commandline.h"

/// What the arguments of `krpre explain` or `krpre rules` ask for.
struct tQueryLine {
  /// Its one file, include directories and defines.
  tCommandLine source;
  /// 0 when the query is not about one.
  int line = 0;
  std::string key;
  bool json = false;
  bool colour = false;
};

/// Reads the arguments behind the subcommand's name; `withLine`: the file is FILE:LINE. Usage
/// complaints and a wish for help stand in `source.request`. To be called once, as
/// readCommandLine().
tQueryLine readQueryLine(int count, char** arguments, bool withLine);
