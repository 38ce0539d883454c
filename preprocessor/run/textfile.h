#pragma once

#include <cstdint>
#include <string>

#include "lib_base/diskman.h"

/// Collects what is written. With its line ends an output may be longer than any tString.
class tTextFile : public tFile {
 public:
  explicit tTextFile(std::size_t expected) { text_.reserve(expected); }

  std::int64_t size() override { return -1; }
  std::int64_t read(void* /*bytes*/, std::size_t /*count*/) override { return -1; }
  bool seek(std::int64_t /*position*/) override { return false; }
  bool close() override { return true; }
  bool write(std::string_view bytes) override {
    text_ += bytes;
    return true;
  }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};
