#pragma once

#include <string>
#include <vector>

/// What the arguments of the program ask for.
struct tCommandLine {
  enum eRequest { kPreprocess, kShowHelp, kShowVersion, kWrongUsage };

  eRequest request = kPreprocess;
  /// Says what is wrong with the usage; otherwise empty.
  std::string complaint;

  std::vector<std::string> files;
  /// In the order given; never holds an empty text.
  std::vector<std::string> includeDirectories;
  /// NAME or NAME=VALUE each, not looked into yet.
  std::vector<std::string> defines;
  /// Empty when the outputs go beside their sources.
  std::string outputDirectory;
  bool trace = false;
  bool quiet = false;

  /// Makes this a wrong usage, unless it is one already: the first complaint is the clearest.
  void complain(std::string text);
};

/// Reads the arguments of the program, options (see programOptions) and files in any order.
/// Reorders nothing and prints nothing. To be called once: it leans on the process-wide state of
/// getopt.
tCommandLine readCommandLine(int count, char** arguments);
