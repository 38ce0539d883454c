#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/diagnostics.h"

/// What is asked for dependency files.
struct tDependencyOptions {
  bool wanted = false;
  /// Empty: beside the output.
  std::string file;
  /// As they stand in the rule, separated by blanks; empty: the output.
  std::string targets;
  /// Empty rules for the headers too.
  bool phony = false;
};

struct tDefine {
  std::string name;
  std::optional<std::string> value;
};

/// What the arguments of the program ask for.
struct tCommandLine {
  enum eRequest { kRun, kShowHelp, kShowVersion };

  eRequest request = kRun;
  /// Says what is wrong with the usage; otherwise empty. A wish for help goes before.
  std::string complaint;

  std::vector<std::string> files;
  /// In the order given; never holds an empty text.
  std::vector<std::string> includeDirectories;
  std::vector<tDefine> defines;
  /// A directory or a file; empty when the outputs go beside their sources.
  std::string output;
  /// How many sources are preprocessed at once; 0: as many as there are cores.
  unsigned jobs = 0;
  tDependencyOptions dependencies;
  /// What the file "-" is called; may be empty.
  std::string standardInputName;
  eDiagnosticForm diagnostics = eDiagnosticForm::kAuto;
  bool alwaysWrite = false;
  bool precompiled = false;
  bool trace = false;
  bool quiet = false;

  bool readsStandardInput() const;

  /// Adds NAME or NAME=VALUE, or complains that it is no define.
  void addDefine(const std::string& spelling, const std::string& definition);
  /// Complains when the library cannot be given one of the files.
  void checkFiles();
  /// Sets the complaint, unless there is one already: the first is the clearest.
  void complain(std::string text);
};

/// Reads the arguments of the program, options (see programOptions) and files in any order.
/// Reorders nothing and prints nothing. To be called once: it leans on the process-wide state of
/// getopt.
tCommandLine readCommandLine(int count, char** arguments);
