#include "korelpre/errors/blockstack.h"

namespace precomp {

namespace {

struct tBlockWordRule {
  eBlock block;  // where the word belongs
  int error;     // when it stands elsewhere
  bool ends;
};

// In the order of eBlockWord.
constexpr tBlockWordRule kBlockWords[] = {
    {eBlock::kIf, 2026, false},        // ELSEIF
    {eBlock::kIf, 2025, false},        // ELSE
    {eBlock::kIf, 2027, true},         // ENDIF
    {eBlock::kCase, 2030, false},      // CASE
    {eBlock::kCase, 2030, false},      // OTHERWISE
    {eBlock::kCase, 2030, true},       // ENDCASE
    {eBlock::kWhile, 2028, true},      // ENDDO
    {eBlock::kFor, 2029, true},        // NEXT
    {eBlock::kSequence, 2032, false},  // RECOVER
    {eBlock::kSequence, 2032, true},   // END SEQUENCE
    {eBlock::kTry, 2033, false},       // CATCH
    {eBlock::kTry, 2033, true},        // END TRY
    {eBlock::kSequence, 2032, true},   // END
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

int tBlockCmd::checkEnd(eBlockWord word) const {
  const tBlockWordRule& rule = ruleOf(word);
  if (word == eBlockWord::kEnd) return 0;
  if (rule.block != block_) return rule.error;
  const bool second = word == eBlockWord::kElse || word == eBlockWord::kElseIf;
  return elseSeen_ && second ? rule.error : 0;
}

int tBlockCmd::checkLeaving(eLeaving word) const {
  if (word == eLeaving::kReturn) return inSequence_ ? 2086 : 0;
  const bool exit = word == eLeaving::kExit;
  if (!inLoop_) return exit ? 2011 : 2012;
  if (sequenceInLoop_) return exit ? 2013 : 2014;
  return 0;
}

void tPrgStack::push(eBlock block, const tStatementPlace& place) {
  const tBlockCmd* around = open_.empty() ? nullptr : &open_.back();
  open_.emplace_back(block, place, around);
}

int tPrgStack::checkErr(eBlockWord word) {
  if (open_.empty()) return ruleOf(word).error;
  if (const int error = open_.back().checkEnd(word); error != 0) return error;
  if (ruleOf(word).ends) {
    open_.pop_back();
  } else if (word == eBlockWord::kElse) {
    open_.back().enterElse();
  } else if (word == eBlockWord::kRecover) {
    open_.back().enterRecover(open_.size() > 1 ? &open_[open_.size() - 2] : nullptr);
  }
  return 0;
}

int tPrgStack::checkErr(eLeaving word) const {
  if (!open_.empty()) return open_.back().checkLeaving(word);
  if (word == eLeaving::kReturn) return 0;
  return word == eLeaving::kExit ? 2011 : 2012;
}

}  // namespace precomp
