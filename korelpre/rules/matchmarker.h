#pragma once

#include <new>
#include <string_view>

#include "korelpre/rules/arenalist.h"
#include "korelpre/rules/markerarena.h"
#include "korelpre/rules/markerkinds.h"
#include "korelpre/rules/rulehome.h"
#include "korelpre/text/tknstring.h"
#include "ssvp40xpf/sssto.h"

namespace precomp {

/// What a marker of an optional group had taken when a repetition of the group was complete.
struct tMatchInfo {
  int first;
  int last;
  bool macro;
  bool macroDot;
  std::uint32_t step;  // the matcher's count of steps at that moment

  /// Makes it the marker's current capture.
  void restore(tMatchMarker& marker) const;
};

/// First markers of chains, in the order in which they were added.
using tMarkerList = tArenaList<tMatchMarker*>;

/// What a marker of a result is linked with.
struct tResultLinks {
  tMatchMarker* first = nullptr;  // nearly always the only one
  tMarkerList* more = nullptr;    // null when there are none
  const tResultMarker* driver = nullptr;
};

/// A marker of a rule's pattern, and the base of those of its result. This class itself is the
/// regular marker, `<id>`.
///
/// Markers form chains. A marker owns its successor, and the optional groups that stand behind it
/// in the rule, each of them a chain of its own. During a match a marker holds what it took.
class tMatchMarker {
 public:
  /// Copies the token. It is the literal's text or the marker's name.
  explicit tMatchMarker(const tSpcString& token, eRuleType kind = kMatchMarker);
  virtual ~tMatchMarker();
  tMatchMarker(const tMatchMarker&) = delete;
  tMatchMarker& operator=(const tMatchMarker&) = delete;

  /// Whether it is a marker of a result. Those have no part in a match: what is said of one below
  /// is for markers of patterns.
  bool isResult() const { return result_; }
  /// Whether the marker took part in the match. One whose group was repeated did, although the flag
  /// is cleared at the end of each repetition.
  virtual bool isMatchOk() const { return matched_ || !infos().empty(); }
  /// Whether the captured tokens begin with a lone "&".
  virtual bool isMacro() const { return macro_; }
  /// How often a result clause that follows this marker is written.
  virtual int getRecurLevel() const;
  /// True for a literal word.
  virtual bool isIdentifier() const { return false; }
  virtual bool isList() const { return false; }
  /// Appends the marker's form in a listing to `out`, or writes it to the output when that is null.
  virtual void print(tString* out) const;
  /// Whether this marker could start at the cursor; it ends the capture of the marker before it
  /// there. A capturing marker never does.
  virtual bool checkMatch(tTknString* t);
  /// Tries to take tokens from the cursor of `t`; on success the cursor stands on the last token
  /// taken. `parent` is the marker behind which the group being matched stands, or null.
  virtual bool match(tTknString* t, tMatchMarker* parent);
  /// Appends what this marker took in the repetition `level`, from 0, to the new tokens of `t`.
  /// False on failure.
  virtual bool replace(tTknString* t, int level);
  /// Links a result marker with `marker` when they have one name.
  virtual void link(tRuleHome* rule, tMatchMarker& marker);
  /// Forgets the whole match, along the chain and in its groups.
  virtual void resetAll();
  /// Forgets the current attempt, along the chain and, with `deep` set, in its groups.
  virtual void resetMatch(unsigned char deep);
  /// Saves the marker with its groups, without what follows it in the chain.
  virtual void save(tPCHStream* stream) const;
  /// Makes this new marker what save() wrote; `first` is the byte that tells its kind, which has
  /// been read. False when the stream is damaged. Its texts refer to the stream's bytes.
  virtual bool load(tPCHStream* stream, std::uint8_t first);

  /// Appends `text` to a listing, or writes it to the output when `out` is null.
  static void put(tString* out, std::string_view text);

  void setMatchOk() { matched_ = true; }
  /// Closes a repetition of the group whose first marker this is.
  void setRecMatch(const tTknString& t);
  /// Takes back what the groups of this chain recorded after the matcher's step `step`.
  void forgetSince(std::uint32_t step);
  /// The macro flag; with tokens given, also finds out whether the capture is "&", a name and ".".
  void setIsMacro(tTknString* t);
  void clearIsMacro() { macro_ = macroDot_ = false; }
  bool isMacroWithDot() const { return macroDot_; }

  eRuleType kind() const { return kind_; }
  tMatchMarker* next() const { return next_; }
  /// Takes ownership of `next` and of the chain behind it.
  void setNext(tMatchMarker* next) { next_ = next; }
  const tMarkerList& groups() const { return groups_ != nullptr ? *groups_ : kNoChains; }
  bool hasGroups() const { return groups_ != nullptr; }
  /// Adds a group, or a clause, and takes ownership of the chain. `arena` is that of this marker,
  /// null when it lies in none.
  void addGroup(tMatchMarker* head, tMarkerArena* arena = nullptr);
  const tSpcString& token() const { return token_; }
  tSpcString& token() { return token_; }
  /// The rule that owns the marker.
  tRuleHome* rule() const { return state_.rule; }
  void setRule(tRuleHome* rule) { state_.rule = rule; }
  /// Whether the marker is the first of a group, or of a clause of a result.
  bool isGroupHead() const { return groupHead_; }
  void setGroupHead(bool head) { groupHead_ = head; }
  /// Whether the marker may take no token: the one behind the first of a group may.
  void setMayBeEmpty(bool may) { mayBeEmpty_ = may; }

  // Rules come by the thousand, each with dozens of markers. Those of one rule best lie together.
  static void* operator new(std::size_t size) { return ssPoolAllocate(size); }
  static void* operator new(std::size_t size, tMarkerArena& arena) { return arena.allocate(size); }
  // For constructors that throw.
  static void operator delete(void* storage, std::size_t size) { ssPoolRelease(storage, size); }
  static void operator delete(void* /*storage*/, tMarkerArena& /*arena*/) {}
  static void operator delete(tMatchMarker* marker, std::destroying_delete_t,
                              std::size_t size) noexcept;
  /// Tells that the marker lies in an arena, which keeps its storage when it is deleted.
  void setInArena() { inArena_ = true; }

  /// The tokens taken, as indexes; `first` is -1 when there are none. A restricted marker keeps the
  /// index of the alternative in `last`.
  int first() const { return state_.first; }
  int last() const { return state_.last; }
  void setCapture(int first, int last) {
    state_.first = first;
    state_.last = last;
  }
  const tArenaList<tMatchInfo>& infos() const {
    return state_.infos != nullptr ? *state_.infos : kNoInfos;
  }

  /// Counts the writing of the result clause that begins here. False when it was written `count`
  /// times already in this replacement.
  // Kept on purpose: the counter has 8 bits.
  bool countRepetition(int count) { return repetitions_++ < count; }
  /// Forgets how often clauses were written, along the chain of a result and in its clauses.
  static void resetRepetitions(tMatchMarker* head);

 protected:
  /// For markers of results.
  tMatchMarker(const tSpcString& token, eRuleType kind, const tResultLinks& links);
  const tResultLinks& links() const { return links_; }
  tResultLinks& links() { return links_; }
  /// Makes record `level` the current capture, or none when there is no such record. A marker
  /// without records keeps what it has.
  void replay(int level);
  /// Copies the captured tokens; the first has this marker's spacing.
  bool copyCapture(tTknString* t) const;
  bool takesNothing() const { return first() < 0 || last() < first(); }
  /// Prints as prefix, name and suffix.
  void printForm(tString* out, const char* prefix, const char* suffix) const;
  /// Destroys the chains of a list of this marker, and the list.
  void destroyList(tMarkerList* list) const noexcept;
  static const tMarkerList kNoChains;

 private:
  friend class tExpressionScan;
  friend struct tMatchInfo;

  struct tMatchState {
    tRuleHome* rule = nullptr;
    int first = -1;
    int last = -1;
    tArenaList<tMatchInfo>* infos = nullptr;  // null while there were none
  };

  static const tArenaList<tMatchInfo> kNoInfos;

  tMatchMarker* next_ = nullptr;
  tMarkerList* groups_ = nullptr;  // null when there are none
  tSpcString token_;
  eRuleType kind_;
  bool groupHead_ = false;
  bool result_ : 1 = false;
  bool mayBeEmpty_ : 1 = false;
  bool inArena_ : 1 = false;

  // The current match.
  bool matched_ = false;
  bool macro_ = false;
  bool macroDot_ = false;
  std::uint8_t repetitions_ = 0;
  // A marker needs one of the two, and the less memory a rule takes the sooner it is there.
  union {
    tMatchState state_;
    tResultLinks links_;
  };
};

}  // namespace precomp
