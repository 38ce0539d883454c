// Runs the inputs of a folder through a fuzz target, without libFuzzer, and then random ones, which
// are the same every time:
//
//   fuzz_replay TARGET FOLDER [COUNT]
//
// Every target is linked in under its own name; the build gives its entry point that name.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

using tTarget = int(const std::uint8_t* bytes, std::size_t size);

// clang-format off
#define TARGETS(USE) \
  USE(commandline) USE(convert) USE(disk) USE(flat) USE(host) USE(match) USE(pch) \
  USE(program) USE(run) USE(scanner) USE(table) USE(zip)
// clang-format on

#define DECLARE(target) extern "C" tTarget target##_fuzz;
TARGETS(DECLARE)

namespace {

constexpr struct {
  const char* name;
  tTarget* run;
} kTargets[] = {
#define ROW(target) {#target, target##_fuzz},
    TARGETS(ROW)
#undef ROW
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

void runRandom(tTarget* target, int count) {
  std::mt19937 random(20240223);
  for (int i = 0; i < count; ++i) {
    std::vector<std::uint8_t> input(random() % 120);
    for (std::uint8_t& byte : input) byte = static_cast<std::uint8_t>(random());
    target(input.data(), input.size());
  }
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
  tTarget* const target = argc == 3 || argc == 4 ? targetNamed(argv[1]) : nullptr;
  if (target == nullptr) {
    std::fprintf(stderr, "usage: fuzz_replay TARGET FOLDER [COUNT]\n");
    return 2;
  }
  const std::vector<std::filesystem::path> files = filesOf(argv[2]);
  for (const std::filesystem::path& file : files) run(target, file);
  if (argc == 4) runRandom(target, std::atoi(argv[3]));
  if (files.empty()) std::fprintf(stderr, "no inputs in %s\n", argv[2]);
  return files.empty() ? 1 : 0;
}
