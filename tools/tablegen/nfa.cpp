// Each expression becomes a fragment with one entry and one exit: a set is one move, a sequence
// chains its parts, and the other kinds connect or bypass their parts with empty moves.
#include "tools/tablegen/nfa.h"

namespace tablegen {
namespace {

class tBuilder {
 public:
  explicit tBuilder(tNfa& nfa) : nfa_(nfa) {}

  int newState() {
    nfa_.states.emplace_back();
    return static_cast<int>(nfa_.states.size()) - 1;
  }
  void addSilent(int from, int to) { state(from).silent.push_back(to); }
  tNfaState& state(int index) { return nfa_.states[static_cast<std::size_t>(index)]; }

  /// Adds the fragment of `expr` after state `from` and returns its exit.
  int add(const tCharExpr& expr, int from);

 private:
  tNfa& nfa_;
};

int tBuilder::add(const tCharExpr& expr, int from) {
  int exit = from;
  switch (expr.kind) {
    case tCharExpr::kSet:
      exit = newState();
      for (const tCharRange& range : expr.ranges) {
        state(from).moves.push_back({range.low, range.high, exit});
      }
      break;
    case tCharExpr::kSequence:
      for (const tCharExpr& part : expr.parts) exit = add(part, exit);
      break;
    case tCharExpr::kChoice:
      exit = newState();
      for (const tCharExpr& part : expr.parts) addSilent(add(part, from), exit);
      break;
    case tCharExpr::kOptional:
      exit = newState();
      addSilent(from, exit);
      addSilent(add(expr.parts.front(), from), exit);
      break;
    case tCharExpr::kMany: {
      // Starts with a separate state, so that repeating cannot re-enter what leads here.
      const int entry = newState();
      addSilent(from, entry);
      exit = add(expr.parts.front(), entry);
      addSilent(exit, entry);
      break;
    }
  }
  return exit;
}

}  // namespace

tNfa buildNfa(const std::vector<tLexRule>& rules) {
  tNfa nfa;
  tBuilder builder(nfa);
  const int start = builder.newState();
  for (std::size_t rule = 0; rule < rules.size(); ++rule) {
    const int entry = builder.newState();
    builder.addSilent(start, entry);
    const int exit = builder.add(rules[rule].expr, entry);
    builder.state(exit).rule = static_cast<int>(rule);
  }
  return nfa;
}

}  // namespace tablegen
