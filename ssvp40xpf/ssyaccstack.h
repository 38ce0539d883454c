#pragma once

#include <cstddef>
#include <vector>

#include "ssvp40xpf/sslexlexeme.h"
#include "ssvp40xpf/sssto.h"

/// An element of the parser's stack: a state, the lexeme shifted with it (or none) and, in derived
/// classes, a semantic value. Reference-counted, starting at 1; allocated from the pool.
class SSYaccStackElement : public SSObject, public SSRefCount {
 public:
  SSYaccStackElement();
  SSYaccStackElement(const SSYaccStackElement&) = delete;
  SSYaccStackElement& operator=(const SSYaccStackElement&) = delete;

  virtual void refInc() { ++count_; }
  /// Destroys the element regardless of its references.
  virtual void refFree() { delete this; }
  /// Releases `count` references; destroys the element with the last one. Returns how many are
  /// left.
  virtual unsigned refDec(unsigned count = 1);
  /// Called when a syntax error removes the element from the stack, before its reference is
  /// released.
  virtual void deleteInstr() {}
  virtual ~SSYaccStackElement();

  unsigned state() const { return state_; }
  void setState(unsigned state) { state_ = state; }
  /// Borrowed; null if there is none.
  SSLexLexeme* lexeme() const { return lexeme_.get(); }
  /// Acquires a new reference; null removes the lexeme.
  void setLexeme(SSLexLexeme* lexeme) { lexeme_ = SSRef<SSLexLexeme>::share(lexeme); }

  static void* operator new(std::size_t size) { return ssPoolAllocate(size); }
  static void operator delete(void* storage, std::size_t size) { ssPoolRelease(storage, size); }

 private:
  unsigned state_ = 0;
  SSRef<SSLexLexeme> lexeme_;
};

/// Lexemes pushed back to the parser, read again in first-in, first-out order.
class SSYaccLexemeCache {
 public:
  static constexpr std::size_t kCapacity = 32;

  SSYaccLexemeCache() { lexemes_.reserve(kCapacity); }

  bool empty() const { return first_ == lexemes_.size(); }
  std::size_t count() const { return lexemes_.size() - first_; }
  /// Acquires a new reference.
  void put(SSLexLexeme& lexeme) { lexemes_.push_back(SSRef<SSLexLexeme>::share(&lexeme)); }
  /// The oldest lexeme; an empty reference if there is none.
  SSRef<SSLexLexeme> take();
  void clear();

 private:
  std::vector<SSRef<SSLexLexeme>> lexemes_;
  std::size_t first_ = 0;
};
