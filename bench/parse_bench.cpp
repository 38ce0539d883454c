// The directive parser over directive lines alone, as many as a program of 20,000 lines has: each
// line is scanned, parsed and carried out. In the conditionals half of the lines are skipped.

#include <algorithm>
#include <string>
#include <string_view>

#include "bench/workload.h"
#include "korelpre/korelpre.h"
#include "tests/support/memorydisk.h"

namespace {

/// The directives of a file, with the lines that continue them, but no #include.
std::string directivesOf(std::string_view source) {
  std::string directives;
  bool continues = false;
  for (std::size_t at = 0; at < source.size();) {
    const std::size_t end = std::min(source.find('\n', at), source.size() - 1) + 1;
    const std::string_view line = source.substr(at, end - at);
    at = end;
    if (!continues && (line.front() != '#' || line.starts_with("#include"))) continue;
    directives += line;
    continues = line.ends_with(";\n");
  }
  return directives;
}

void directives(benchmark::State& state, const char* workload, const char* file, bool plainLines) {
  const std::string source = directivesOf(readWorkload(workload)[file]);
  if (source.empty()) return state.SkipWithError("no such workload");
  tDiskManMemory disk;
  disk.put("std.ch", "");
  for (auto _ : state) {
    precomp::KorelPre16 session(disk);
    session.setPlainLines(plainLines);
    tString unused;
    benchmark::DoNotOptimize(session.compileStr("main.prw", source, unused));
  }
  reportRates(state, source.size(), std::count(source.begin(), source.end(), '\n'));
}

BENCHMARK_CAPTURE(directives, rules, "manyrules", "rules.ch", true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(directives, defines, "defines", "limits.ch", true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(directives, conds, "conds", "main0.prw", true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(directives, conds_full, "conds", "main0.prw", false)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
