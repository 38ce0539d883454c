// Scanning of directive source: the scanner as the parser calls it, a lexeme a token, and the bare
// automata over the same text, which is the least that any path over the tables costs.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "bench/workload.h"
#include "ssvp40xpf/directivescanner.h"

namespace {

void lexemes(benchmark::State& state, const char* workload) {
  const std::string text = readWorkload(workload)["main0.prw"];
  if (text.empty()) return state.SkipWithError("no such workload");
  std::int64_t tokens = 0;
  for (auto _ : state) {
    SSLexStringConsumer consumer(text.data(), text.size(), SSLexConsumer::charType,
                                 SSLexStringConsumer::kBorrowed);
    KorelPreLexClass scanner(consumer);
    tokens = 0;
    while (SSLexLexeme* lexeme = ++scanner) {
      benchmark::DoNotOptimize(lexeme->token());
      lexeme->refDec();
      ++tokens;
    }
  }
  reportRates(state, text.size(), tokens);
}

/// Tokens in the text by the automata alone, the expression lists followed as the finals say; -1
/// where nothing matches.
std::int64_t countMatches(const std::string& text, const std::vector<SSLexDense>& lists) {
  std::vector<std::uint32_t> open{0};
  std::int64_t tokens = 0;
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at != end) {
    const SSLexMatch match = lists[open.back()].longestMatch(at, end);
    if (match.final == nullptr) return -1;
    const SSLexFinal& final = *match.final;
    if (match.end == at && !final.pushes() && !final.pops() && !final.replaces()) return -1;
    if (final.pops()) open.pop_back();
    if (final.pushes()) open.push_back(final.list);
    if (final.replaces()) open.back() = final.list;
    if (!final.drops()) {
      const std::string_view taken(at, static_cast<std::size_t>(match.end - at));
      at += KorelPreLexClass::tokenLength(final.token, taken);
      ++tokens;
    } else {
      at = match.end;
    }
  }
  return tokens;
}

void automata(benchmark::State& state, const char* workload) {
  const std::string text = readWorkload(workload)["main0.prw"];
  if (text.empty()) return state.SkipWithError("no such workload");
  const SSLexTable& table = KorelPreLexClass::builtinTable();
  std::vector<SSLexDense> lists;
  for (unsigned i = 0; i < table.listCount(); ++i)
    lists.push_back(table.expressionList(i)->dense());
  std::int64_t tokens = 0;
  for (auto _ : state) {
    tokens = countMatches(text, lists);
    benchmark::DoNotOptimize(tokens);
  }
  if (tokens < 0) return state.SkipWithError("a character that starts no token");
  reportRates(state, text.size(), tokens);
}

BENCHMARK_CAPTURE(lexemes, plain, "plain")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(lexemes, defines, "defines")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(lexemes, conds, "conds")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(automata, plain, "plain")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(automata, defines, "defines")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(automata, conds, "conds")->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
