// A whole run over files in memory. Whatever the source is, the run ends with one of its results. A
// new output takes the place of an older one when it succeeded, else there is none. No temporary
// file stays.
//
// The first byte of the input chooses the name of the source and the options; the source follows.

#include <cstdint>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/bytereader.h"
#include "fuzz/check.h"
#include "tests/preprocessor/testrun.h"

namespace {

constexpr struct {
  const char* source;
  const char* output;
} kNames[] = {
    {"a.prw", "out/a.ppo"},
    {"a.prg", "out/a.ppo"},
    {"a.zorb", "out/a.ppx_"},
    {"a.ch", "out/a.ppo"},
};

constexpr std::string_view kOlder = "x := \"of an earlier run\"\n";

enum eOption : unsigned {
  kTrace = 4,
  kDefine = 8,
  kTwoFiles = 16,
};

class tFiles : public tDiskManMemory {
 public:
  /// Puts a file there that the run must leave alone.
  void give(const std::string& name, std::string_view bytes) {
    put(name, bytes);
    given_.emplace(name, bytes);
  }
  std::size_t givenCount() const { return given_.size(); }
  bool givenAreUntouched() const {
    for (const auto& [name, text] : given_) {
      if (bytes(name) == nullptr || *bytes(name) != text) return false;
    }
    return true;
  }

 private:
  std::map<std::string, std::string> given_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  tByteReader input(bytes, size);
  const unsigned options = input.byte();
  const auto& [name, output] = kNames[options % std::size(kNames)];

  tFiles files;
  files.give("std.ch", "");
  files.give("h.ch", "#define One 1 + Two\n#ifndef Two\n#define Two(a) a\n#endif\nx := One\n");
  files.give(name, input.rest());
  files.put(output, kOlder);
  std::vector<std::string> arguments = {std::string("@F") + name, "@Oout"};
  if ((options & kTwoFiles) != 0) {
    files.give("second.prw", "y := 1\n");
    arguments.emplace_back("@Fsecond.prw");
  }
  if ((options & kTrace) != 0) arguments.emplace_back("-T");
  if ((options & kDefine) != 0) arguments.emplace_back("-DOne=1");

  const int result = runOver(files, arguments).result;
  require(result == 0 || result == 1 || result == 15 || result == -1, "a result of the run");
  require(files.givenAreUntouched(), "sources stay as they are");
  const std::string* const written = files.bytes(output);
  require((written != nullptr) == (result == 0), "an output is there exactly after a success");
  require(written == nullptr || *written != kOlder, "an older output does not stay");
  std::size_t outputs = written != nullptr ? 1 : 0;
  if ((options & kTwoFiles) != 0) {
    require(files.bytes("out/second.ppo") != nullptr, "the second file is processed");
    ++outputs;
  }
  require(files.fileCount() == files.givenCount() + outputs, "no temporary file stays");
  return 0;
}
