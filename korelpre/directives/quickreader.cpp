#include "korelpre/directives/quickreader.h"

#include "korelpre/directives/conditional.h"
#include "korelpre/directives/programfile.h"
#include "korelpre/directives/ruleentry.h"
#include "korelpre/text/cursor.h"
#include "lib_base/misc.h"

namespace precomp {

namespace {

// The markers of ten thousand rules take 25 MiB. What comes when that is taken is read again by
// the rules that are used.
constexpr std::size_t kMostMarkers = std::size_t{48} << 20;

bool isSqlWord(std::string_view word) {
  return equalNoCase(word, "beginsql") || equalNoCase(word, "endsql");
}

// Whether nothing but blanks and a line comment follows up to the line feed; `p` moves behind it.
bool endsLine(const char*& p, const char* end) {
  p = skipBlanks(p, end);
  if (!endsCode(p)) return false;
  const char* const feed = lineFeedFrom(p, end);
  if (feed == end) return false;
  p = feed + 1;
  return true;
}

// Reads the name of an #ifdef or #ifndef; `p` moves behind it.
bool readName(const char*& p, const char* end, std::string_view& name) {
  if (!isBlank(*p)) return false;
  const char* const begin = p = skipBlanks(p, end);
  if (!isNameStart(*p)) return false;
  p = behindWord(p);
  name = {begin, static_cast<std::size_t>(p - begin)};
  return (*p == '\r' || isBlank(*p)) && !isSqlWord(name);
}

}  // namespace

bool tQuickReader::take(tProgramFile& file, const char* start, int line) {
  const char* const end = file.text.data() + file.text.size();
  const char* const p = skipBlanks(start, end);
  if (*p != '#') return false;
  const tDirectiveWord word = directiveAt(p, end);
  if (word.directive == eDirective::kDefine) return takeDefine(file, start, line);
  if (makesPattern(word.directive)) return takeRule(file, start, line);
  return isConditional(word.directive) &&
         takeConditional(file, word.directive, p + word.length, line);
}

void tQuickReader::passed(const tDirectivePieces& directive) {
  lineEnd_ = directive.lineEnd();
  lines_ = directive.lines();
}

bool tQuickReader::takeDefine(tProgramFile& file, const char* start, int line) {
  tMarkerArena& markers = file.shared().rules.markers;
  tRuleStorage storage;
  if (markers.size() <= kMostMarkers) {
    storage.arena = &markers;
  } else {
    storage.unread = true;
  }
  const char* const end = file.text.data() + file.text.size();
  if (!defines_.read(start, end, line, storage.arena)) return false;
  passed(defines_);
  carryOutRule(file, defines_.directive(), storage);
  file.currentLine = line;
  return true;
}

// A rule lies in front of its markers.
bool tQuickReader::takeRule(tProgramFile& file, const char* start, int line) {
  tMarkerArena& markers = file.shared().rules.markers;
  const tMarkerArena::tMark mark = markers.mark();
  void* const place = markers.allocate(kLargestRule);
  if (!rules_.read(start, file.text.data() + file.text.size(), &markers)) {
    markers.rewind(mark);
    return false;
  }
  passed(rules_);
  if (markers.size() <= kMostMarkers) {
    carryOutRule(file, rules_.directive(line), {.arena = &markers, .place = place});
  } else {
    carryOutRule(file, rules_.directive(line), {.unread = true});
    rules_.drop();
    markers.rewind(mark);
  }
  file.currentLine = line;
  return true;
}

bool tQuickReader::takeConditional(tProgramFile& file, eDirective directive, const char* p,
                                   int line) {
  const char* const end = file.text.data() + file.text.size();
  std::string_view name;
  const bool named = directive == eDirective::kIfdef || directive == eDirective::kIfndef;
  if ((named && !readName(p, end, name)) || !endsLine(p, end)) return false;
  carryOutConditional(file, directive, name, line);
  lineEnd_ = p;
  lines_ = 1;
  return true;
}

}  // namespace precomp
