#pragma once

#include <benchmark/benchmark.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

/// The Korel files of a program by their bare names. Its source is "main0.prw".
using tWorkload = std::map<std::string, std::string>;

/// A workload of 20,000 lines that the build has made; empty when it is not there.
inline tWorkload readWorkload(const char* name) {
  tWorkload files;
  std::error_code missing;
  const std::filesystem::recursive_directory_iterator folder(
      std::string(KRPRE_WORKLOADS) + "/" + name + "/korel", missing);
  for (const auto& entry : folder) {
    if (!entry.is_regular_file()) continue;
    std::ifstream file(entry.path(), std::ios::binary);
    files[entry.path().filename().string()] = std::string(std::istreambuf_iterator<char>(file), {});
  }
  return files;
}

/// Makes the report show bytes and items (of what kind the benchmark tells) a second.
inline void reportRates(benchmark::State& state, std::size_t bytes, std::int64_t items) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
  state.SetItemsProcessed(state.iterations() * items);
}
