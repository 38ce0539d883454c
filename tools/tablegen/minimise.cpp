// Moore's partition refinement. States are first grouped into classes by their decision; a class is
// split whenever two of its states have, on some code, targets in different classes. It stops after
// a round without a split; as every other round adds a class, there are no more rounds than states.
#include "tools/tablegen/minimise.h"

#include <map>
#include <tuple>
#include <utility>

namespace tablegen {
namespace {

using tClasses = std::vector<int>;  // by state

std::size_t index(int number) {
  return static_cast<std::size_t>(number);
}

std::vector<tDfaMove> movesInto(const tDfaState& state, const tClasses& classes) {
  std::vector<tDfaMove> moves;
  for (const tDfaMove& move : state.moves) {
    appendMove(moves, {move.low, move.high, classes[index(move.to)]});
  }
  return moves;
}

tClasses classesByDecision(const tDfa& dfa, const std::vector<tLexRule>& rules) {
  std::map<std::tuple<std::uint32_t, std::uint32_t, std::uint32_t>, int> numbers;
  tClasses classes;
  for (const tDfaState& state : dfa.states) {
    const tDecision decision =
        state.rule == kNoRule ? tDecision{} : rules[index(state.rule)].decision;
    const auto key = std::make_tuple(decision.token, decision.list, decision.flags);
    classes.push_back(numbers.emplace(key, static_cast<int>(numbers.size())).first->second);
  }
  return classes;
}

std::size_t refine(const tDfa& dfa, tClasses& classes) {
  std::map<std::pair<int, std::vector<tDfaMove>>, int> numbers;
  tClasses refined;
  for (std::size_t state = 0; state < dfa.states.size(); ++state) {
    auto key = std::make_pair(classes[state], movesInto(dfa.states[state], classes));
    refined.push_back(
        numbers.emplace(std::move(key), static_cast<int>(numbers.size())).first->second);
  }
  classes = std::move(refined);
  return numbers.size();
}

}  // namespace

tDfa minimise(const tDfa& dfa, const std::vector<tLexRule>& rules) {
  tClasses classes = classesByDecision(dfa, rules);
  std::size_t count = 0;
  for (std::size_t next = refine(dfa, classes); next != count; next = refine(dfa, classes)) {
    count = next;
  }

  tDfa small;
  small.shadowedBy = dfa.shadowedBy;
  std::vector<int> numbers(count, -1);
  std::vector<std::size_t> members;  // for each new state, a state of `dfa`
  const auto numberOf = [&](int state) {
    int& number = numbers[index(classes[index(state)])];
    if (number < 0) {
      number = static_cast<int>(members.size());
      members.push_back(index(state));
    }
    return number;
  };
  numberOf(0);
  for (std::size_t next = 0; next < members.size(); ++next) {
    const tDfaState& state = dfa.states[members[next]];
    tDfaState made;
    made.rule = state.rule;
    for (const tDfaMove& move : state.moves) {
      appendMove(made.moves, {move.low, move.high, numberOf(move.to)});
    }
    small.states.push_back(std::move(made));
  }
  return small;
}

}  // namespace tablegen
