#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "ssvp40xpf/sslex.h"
#include "ssvp40xpf/sslexlexeme.h"
#include "ssvp40xpf/sssto.h"
#include "ssvp40xpf/ssyaccstack.h"
#include "ssvp40xpf/ssyacctable.h"

/// A table-driven LALR(1) parser. A derived class builds its result in reduce().
///
/// References: nextLexeme(), stackElement(), shift() and reduce() return an object with a reference
/// that the parser adopts. A reduce() that returns an existing element (e.g. one of the right side)
/// calls its refInc() first. elementFromProduction(), elementFromStack(), lookahead() and
/// lastElement() return borrowed objects.
class SSYacc : public SSObject, public SSExceptionPresent {
 public:
  using tReduceHandler = std::function<SSYaccStackElement*(SSYacc&, unsigned size)>;

  /// A parser without a lexer and table; the table must be set before parse().
  SSYacc();
  /// The lexer and the table must outlive the parser.
  SSYacc(SSLex& lex, const SSYaccTable& table);
  /// These load the table from a file and own it; the second has no lexer.
  SSYacc(SSLex& lex, const char* table);
  explicit SSYacc(const char* table);

  void setLex(SSLex& lex) { lex_ = &lex; }
  void setTable(const SSYaccTable& table);

  /// Returns to the initial state: releases the lookahead, the cache and the whole stack, clears
  /// the flags and counts and pushes one element for state 0. The first parse() of a parser that
  /// was never reset does this itself. To parse again, reset the lexer's input first, then the
  /// parser.
  void reset();

  /// Parses until acceptance or failure. Returns 0 if the input was accepted without a syntax error
  /// (or the result of _accept()), otherwise 1. Errors of the lexer are passed through. After a
  /// pause() the next call goes on.
  int parse();

  /// The element of the right-side symbol with the zero-based `index`; for use in reduce(). An
  /// index out of range raises SSErrorProductionIndex, or returns null with exceptions disabled.
  SSYaccStackElement* elementFromProduction(long index);
  /// The element `depth` below the top (0 is the top). Below the bottom: SSErrorStackIndex, or null
  /// with exceptions disabled.
  SSYaccStackElement* elementFromStack(unsigned depth);
  /// A new array, which the caller must `delete[]`, of the `count` tokens that have an action in a
  /// state. An invalid state raises SSErrorState, or returns null with exceptions disabled.
  unsigned* validLookaheads(unsigned state, unsigned& count);

  /// Whether the parser, as its stack stands, could go on with a token: a state may have an action
  /// for one that fails only after the next reductions.
  bool wouldTake(unsigned token);

  /// Pushes an element, adopting its reference; its state becomes the current one.
  bool pushStackElement(SSYaccStackElement* element);
  /// Pops and releases the top element; the state of the next one becomes the current one. If there
  /// is none, raises SSErrorStackNoTop and keeps the current state.
  bool popStackElement();

  /// Pushes a lexeme back: it is read again, in order, before the lexer is called for more.
  void giveBack(SSLexLexeme& lexeme) { cache_.put(lexeme); }
  /// Ends parse() with 1 after the current step.
  void setAbort(bool abort = true) { abort_ = abort; }
  bool aborted() const { return abort_; }
  /// Ends parse() with kParsePaused after the current step, which is to be a reduction.
  void pause() { paused_ = true; }
  static constexpr int kParsePaused = 2;
  /// Whether there has been a syntax error since the last reset.
  bool errorMet() const { return error_; }
  unsigned shiftedSinceError() const { return shiftedSinceError_; }
  unsigned currentState() const { return state_; }
  SSLexLexeme* lookahead() const { return lookahead_.get(); }
  /// The element of the last shift or reduction; after acceptance, the result of the parse.
  SSYaccStackElement* lastElement() const { return last_.get(); }
  SSLex* lex() const { return lex_; }
  const SSYaccTable* table() const { return table_; }

  /// Sets the handler that the base reduce() calls for a production, replacing any earlier one.
  void setReduceHandler(unsigned production, tReduceHandler handler);

  /// Called at the end of reset().
  virtual void init() {}
  /// Called on acceptance; returns the result of parse().
  virtual int _accept() { return error_ ? 1 : 0; }
  /// The next lexeme, or null at the end of the input. The base calls the lexer (SSErrorLexMissing
  /// without one).
  virtual SSLexLexeme* nextLexeme();
  /// A new element of the class that the parser works with.
  virtual SSYaccStackElement* stackElement();
  /// The element for a shifted lookahead; null ends the parse.
  virtual SSYaccStackElement* shift(SSLexLexeme& lookahead);
  /// Called for each lexeme from the cache, before its action is looked up.
  virtual void larLookahead(SSLexLexeme& lexeme);
  /// Called on a syntax error: `lookahead` has no action in `state`, and the stack has just been
  /// emptied. A non-zero result ends the parse; 0 continues it with the then current action. The
  /// base calls errorToken().
  virtual int error(unsigned state, SSLexLexeme& lookahead);
  /// The element for the left side of a production with `size` symbols; null ends the parse. The
  /// base calls the production's handler (SSErrorReduceMissing without one).
  virtual SSYaccStackElement* reduce(unsigned production, unsigned size);
  /// A hook for a lookahead that no lookahead automaton resolves; tables with such automata are
  /// rejected.
  virtual int larError(unsigned state, SSLexLexeme& first, SSLexLexeme& last);
  /// Called first on every syntax error.
  virtual void ClearprintCmdList() {}
  virtual ~SSYacc();

 protected:
  /// Reads the next lookahead and looks up its action. False on failure.
  bool readLookahead();
  /// Looks up the action of the lookahead in the current state.
  void lookUpAction() { action_ = table_->action(state_, lookahead_->symbol()); }
  /// The current action word (sstable::eYaccAction); 0 is a syntax error.
  std::uint32_t currentAction() const { return action_; }

  /// Recovers with the error token. 0 if the parse can continue.
  int errorToken();
  /// Recovers with one of `count` tokens. 0 if the parse can continue.
  int errorPanic(const unsigned* tokens, unsigned count);

 private:
  enum eStep { kContinue, kAccepted, kFailed };
  static constexpr int kParseFailed = 1;

  static constexpr std::size_t kStackCapacity = 64;
  static constexpr std::size_t kErrorTokens = 64;

  eStep step();
  eStep doShift();
  eStep doReduce();
  eStep doError();
  bool reductionsRunAway();
  unsigned stateOf(const SSRef<SSYaccStackElement>& element) const;

  bool collectErrorTokens(SSSetArray& tokens);
  bool discardUntil(const SSSetArray& tokens, eSSError atEnd);
  bool resumesIn(unsigned state) const;
  bool shiftErrorToken(unsigned entry);
  void resumeIn(unsigned state);

  SSLex* lex_ = nullptr;
  const SSYaccTable* table_ = nullptr;
  std::unique_ptr<SSYaccTable> ownTable_;
  std::vector<std::pair<unsigned, tReduceHandler>> handlers_;  // sorted by production
  SSRef<SSLexLexeme> endOfInput_;

  // Parse state.
  SSLifo<SSRef<SSYaccStackElement>> stack_;
  SSYaccLexemeCache cache_;
  SSRef<SSLexLexeme> lookahead_;
  SSRef<SSYaccStackElement> last_;
  unsigned state_ = 0;
  std::uint32_t action_ = 0;
  unsigned reducing_ = 0;  // size of the production being reduced
  unsigned shiftedSinceError_ = 0;
  bool started_ = false;
  bool endMet_ = false;
  bool error_ = false;
  bool abort_ = false;
  bool paused_ = false;

  // Reductions since the last shift that did not shrink the stack below lowest_.
  std::size_t lowest_ = 0;
  std::size_t reductions_ = 0;
};
