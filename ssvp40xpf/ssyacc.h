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
/// References: what nextLexeme(), stackElement(), shift() and reduce() return carries one
/// reference, which the parser takes over. A reduce() that returns an element it did not make (one
/// of the right side, say) calls its refInc() first. What elementFromProduction(),
/// elementFromStack(), lookahead() and lastElement() return is borrowed.
class SSYacc : public SSObject, public SSExceptionPresent {
 public:
  using tReduceHandler = std::function<SSYaccStackElement*(SSYacc&, unsigned size)>;

  /// A parser without lexer and table; the table must be given before parse().
  SSYacc();
  /// Lexer and table must outlive the parser.
  SSYacc(SSLex& lex, const SSYaccTable& table);
  /// These read the table from a file and own it; the second has no lexer.
  SSYacc(SSLex& lex, const char* table);
  explicit SSYacc(const char* table);

  void setLex(SSLex& lex) { lex_ = &lex; }
  void setTable(const SSYaccTable& table);

  /// Back to the start: releases the lookahead, the cache and the whole stack, clears the flags and
  /// counts and begins with one element for state 0. A parser that was never reset does so when
  /// parse() is first called. To parse again the owner resets the input of the lexer, then this.
  void reset();

  /// Runs to acceptance or failure. Returns 0 when the input was accepted without a syntax error
  /// (or what _accept() returns), else 1. Errors of the lexer pass through.
  int parse();

  /// The element of the right-side symbol `index`, from 0 at the left; for use in reduce(). Outside
  /// the right side: SSErrorProductionIndex, null with exceptions disabled.
  SSYaccStackElement* elementFromProduction(long index);
  /// The element `depth` below the top (0 is the top). Beyond the bottom: SSErrorStackIndex, null
  /// with exceptions disabled.
  SSYaccStackElement* elementFromStack(unsigned depth);
  /// A new array, for the caller to `delete[]`, of the `count` tokens that have an action in a
  /// state. No such state: SSErrorState, null with exceptions disabled.
  unsigned* validLookaheads(unsigned state, unsigned& count);

  /// Pushes an element, taking over its reference; its state becomes the current one.
  bool pushStackElement(SSYaccStackElement* element);
  /// Pops and releases the top element; the state of the next one becomes the current one. Without
  /// a next one: SSErrorStackNoTop, and the current state stays.
  bool popStackElement();

  /// Gives a lexeme back: it is read again, in order, before the lexer is asked for more.
  void giveBack(SSLexLexeme& lexeme) { cache_.put(lexeme); }
  /// Ends parse() with 1 after the current step.
  void setAbort(bool abort = true) { abort_ = abort; }
  bool aborted() const { return abort_; }
  /// Whether a syntax error was met since the last reset.
  bool errorMet() const { return error_; }
  unsigned shiftedSinceError() const { return shiftedSinceError_; }
  unsigned currentState() const { return state_; }
  SSLexLexeme* lookahead() const { return lookahead_.get(); }
  /// The element of the last shift or reduction; after an acceptance the result of the parse.
  SSYaccStackElement* lastElement() const { return last_.get(); }
  SSLex* lex() const { return lex_; }
  const SSYaccTable* table() const { return table_; }

  /// Sets what the base reduce() calls for a production; it replaces an earlier handler.
  void setReduceHandler(unsigned production, tReduceHandler handler);

  /// Called at the end of reset().
  virtual void init() {}
  /// Called on acceptance; gives the result of parse().
  virtual int _accept() { return error_ ? 1 : 0; }
  /// The next lexeme, or null at the end of the input. The base asks the lexer (SSErrorLexMissing
  /// without one).
  virtual SSLexLexeme* nextLexeme();
  /// A fresh element of the class that the parser works with.
  virtual SSYaccStackElement* stackElement();
  /// The element for a lookahead that is shifted; null ends the parse.
  virtual SSYaccStackElement* shift(SSLexLexeme& lookahead);
  /// Sees each lexeme that comes from the cache, before its action is looked up.
  virtual void larLookahead(SSLexLexeme& lexeme);
  /// A syntax error: `lookahead` has no action in `state`, and the stack has just been emptied. Not
  /// 0 ends the parse; 0 continues it with the action that is current then. The base runs
  /// errorToken().
  virtual int error(unsigned state, SSLexLexeme& lookahead);
  /// The element for the left side of a production of `size` symbols; null ends the parse. The base
  /// calls the production's handler (SSErrorReduceMissing without one).
  virtual SSYaccStackElement* reduce(unsigned production, unsigned size);
  /// A hook for a lookahead that no lookahead automaton resolves; tables with such automata are not
  /// loaded.
  virtual int larError(unsigned state, SSLexLexeme& first, SSLexLexeme& last);
  /// Called first at every syntax error.
  virtual void ClearprintCmdList() {}
  virtual ~SSYacc();

 protected:
  /// Reads the next lookahead and looks up its action. False on failure.
  bool readLookahead();
  /// Looks up the action of the lookahead in the current state.
  void lookUpAction() { action_ = table_->action(state_, lookahead_->symbol()); }
  /// The current action word (sstable::eYaccAction); 0 is a syntax error.
  std::uint32_t currentAction() const { return action_; }

  /// Recovery by the error token. 0 when the parse can go on.
  int errorToken();
  /// Recovery by one of `count` tokens. 0 when the parse can go on.
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

  // The state of the parse.
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

  // Reductions since the last shift during which the stack did not get lower than lowest_.
  std::size_t lowest_ = 0;
  std::size_t reductions_ = 0;
};
