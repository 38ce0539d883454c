#pragma once

#include <cstdint>
#include <vector>

#include "korelpre/errors/sourcefile.h"

namespace precomp {

enum class eBlock : std::uint8_t { kIf, kCase, kWhile, kFor, kSequence, kTry, kBody };

/// The words that continue or end a block.
enum class eBlockWord : std::uint8_t {
  kElseIf,
  kElse,
  kEndIf,
  kCase,
  kOtherwise,
  kEndCase,
  kEndDo,
  kNext,
  kRecover,
  kEndSequence,
  kCatch,
  kEndTry,
  kEnd,  // a bare END
};

/// The words that leave blocks.
enum class eLeaving : std::uint8_t { kExit, kLoop, kReturn };

/// An open control structure or function body.
class tBlockCmd {
 public:
  /// `around` is the block around it, or null.
  tBlockCmd(eBlock block, const tStatementPlace& place, const tBlockCmd* around);

  eBlock block() const { return block_; }
  const tStatementPlace& place() const { return place_; }
  bool elseSeen() const { return elseSeen_; }
  /// kNone when `word` may continue or end this block, otherwise the error.
  eSourceError checkEnd(eBlockWord word) const;
  /// kNone when a statement directly in this block may leave it by `word`, otherwise the error.
  eSourceError checkLeaving(eLeaving word) const;

  /// The block goes on behind its ELSE.
  void enterElse() { elseSeen_ = true; }
  /// The block goes on behind its RECOVER, where leaving is free.
  void enterRecover(const tBlockCmd* around);

 private:
  void takeOver(const tBlockCmd* around);

  eBlock block_;
  bool elseSeen_ = false;
  // Of this block and those around it; kept here so that no question walks the stack.
  bool inLoop_ = false;
  bool sequenceInLoop_ = false;  // a SEQUENCE inside the innermost loop, or without a loop
  bool inSequence_ = false;
  tStatementPlace place_;
};

/// The open blocks of a program, outermost first.
class tPrgStack {
 public:
  void push(eBlock block, const tStatementPlace& place);
  void pop() { open_.pop_back(); }
  void clear() { open_.clear(); }
  bool empty() const { return open_.empty(); }
  /// The innermost block; there must be one.
  const tBlockCmd& top() const { return open_.back(); }
  const std::vector<tBlockCmd>& open() const { return open_; }

  /// Lets `word` continue or end the innermost block. Returns kNone, or the error when it does not
  /// fit there; nothing has changed then.
  eSourceError checkErr(eBlockWord word);
  /// kNone when a statement at this point may leave by `word`, otherwise the error.
  eSourceError checkErr(eLeaving word) const;

 private:
  std::vector<tBlockCmd> open_;
};

}  // namespace precomp
