#include "korelpre/errors/blockstack.h"

namespace precomp {

using enum eSourceError;

namespace {

struct tBlockWordRule {
  eBlock block;        // where the word belongs
  eSourceError error;  // when it stands elsewhere
  bool ends;
};

// In the order of eBlockWord.
constexpr tBlockWordRule kBlockWords[] = {
    {eBlock::kIf, kElseIfWithoutIf, false},           // ELSEIF
    {eBlock::kIf, kElseWithoutIf, false},             // ELSE
    {eBlock::kIf, kEndIfWithoutIf, true},             // ENDIF
    {eBlock::kCase, kEndCaseWithoutCase, false},      // CASE
    {eBlock::kCase, kEndCaseWithoutCase, false},      // OTHERWISE
    {eBlock::kCase, kEndCaseWithoutCase, true},       // ENDCASE
    {eBlock::kWhile, kEndDoWithoutWhile, true},       // ENDDO
    {eBlock::kFor, kNextWithoutFor, true},            // NEXT
    {eBlock::kSequence, kEndWithoutSequence, false},  // RECOVER
    {eBlock::kSequence, kEndWithoutSequence, true},   // END SEQUENCE
    {eBlock::kTry, kEndWithoutTry, false},            // CATCH
    {eBlock::kTry, kEndWithoutTry, true},             // END TRY
    {eBlock::kSequence, kEndWithoutSequence, true},   // END
};

const tBlockWordRule& ruleOf(eBlockWord word) {
  return kBlockWords[static_cast<std::size_t>(word)];
}

}  // namespace

tBlockCmd::tBlockCmd(eBlock block, const tStatementPlace& place, const tBlockCmd* around)
    : block_(block), place_(place) {
  takeOver(around);
  if (block == eBlock::kWhile || block == eBlock::kFor) {
    inLoop_ = true;
    sequenceInLoop_ = false;
  } else if (block == eBlock::kSequence) {
    sequenceInLoop_ = inSequence_ = true;
  }
}

void tBlockCmd::takeOver(const tBlockCmd* around) {
  inLoop_ = around != nullptr && around->inLoop_;
  sequenceInLoop_ = around != nullptr && around->sequenceInLoop_;
  inSequence_ = around != nullptr && around->inSequence_;
}

void tBlockCmd::enterRecover(const tBlockCmd* around) {
  takeOver(around);
}

eSourceError tBlockCmd::checkEnd(eBlockWord word) const {
  const tBlockWordRule& rule = ruleOf(word);
  if (word == eBlockWord::kEnd) return kNone;
  if (rule.block != block_) return rule.error;
  const bool second = word == eBlockWord::kElse || word == eBlockWord::kElseIf;
  return elseSeen_ && second ? rule.error : kNone;
}

eSourceError tBlockCmd::checkLeaving(eLeaving word) const {
  if (word == eLeaving::kReturn) return inSequence_ ? kReturnFromSequence : kNone;
  const bool exit = word == eLeaving::kExit;
  if (!inLoop_) return exit ? kExitWithoutLoop : kLoopWithoutLoop;
  if (sequenceInLoop_) return exit ? kExitFromSequence : kLoopFromSequence;
  return kNone;
}

void tPrgStack::push(eBlock block, const tStatementPlace& place) {
  const tBlockCmd* around = open_.empty() ? nullptr : &open_.back();
  open_.emplace_back(block, place, around);
}

eSourceError tPrgStack::checkErr(eBlockWord word) {
  if (open_.empty()) return ruleOf(word).error;
  if (const eSourceError error = open_.back().checkEnd(word); error != kNone) return error;
  if (ruleOf(word).ends) {
    open_.pop_back();
  } else if (word == eBlockWord::kElse) {
    open_.back().enterElse();
  } else if (word == eBlockWord::kRecover) {
    open_.back().enterRecover(open_.size() > 1 ? &open_[open_.size() - 2] : nullptr);
  }
  return kNone;
}

eSourceError tPrgStack::checkErr(eLeaving word) const {
  if (!open_.empty()) return open_.back().checkLeaving(word);
  if (word == eLeaving::kReturn) return kNone;
  return word == eLeaving::kExit ? kExitWithoutLoop : kLoopWithoutLoop;
}

}  // namespace precomp
