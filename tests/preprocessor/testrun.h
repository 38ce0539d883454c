#pragma once

#include <string>
#include <vector>

#include "lib_base/output.h"
#include "preprocessor/run/preprocessor.h"
#include "tests/support/memorydisk.h"

/// Collects what is printed while it lives.
class tPrinted : public tOutputSink {
 public:
  void write(std::string_view text) override { text_ += text; }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
  tOutputScope scope_{*this};
};

/// Files in memory, an empty standard header among them.
class tSources : public tDiskManMemory {
 public:
  tSources() { put("std.ch", ""); }
  /// How many files there are besides the header.
  std::size_t count() const { return fileCount() - 1; }
};

/// What one run over files in memory came to.
struct tRun {
  int result;
  std::string printed;
};

inline tRun runOver(tDiskMan& disk, std::vector<std::string> arguments, tRunHost& host) {
  std::vector<char*> vector = {nullptr};
  for (std::string& argument : arguments) vector.push_back(argument.data());
  tPrinted printed;
  const int result = runPreprocessor(disk, static_cast<int>(vector.size()), vector.data(), host);
  return {result, printed.text()};
}
inline tRun runOver(tDiskMan& disk, std::vector<std::string> arguments) {
  tRunHost nobody;
  return runOver(disk, std::move(arguments), nobody);
}

/// The message of a source that was preprocessed, and of one with an error.
inline std::string ok(const std::string& name) {
  return "KOREL Preprocessor: Precompilation of file " + name + " ok.\n";
}
inline std::string failed(const std::string& name, int code) {
  return "KOREL Preprocessor. Precompilation of file " + name + " with error. Exitecode equal to " +
         std::to_string(code) + "\n";
}

/// The bytes of a file, or "(none)".
inline std::string fileText(const tDiskManMemory& disk, std::string_view name) {
  const std::string* bytes = disk.bytes(name);
  return bytes == nullptr ? "(none)" : *bytes;
}
