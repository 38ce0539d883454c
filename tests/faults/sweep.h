#pragma once

#include <functional>
#include <map>
#include <string>

/// What came of one run of an entry.
struct tCame {
  int status = 0;    // 0: reported as done
  std::string told;  // messages, wherever they went
  std::string text;  // what it returned
  std::map<std::string, std::string> files;
  std::string broken;  // a promise that was not kept, whatever the status
};

/// An operation that a host or a user asks for, in a directory of its own.
struct tEntry {
  const char* name;
  /// Carries it out. What it says by messages need not be stored: both standard outputs are read.
  std::function<void(tCame&)> run;
  /// What it answers when nothing is wrong.
  int status = 0;
  /// A process of its own for every run.
  bool isProgram = false;
};

/// Fails each memory allocation, operation on files and step of the virtual machine of the entry in
/// turn, once and for ever, and judges what comes of it:
///
/// - done is only what gives the same files, texts and messages as without a failure;
/// - a failure is told, and every file is then absent or whole;
/// - neither memory nor descriptors are lost, and the next run is right.
///
/// `inputs` are the files to begin with; `older` stand where outputs go. Prints how much was tried.
/// Returns what was found, one line each; empty when all is well. The variable KRPRE_FAULTS says
/// how many failures of each kind are tried, evenly spread, "all" being all of them.
std::string sweep(const tEntry& entry, const std::map<std::string, std::string>& inputs,
                  const std::map<std::string, std::string>& older);
