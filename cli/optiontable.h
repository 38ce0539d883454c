#pragma once

#include <span>
#include <string>

#include "cli/commandline.h"

/// An option as it was given.
struct tGivenOption {
  std::string spelling;  // "-o" or "--output"
  const char* value;     // null unless the option takes one
};

/// One option of the program. What getopt is told, what `--help` prints and whatever else lists
/// the options comes from one table of these.
struct tOption {
  /// The short form without its dash, empty when there is none. Longer than one letter in the
  /// families that compilers have ("MD"); all options with such a first letter must be.
  const char* letters;
  /// The long form without its dashes, or null.
  const char* name;
  /// How `--help` calls the value, or null when the option takes none.
  const char* value;
  /// What it does; "\n" where a further line of `--help` begins.
  const char* help;
  void (*set)(tCommandLine& line, const tGivenOption& given);
};

/// Every option in the order of `--help`.
std::span<const tOption> programOptions();

/// The option whose short form is `letters`; null when there is none.
const tOption* optionOfLetters(const std::string& letters);
