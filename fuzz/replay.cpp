// Runs the inputs of a folder through a fuzz target, without libFuzzer:
//
//   fuzz_replay TARGET FOLDER
//
// Every target is linked in under its own name; the build gives its entry point that name.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

using tTarget = int(const std::uint8_t* bytes, std::size_t size);

extern "C" {
tTarget convert_fuzz, pch_fuzz, rules_fuzz, run_fuzz, scanner_fuzz, session_fuzz, table_fuzz,
    zip_fuzz;
}

namespace {

constexpr struct {
  const char* name;
  tTarget* run;
} kTargets[] = {
    {"convert", convert_fuzz}, {"pch", pch_fuzz},         {"rules", rules_fuzz}, {"run", run_fuzz},
    {"scanner", scanner_fuzz}, {"session", session_fuzz}, {"table", table_fuzz}, {"zip", zip_fuzz},
};

tTarget* targetNamed(const char* name) {
  for (const auto& target : kTargets) {
    if (std::strcmp(target.name, name) == 0) return target.run;
  }
  return nullptr;
}

std::vector<std::filesystem::path> filesOf(const char* folder) {
  std::vector<std::filesystem::path> files;
  std::error_code none;
  for (const auto& entry : std::filesystem::directory_iterator(folder, none)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

void run(tTarget* target, const std::filesystem::path& file) {
  // A target that finds a fault ends the process, so the name must be out by then.
  std::printf("%s\n", file.filename().c_str());
  std::fflush(stdout);
  std::ifstream stream(file, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  // The copy ends where the input does, so that a sanitizer sees a read beyond it.
  const std::vector<std::uint8_t> input(bytes.begin(), bytes.end());
  target(input.data(), input.size());
}

}  // namespace

int main(int argc, char** argv) {
  tTarget* const target = argc == 3 ? targetNamed(argv[1]) : nullptr;
  if (target == nullptr) {
    std::fprintf(stderr, "usage: fuzz_replay TARGET FOLDER\n");
    return 2;
  }
  const std::vector<std::filesystem::path> files = filesOf(argv[2]);
  for (const std::filesystem::path& file : files) run(target, file);
  if (files.empty()) std::fprintf(stderr, "no inputs in %s\n", argv[2]);
  return files.empty() ? 1 : 0;
}
