// A session over a program of 20,000 lines: reading it, its directives and the walk over its lines,
// without the disk. "full" has every line go through scanner and grammar.

#include <algorithm>
#include <string>

#include "bench/workload.h"
#include "korelpre/korelpre.h"
#include "lib_base/list.h"
#include "tests/support/memorydisk.h"

namespace {

constexpr const char* kMain = "main0.prw";

void session(benchmark::State& state, const char* workload, bool plainLines) {
  const tWorkload files = readWorkload(workload);
  if (files.count(kMain) == 0) return state.SkipWithError("no such workload");
  tDiskManMemory disk;
  std::size_t bytes = 0;
  for (const auto& [name, text] : files) {
    disk.put(name, text);
    bytes += text.size();
  }
  tAutoArray<tString> options;
  options.add(new tString(tString("-F").append(kMain)));
  for (auto _ : state) {
    precomp::KorelPre16 session(disk);
    session.setPlainLines(plainLines);
    session.Init(options, 1);
    tString output;
    tString error;
    session.doIt(output, error);
    if (!error.empty()) return state.SkipWithError(error.c_str());
    benchmark::DoNotOptimize(output.data());
  }
  const std::string& main = files.at(kMain);
  reportRates(state, bytes, std::count(main.begin(), main.end(), '\n'));
}

BENCHMARK_CAPTURE(session, plain, "plain", true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(session, plain_full, "plain", false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(session, defines, "defines", true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(session, defines_full, "defines", false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(session, conds, "conds", true)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(session, conds_full, "conds", false)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
