#include "ssvp40xpf/ssyaccstack.h"

SSYaccStackElement::SSYaccStackElement() : SSObject(ssCorrelator("SSSE")) {}

SSYaccStackElement::~SSYaccStackElement() = default;

unsigned SSYaccStackElement::refDec(unsigned count) {
  count_ = count_ > count ? count_ - count : 0;
  if (count_ != 0) return count_;
  refFree();
  return 0;
}

SSRef<SSLexLexeme> SSYaccLexemeCache::take() {
  if (empty()) return {};
  SSRef<SSLexLexeme> oldest = std::move(lexemes_[first_++]);
  if (empty()) {
    clear();
  } else if (first_ == kCapacity) {
    lexemes_.erase(lexemes_.begin(), lexemes_.begin() + static_cast<std::ptrdiff_t>(first_));
    first_ = 0;
  }
  return oldest;
}

void SSYaccLexemeCache::clear() {
  lexemes_.clear();
  first_ = 0;
}
