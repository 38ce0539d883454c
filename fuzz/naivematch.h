#pragma once

#include <string>
#include <utility>
#include <vector>

// A second matcher for the patterns of rules. It is written for being obviously right, not for
// speed, and shares nothing with the engine. It knows the tokens listed in naivematch.cpp only.

struct tNaiveMarker;
using tNaiveChain = std::vector<tNaiveMarker>;

struct tNaiveMarker {
  char type = 'w';  // w: word, r: regular, e: extended, l: list, s: restricted, *: wild,
                    // o: the place of a group that opens a group
  std::string word;
  std::vector<std::vector<std::string>> alternatives;
  std::vector<tNaiveChain> groups;

  // The match.
  bool matched = false;
  int first = -1;
  int last = -1;
  std::vector<std::pair<int, int>> records;
};

struct tNaivePattern {
  tNaiveChain chain;
  bool command = false;
  bool abbreviate = false;
};

/// The pattern from a text: words, commas and the like as they are, `r`, `e`, `l`, `s`, `*` in
/// angle brackets for markers, "[" and "]" for groups, blanks between all of them. A restricted
/// marker allows "A" and "B C".
tNaivePattern naivePattern(const std::string& text, bool command, bool abbreviate);

/// Matches at the token `at`; returns the score, 0 for no match. `at` then is the index behind the
/// last token taken.
int naiveMatch(tNaivePattern& pattern, const std::vector<std::string>& tokens, int& at);

/// What the markers took, in the order of the pattern.
std::string naiveCaptures(const tNaiveChain& chain);
