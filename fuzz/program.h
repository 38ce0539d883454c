#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "fuzz/grammar.h"

/// A main source and the headers that it may include.
struct tProgramTexts {
  static constexpr std::string_view kHeaders[] = {"a.ch", "b.ch", "std.ch"};

  /// Made by the grammar, or cut out of the input: each header stands behind "@@@".
  tProgramTexts(tByteReader& input, bool grammar) {
    std::string_view rest = input.rest();
    main = grammar ? kProgramGrammar.make('P', input) : cutPart(rest);
    for (std::string& header : headers) {
      header = grammar ? kProgramGrammar.make('H', input) : cutPart(rest);
    }
  }

  /// Puts the headers into a file system.
  template <class tDisk>
  void putHeaders(tDisk& disk) const {
    for (std::size_t i = 0; i < std::size(kHeaders); ++i) disk.put(kHeaders[i], headers[i]);
  }

  std::string main;
  std::string headers[std::size(kHeaders)];

 private:
  static std::string cutPart(std::string_view& rest) {
    constexpr std::string_view kSeparator = "@@@";
    const std::string_view part = rest.substr(0, rest.find(kSeparator));
    rest.remove_prefix(std::min(part.size() + kSeparator.size(), rest.size()));
    return std::string(part);
  }
};
