#pragma once

#include <memory>
#include <new>
#include <string_view>

#include "korelpre/rules/matchmarker.h"
#include "korelpre/rules/rulehome.h"
#include "korelpre/text/tknstring.h"
#include "korelpre/text/words.h"

namespace precomp {

struct tNote;
struct tSourceLine;

/// A rule: a pattern, what replaces it, and the key under which tables keep it.
class tBaseXChg : public tRuleHome {
 public:
  /// Takes ownership of both chains; `firstResult` may be null, the matched text is then replaced
  /// by nothing. `context` (may be null) must outlive the rule. `arena` is where the rule and its
  /// markers lie, which then own nothing outside of it and are never destroyed; null when they lie
  /// in none.
  tBaseXChg(tRuleContext* context, tWordRule wordRule, tMatchMarker* firstMatch,
            tMatchMarker* firstResult, const tString& key, tMarkerArena* arena = nullptr);
  ~tBaseXChg() override;

  static void* operator new(std::size_t size) { return ::operator new(size); }
  /// In front of its markers, in their arena.
  static void* operator new(std::size_t /*size*/, void* place) { return place; }
  // For constructors that throw.
  static void operator delete(void* storage) { ::operator delete(storage); }
  static void operator delete(void* /*storage*/, void* /*place*/) {}
  static void operator delete(tBaseXChg* rule, std::destroying_delete_t) noexcept;
  /// Appends the rule's form in a listing to `out`, or writes it to the output when that is null.
  virtual void print(tString* out) const;
  /// The same for a chain of markers.
  virtual void rprint(tString* out, const tMatchMarker* head) const;
  /// Applies the rule at the token `start` of `t`, or to the whole statement when it is -1. False
  /// when it does not match or fails; `t` is then unchanged. A fatal assertion is printed and is
  /// such a failure.
  virtual bool replace(tRuleContext* context, int start, tTknString* t);
  virtual void save(tPCHStream* stream) const;
  /// Makes this new rule what save() wrote; `first` is the byte that tells its class, which has
  /// been read. False when the stream is damaged. The texts refer to the stream's bytes.
  virtual bool load(tPCHStream* stream, std::uint8_t first);
  /// A rule of the class and contents that save() wrote; null when the stream is damaged.
  static std::unique_ptr<tBaseXChg> restore(tPCHStream* stream, tRuleContext* context);
  /// How well the pattern matches at `start`; 0 when it does not. The cursor stands behind the
  /// match afterwards.
  int matchCount(int start, tTknString* t);
  /// Whether the pattern, at `start`, needs a word that occurs nowhere behind it. Finds out in long
  /// statements only, where trying the pattern would be dear; else false.
  bool lacksWord(int start, tTknString* t) const;
  /// The second half of replace(), for a rule whose last matchCount() with these arguments was
  /// above 0 and left the cursor where it is. Fatal assertions leave it, `t` being unchanged.
  bool replaceMatched(tRuleContext* context, int start, tTknString* t);

  const tString& key() const { return key_; }
  /// How many pairs of a result marker and a match marker have one name.
  int linkCount() const {
    readDirective();
    return linkCount_;
  }
  /// The line entry that will enter the rule into the tables, or null.
  tSourceLine* lineEntry() const { return lineEntry_; }
  void setLineEntry(tSourceLine* entry) { lineEntry_ = entry; }
  /// Where its table may keep it; whoever asks must look whether it is there.
  int place() const { return place_; }
  void setPlace(int place) { place_ = place; }
  tMatchMarker* firstMatch() const {
    readDirective();
    return firstMatch_.get();
  }
  tMatchMarker* firstResult() const {
    readDirective();
    return firstResult_.get();
  }

  /// The file, named as it was opened, and the line, from 1, of the directive that made the rule;
  /// 0 when none did.
  const tString& originFile() const { return originFile_; }
  int originLine() const { return originLine_; }
  void setOrigin(const tString& file, int line) {
    originFile_ = file;
    originLine_ = line;
  }
  /// Keeps the text of a whole file alive, to which the texts of the rule's markers may refer.
  /// `directive` is the part of it that made the rule.
  void keepText(const tString& text, std::string_view directive) {
    text_ = text;
    directive_ = directive;
  }
  /// Tells that the rule, which was made without chains, reads them from its directive when
  /// somebody asks for them.
  void readLater() { unread_ = true; }
  bool isRead() const { return !unread_; }
  /// Prefetches a rule and its markers, of which hardly any is still cached when there are
  /// thousands. Fetching them all at once costs little more than waiting for the first.
  static void fetch(const tBaseXChg* rule) {
    constexpr std::size_t kLine = 64;
    constexpr std::size_t kLines = 34;
    const char* const begin = reinterpret_cast<const char*>(rule);
    for (std::size_t i = 0; i < kLines; ++i) __builtin_prefetch(begin + i * kLine);
  }
  /// The directive that made the rule. Empty when there was none.
  std::string_view directive() const { return directive_; }

 protected:
  /// For rules that build their chains themselves.
  tBaseXChg(tRuleContext* context, tWordRule wordRule, const tString& key, tMarkerArena* arena)
      : tBaseXChg(context, wordRule, nullptr, nullptr, key, arena) {}
  void setChains(std::unique_ptr<tMatchMarker> pattern, std::unique_ptr<tMatchMarker> result);

 private:
  void readDirective() const {
    if (unread_) const_cast<tBaseXChg*>(this)->buildChains();  // the rule stays what it is
  }
  void buildChains();
  void resetMatch();
  bool buildReplacement(int start, tTknString* t);

  tString text_;
  std::string_view directive_;
  std::unique_ptr<tMatchMarker> firstMatch_;
  std::unique_ptr<tMatchMarker> firstResult_;
  const tMatchMarker* neededWord_ = nullptr;  // the last one behind the first marker, if any
  int linkCount_ = 0;
  tString key_;
  bool unread_ = false;     // see readLater()
  bool matchLeft_ = false;  // the markers hold what a match left in them
  bool hasClauses_ = false;
  tSourceLine* lineEntry_ = nullptr;
  tString originFile_;
  int originLine_ = 0;
  int place_ = 0;
};

/// `note` with the place of the directive that made the rule.
tNote noteAt(const tBaseXChg& rule, tNote note);

/// The rule of a #command or #xcommand.
class tCommand : public tBaseXChg {
 public:
  using tBaseXChg::tBaseXChg;
  bool isCmd() const override { return true; }
  void print(tString* out) const override;
};

/// The rule of a #translate, #xtranslate or #define.
class tTranslate : public tBaseXChg {
 public:
  using tBaseXChg::tBaseXChg;
  /// A #define without parameters: `name` is replaced by copies of `value`. The key is the name.
  /// No text may be owned where there is an `arena`.
  tTranslate(tRuleContext* context, const tSpcString& name, const tAutoArray<tSpcString>& value,
             tMarkerArena* arena = nullptr);
  /// A #define with parameters: `name`, of which a "(" at its end is no part, and arguments in
  /// parentheses are replaced by copies of `value`, in which the parameters' names stand for the
  /// arguments. The key is the name without the "(".
  tTranslate(tRuleContext* context, const tSpcString& name,
             const tAutoArray<tSpcString>& parameters, const tAutoArray<tSpcString>& value,
             tMarkerArena* arena = nullptr);
  void print(tString* out) const override;
};

}  // namespace precomp
