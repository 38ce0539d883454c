#pragma once

#include <cstddef>
#include <vector>

#include "ssvp40xpf/sslexlexeme.h"
#include "ssvp40xpf/sssto.h"

/// An element of the parser's stack: a state, the lexeme that was shifted with it (or none), and
/// in derived classes the semantic value. Reference-counted, starting at 1; comes from the pool.
class SSYaccStackElement : public SSObject, public SSRefCount {
 public:
  SSYaccStackElement();
  SSYaccStackElement(const SSYaccStackElement&) = delete;
  SSYaccStackElement& operator=(const SSYaccStackElement&) = delete;

  virtual void refInc() { ++count_; }
  /// Destroys the element whoever holds it.
  virtual void refFree() { delete this; }
  /// Drops `count` references, and the element with the last one. Returns how many are left.
  virtual unsigned refDec(unsigned count = 1);
  /// Called when a syntax error takes the element off the stack, before any reference is dropped.
  virtual void deleteInstr() {}
  virtual ~SSYaccStackElement();

  unsigned state() const { return state_; }
  void setState(unsigned state) { state_ = state; }
  /// Borrowed; null when there is none.
  SSLexLexeme* lexeme() const { return lexeme_.get(); }
  /// Adds a reference of its own; null removes the lexeme.
  void setLexeme(SSLexLexeme* lexeme) { lexeme_ = SSRef<SSLexLexeme>::share(lexeme); }

  static void* operator new(std::size_t size) { return ssPoolAllocate(size); }
  static void operator delete(void* storage, std::size_t size) { ssPoolRelease(storage, size); }

 private:
  unsigned state_ = 0;
  SSRef<SSLexLexeme> lexeme_;
};

/// Lexemes given back to the parser, to be read again in the order in which they were given.
class SSYaccLexemeCache {
 public:
  static constexpr std::size_t kCapacity = 32;

  SSYaccLexemeCache() { lexemes_.reserve(kCapacity); }

  bool empty() const { return first_ == lexemes_.size(); }
  std::size_t count() const { return lexemes_.size() - first_; }
  /// Adds a reference of its own.
  void put(SSLexLexeme& lexeme) { lexemes_.push_back(SSRef<SSLexLexeme>::share(&lexeme)); }
  /// The oldest lexeme; an empty reference when there is none.
  SSRef<SSLexLexeme> take();
  void clear();

 private:
  std::vector<SSRef<SSLexLexeme>> lexemes_;
  std::size_t first_ = 0;
};
