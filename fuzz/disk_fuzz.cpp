// File systems: a real folder, one in memory, and one that keeps some files in memory and has the
// others in a folder. Whatever is done to their files, all of them answer the same.
//
// Each operation is a byte that chooses it, one that chooses the names, and what it takes.

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include "fuzz/bytereader.h"
#include "fuzz/check.h"
#include "lib_base/diskman.h"
#include "tests/support/memorydisk.h"

namespace {

namespace fs = std::filesystem;

std::string newFolder() {
  const fs::path memory = "/dev/shm";
  std::string path = (fs::exists(memory) ? memory : fs::temp_directory_path()) / "disk-XXXXXX";
  require(mkdtemp(path.data()) != nullptr, "there is a folder");
  return path + "/";
}

/// A file system whose files begin with a path.
struct tPlace {
  tDiskMan& disk;
  std::string path;
  bool seeks;  // what is kept in memory is only written at its end
};

void write(tFile* file, bool seeks, tByteReader& input, std::string& answer) {
  if (file == nullptr) return;
  for (unsigned parts = input.byte() % 4; parts > 0; --parts) {
    if (seeks && input.byte() % 4 == 0) {
      const auto position = static_cast<std::int64_t>(input.byte()) - 4;
      answer += file->seek(position) ? 's' : '-';
    }
    const std::string text(input.byte() * (input.byte() % 8 == 0 ? 300U : 1U), 'x');
    answer += file->write(text + "y") ? 'w' : '-';
  }
  answer += file->close() ? 'c' : '-';
  answer += file->close() ? 'c' : '-';
}

void read(tFile* file, tByteReader& input, std::string& answer) {
  if (file == nullptr) return;
  answer += std::to_string(file->size());
  if (input.byte() % 2 == 0) answer += file->seek(input.byte()) ? 's' : '-';
  std::string piece(input.byte() % 40, '\0');
  for (int i = 0; i < 3; ++i) {
    const std::int64_t got = file->read(piece.data(), piece.size());
    answer += std::to_string(got) + piece;
  }
}

std::string operate(const tPlace& place, tByteReader& input) {
  const unsigned what = input.byte();
  const unsigned names = input.byte();
  const std::string one = place.path + "abcd"[names % 4];
  const std::string other = place.path + "abcd"[names / 4 % 4];
  tDiskMan& disk = place.disk;
  std::string answer = std::to_string(what % 8);
  bool exists = false;
  switch (what % 8) {
    case 0:
      write(disk.create(one.c_str()).get(), place.seeks, input, answer);
      break;
    case 1:
      write(disk.createNew(one.c_str(), exists).get(), place.seeks, input, answer);
      answer += exists ? 'e' : '-';
      break;
    case 2:
      read(disk.open(one.c_str()).get(), input, answer);
      break;
    case 3:
      answer += disk.remove(one.c_str()) ? 'd' : '-';
      break;
    case 4:
      answer += disk.rename(one.c_str(), other.c_str()) ? 'm' : '-';
      break;
    case 5:
      answer += disk.removeLeftover(one.c_str()) ? 'l' : '-';
      break;
    case 6:
      answer += disk.resolve(one.c_str()).empty() ? '-' : 'r';
      break;
    default:
      break;
  }
  return answer + (disk.exists(one.c_str()) ? '1' : '0') + (disk.exists(other.c_str()) ? '1' : '0');
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  static const std::string kFolder = newFolder();
  static const std::string kBelow = newFolder();
  for (const char name : std::string_view("abcd")) {
    fs::remove(kFolder + name);
    fs::remove(kBelow + name);
  }
  tDiskManLocal local;
  tDiskManMemory memory;
  tDiskManOverlay overlay(local);
  const bool keeps = size % 2 == 0;
  for (const char name : std::string_view("abcd")) {
    if (keeps) overlay.keepInMemory(kBelow + name);
  }
  tByteReader input(bytes, size);
  while (!input.rest().empty()) {
    tByteReader again = input;
    tByteReader third = input;
    const std::string expected = operate({memory, "", !keeps}, input);
    requireEqual(operate({local, kFolder, !keeps}, again), expected,
                 "the folder answers as the memory");
    requireEqual(operate({overlay, kBelow, !keeps}, third), expected,
                 "the overlay answers so, too");
  }
  return 0;
}
