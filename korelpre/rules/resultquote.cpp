// Result markers that dress what they write: as a string, or as a code block.
//
// Each first appends an empty token, lets the regular replacement append the captured tokens and
// then knows enough about them to write a quote or a brace into the empty token and to append its
// counterpart.

#include "korelpre/rules/resultmarker.h"
#include "korelpre/text/tokenkinds.h"

namespace precomp {

namespace {

constexpr char kDouble = '"';

// The copied tokens of one capture, from the opening token on.
class tDressing {
 public:
  explicit tDressing(tTknString& t) : t_(t), opening_(t.newTokens().count()) {}

  bool open() { return t_.addNew(new tSpcString); }
  bool nothingCopied() const { return t_.newTokens().count() == opening_ + 1; }
  /// Token `index` of the capture, from 0; the last one is the closing token once there is one.
  tSpcString& copied(int index) { return t_.newTokens()[opening_ + 1 + index]; }
  int count() const { return t_.newTokens().count() - opening_ - 1; }
  bool contains(char c) const {
    for (int i = opening_; i < t_.newTokens().count(); ++i) {
      if (t_.newTokens()[i].view().find(c) != std::string_view::npos) return true;
    }
    return false;
  }
  /// Both texts must last.
  bool enclose(std::string_view before, std::string_view after) {
    opening().setText(tString::borrow(before));
    return t_.addNew(new tSpcString(tString::borrow(after)));
  }
  /// The blanks in front of the capture are not written.
  bool quote() {
    copied(0).setSpacing(tString());
    const std::string_view mark = contains(kDouble) ? "'" : "\"";
    return enclose(mark, mark);
  }
  tSpcString& opening() { return t_.newTokens()[opening_]; }

 private:
  tTknString& t_;
  const int opening_;
};

bool isText(const tSpcString& token, std::string_view text) {
  return token.view() == text;
}

}  // namespace

bool tResultMarkerDumbStr::replace(tTknString* t, int level) {
  tDressing dressing(*t);
  if (!dressing.open() || !copyLinks(t, level)) return false;
  return dressing.nothingCopied() || dressing.quote();
}

bool tResultMarkerRegStr::staysUnquoted(const tSpcString& first) const {
  return firstLinkIsMacro() && isText(first, "&");
}

bool tResultMarkerSmartStr::staysUnquoted(const tSpcString& first) const {
  return firstLinkIsMacro() ||
         (!first.empty() && (first.data()[0] == '(' || first.data()[0] == kDouble));
}

bool tResultMarkerRegStr::replace(tTknString* t, int level) {
  if (!firstLinkMatched()) return true;
  tDressing dressing(*t);
  if (!dressing.open()) return false;
  t->startBoundaries();
  const bool copied = copyLinks(t, level);
  t->endBoundaries();
  if (!copied) return false;
  if (dressing.nothingCopied()) return true;
  if (staysUnquoted(dressing.copied(0))) {
    // A macro variable becomes its bare name.
    if (firstLinkIsMacro() && isText(dressing.copied(0), "&")) {
      if (dressing.count() > 2 && dressing.copied(2).kind() == kKindDot) dressing.copied(2).clear();
      dressing.copied(0).clear();
    }
    return t->addNew(new tSpcString);
  }
  if (!dressing.quote()) return false;
  // Kept on purpose: inside a list the quotes are double ones, whatever those around it are.
  for (int i = 0; i < t->boundaries().count(); ++i) t->boundaries()[i].append(kDouble);
  return true;
}

bool tResultMarkerBlock::replace(tTknString* t, int level) {
  if (!firstLinkMatched()) return true;
  tDressing dressing(*t);
  if (!dressing.open() || !copyLinks(t, level)) return false;
  if (dressing.nothingCopied()) return true;
  tString start = dressing.copied(0);
  if (start.size() == 1 && dressing.count() > 1) start.append(dressing.copied(1));
  if (start.find("{|") != tString::npos) return true;
  const bool lostMacro = firstLinkIsMacro() && dressing.copied(0).find("&") == tString::npos;
  return dressing.enclose(lostMacro ? "{|| &" : "{|| ", "}");
}

}  // namespace precomp
