#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cli/commandline.h"

/// The commands of the program; combined, the set of those that have an option.
enum eCommand : unsigned {
  kPreprocess = 1,
  kExplain = 2,
  kRules = 4,
  kPack = 8,
  kUnpack = 16,
  kCheck = 32,
  kCoverage = 64,
  kBundle = 128,
  kReduce = 256,
};

struct tCommand {
  unsigned set;             // one value of eCommand
  const char* name;         // of the subcommand; empty for the program itself
  const char* file;         // what its usage calls a file
  bool oneFile;             // exactly one, otherwise one at least
  bool anyFile;             // files of any kind, otherwise sources
  const char* description;  // for help and manual

  bool isProgram() const { return set == kPreprocess; }
  /// "krpre explain".
  std::string spelling() const;
  /// "krpre explain [OPTION]... FILE:LINE".
  std::string usage() const;
};

/// The program itself first, then its subcommands.
std::span<const tCommand> programCommands();

/// The value of an option. The parser accepts only the listed words, and an empty value only if
/// there is no noun.
struct tValue {
  enum eKind { kText, kFiles, kDirectories, kWords };

  const char* name;   // in usage: "FILE"
  const char* noun;   // in complaints: "file name"; null: it may be empty
  eKind kind;         // how shells complete it
  const char* words;  // of kWords, separated by blanks
  /// It may be left out, and is joined to a long form by "=" otherwise.
  bool optional = false;
};

/// An option as it was given.
struct tGivenOption {
  std::string spelling;  // "-o" or "--output"
  const char* value;     // null unless the option takes one
  int word;              // the index of the value among the words
};

/// One option. Parser, help, manual page, shell completions and the complaints about wrong usage
/// are all made from one table of these.
struct tOption {
  /// The short form without its dash; may be empty. Two letters or a word for families such as
  /// "MD", "MF" or "fsyntax-only" of compilers; then all options with the same first letter have
  /// more.
  const char* letters;
  const char* name;     // the long form without its dashes, or null
  const tValue* value;  // null when the option takes none
  unsigned commands;    // which have it, of eCommand
  const char* group;    // the heading it stands under
  const char* help;     // what it does, without a full stop
  void (*set)(tCommandLine& line, const tGivenOption& given);

  std::string shortForm() const;  // "-o", or empty
  std::string longForm() const;   // "--output", or empty
  std::string valueForm() const;  // behind the last of them, "=FILE" or " FILE", or empty
  bool isWord() const { return std::string_view(letters).size() > 2; }
};

/// All options in the order of help. Two may have the same spelling if they share no command.
std::span<const tOption> programOptions();
/// The options of the commands in `set`.
std::vector<const tOption*> optionsOf(unsigned set);

/// The words of a text, which are separated by single blanks.
std::vector<std::string> wordsOf(std::string_view text);
