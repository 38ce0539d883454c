#pragma once

#include <span>
#include <string>

struct tChapterPart {
  const char* name;  // null behind the last
  const char* text;
};

/// What the manual says of an error or another message.
struct tChapter {
  const char* keys;  // numbers and slugs, separated by blanks
  const char* title;
  const tChapterPart* parts;
};

/// All of them, in the order of the manual; made from its pages at build time.
std::span<const tChapter> chapters();

/// The chapters on `key`, a number such as "C2027" or "2027" or a slug; empty when there are none.
std::string chapterText(const std::string& key);
/// The complaint about a key that has no chapter.
std::string unknownChapter(const std::string& key);
