#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "korelpre/korelpreobjs.h"
#include "korelpre/text/spcstring.h"
#include "lib_base/list.h"

namespace precomp {

class tRuleContext;

/// A statement: its tokens, a cursor that the matcher moves, and the replacement being built.
class tTknString {
 public:
  /// `origin` is a number of the owner's; the line of the statement, from 1, in a line list.
  explicit tTknString(int origin = 0) : origin_(origin) {}
  /// An empty statement with the other's origin.
  explicit tTknString(const tTknString& other) : origin_(other.origin_) {}
  tTknString& operator=(const tTknString&) = delete;
  virtual ~tTknString() = default;

  /// The cursor when it is below the token count, otherwise -1.
  int curTokenIdx() const { return cursor_ < count() ? cursor_ : -1; }
  /// Stores `index` when it is a token's, otherwise -1.
  void curTokenIdx(int index) { cursor_ = index >= 0 && index < count() ? index : -1; }
  /// Steps the stored cursor, which is not clamped: stepping on from -1 lands on the first token,
  /// stepping back from one past the end on the last.
  int nextTokenIdx() {
    ++cursor_;
    return curTokenIdx();
  }
  int prevTokenIdx() {
    --cursor_;
    return curTokenIdx();
  }
  bool endOfTokens() const { return cursor_ >= count(); }

  int count() const { return tokens_.count(); }
  /// A token that does not exist is answered by an empty one, emptied again at each such answer.
  tSpcString& getToken(int index) {
    return index >= 0 && index < count() ? tokens_[index] : emptyToken();
  }
  /// A negative cursor is a fatal error.
  tSpcString& curToken() { return cursor_ < count() ? tokens_[cursor_] : emptyToken(); }
  tSpcString& nextToken() { return cursor_ + 1 < count() ? tokens_[cursor_ + 1] : emptyToken(); }
  tSpcString& lastNewToken() {
    return newTokens_.empty() ? emptyToken() : newTokens_[newTokens_.count() - 1];
  }

  tAutoArray<tSpcString>& tokens() { return tokens_; }
  const tAutoArray<tSpcString>& tokens() const { return tokens_; }
  tAutoArray<tSpcString>& newTokens() { return newTokens_; }

  int origin() const { return origin_; }
  void setOrigin(int origin) { origin_ = origin; }
  /// The index at which the replacement in progress began; -1 when none is in progress or its
  /// first literal has been written.
  int replacementStart() const { return replacementStart_; }
  void setReplacementStart(int start) { replacementStart_ = start; }

  /// The stored cursor as it is, for whoever has to put it back.
  int rawCursor() const { return cursor_; }
  void setRawCursor(int cursor) { cursor_ = cursor; }

  /// Between these two calls list markers note, in boundaries(), the empty tokens that they put
  /// around the commas between their elements. The tokens belong to the new-token list.
  void startBoundaries() {
    boundaries_.dropElements();
    collecting_ = true;
  }
  void endBoundaries() { collecting_ = false; }
  bool collectsBoundaries() const { return collecting_; }
  tArray<tSpcString>& boundaries() { return boundaries_; }

  /// Appends a token to the new ones and takes ownership. False when there are too many of them:
  /// the replacement has failed.
  bool addNew(tSpcString* token) {
    newTokens_.add(token);
    if (newTokens_.count() <= kMostTokens) return true;
    overrun_ = true;
    return false;
  }

  /// Counts `steps` of the matcher. False when the statement has used up what it may take; then
  /// nothing matches any more.
  bool step(std::uint32_t steps = 1) {
    steps_ += steps;
    if (steps_ <= kMostSteps) return true;
    overrun_ = true;
    steps_ = kMostSteps + 1;
    return false;
  }
  std::uint32_t steps() const { return steps_; }
  /// Takes back all but the first `steps` of a match that has failed.
  void takeBack(std::uint32_t steps) {
    steps_ = steps;
    overrun_ = steps > kMostSteps;
  }
  /// True when a limit ended a match or a replacement.
  bool overrun() const { return overrun_; }
  void startSteps() {
    steps_ = 0;
    overrun_ = false;
    lastPlaces_.clear();
  }

  /// Where the last pattern that did not match gave up: the marker (null when the pattern ended
  /// before the statement) and the index of the token at which it was tried, -1 for the end.
  void noteFailure(const tMatchMarker* marker, int token) {
    failedMarker_ = marker;
    failedToken_ = token;
  }
  /// Where the word of a pattern last occurs in the statement as it is, as it was told; null when
  /// that is not known.
  const int* lastPlaceOf(const tMatchMarker* word) const;
  void noteLastPlace(const tMatchMarker* word, int place);

  const tMatchMarker* failedMarker() const { return failedMarker_; }
  int failedToken() const { return failedToken_; }

  /// Puts the new tokens in the place of the matched stretch, which reaches from `start` to the
  /// token before the cursor (to the end when there is no token before it), or in the place of the
  /// whole statement when `start` is negative; the first new token then takes the spacing of the
  /// statement's first. The new-token list is empty afterwards.
  void doReset(tRuleContext* context, int start);

  /// Appends each token's spacing and text: the tokens as they are, or as they were when
  /// keepOriginal() was called (if it was).
  void appendText(tString& text, bool original = false) const;
  /// Appends the tokens as they are. False, with nothing appended, when `text` would not stay below
  /// `limit` bytes.
  bool appendWithin(std::size_t limit, tString& text) const;
  /// Keeps a copy of the tokens as they are now.
  void keepOriginal();
  /// Statements that continue this one. Owned.
  tAutoArray<tTknString>& continuations() { return continuations_; }
  const tAutoArray<tTknString>& continuations() const { return continuations_; }
  /// The sum of the tokens' sizes and spacings, in bytes.
  std::size_t textSize() const { return sizeOf(tokens_); }

 private:
  static std::size_t sizeOf(const tAutoArray<tSpcString>& tokens);
  static void append(const tAutoArray<tSpcString>& shown, std::size_t size, tString& text);
  tSpcString& emptyToken() {
    emptyToken_.clear();
    return emptyToken_;
  }

  int cursor_ = 0;
  tSpcString emptyToken_;
  int origin_;
  int replacementStart_ = -1;
  tAutoArray<tSpcString> tokens_;
  tAutoArray<tSpcString> newTokens_;

  // The match or replacement in progress.
  std::uint32_t steps_ = 0;
  bool overrun_ = false;
  bool collecting_ = false;
  int failedToken_ = -1;
  const tMatchMarker* failedMarker_ = nullptr;
  tArray<tSpcString> boundaries_;
  std::vector<std::pair<const tMatchMarker*, int>> lastPlaces_;

  tAutoArray<tSpcString> original_;
  tAutoArray<tTknString> continuations_;
};

}  // namespace precomp
