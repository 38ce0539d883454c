#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "tests/support/childprocess.h"

/// The message of a source that was preprocessed, and of one with an error.
inline std::string ok(const std::string& file) {
  return "KOREL Preprocessor: Precompilation of file " + file + " ok.\n";
}
inline std::string failed(const std::string& file, int code = 1) {
  return "KOREL Preprocessor. Precompilation of file " + file + " with error. Exitecode equal to " +
         std::to_string(code) + "\n";
}

/// Runs the built program as a child in a directory of its own.
class Program : public testing::Test {
 protected:
  tChildResult run(std::vector<std::string> arguments, const std::string& include = {}) const {
    arguments.insert(arguments.begin(), KRPRE_PROGRAM);
    return runChild(arguments, directory_.path(), include);
  }
  /// Runs a line of the shell, in which krpre is the program.
  tChildResult shell(const std::string& line) const {
    return runChild({"/bin/sh", "-c", "krpre() { '" KRPRE_PROGRAM "' \"$@\"; }; " + line},
                    directory_.path());
  }

  void write(const std::string& name, const std::string& text) const {
    directory_.write(name, text);
  }
  std::filesystem::path path(const std::string& name) const { return directory_.path() / name; }
  bool exists(const std::string& name) const { return std::filesystem::exists(path(name)); }
  std::string bytes(const std::string& name) const { return readBytes(path(name)); }

  /// The output with "\n" at line ends.
  std::string output(const std::string& name) const {
    return std::regex_replace(bytes(name), std::regex("\r\n"), "\n");
  }

  /// The names of what stands in the directory, each followed by a blank, in their order.
  std::string files() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(directory_.path())) {
      names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    std::string list;
    for (const std::string& name : names) list += name + ' ';
    return list;
  }

  tTemporaryDirectory directory_;
};
