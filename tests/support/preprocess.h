#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "korelpre/korelpre.h"
#include "lib_base/output.h"
#include "tests/support/memorydisk.h"

inline std::string repeated(std::string_view piece, int count) {
  std::string text;
  text.reserve(piece.size() * static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) text += piece;
  return text;
}

/// What came out of a session.
struct tPreprocessed {
  std::string text;     // lines separated by "\n"
  std::string error;    // empty when nothing failed
  std::string printed;  // what the session wrote to its sink
};

using tFiles = std::initializer_list<std::pair<std::string_view, std::string_view>>;

class tStringSink : public tOutputSink {
 public:
  void write(std::string_view written) override { text.append(written); }
  std::string text;
};

/// A processor over files in memory, of which there is one: an empty "std.ch".
class tMemoryProcessor {
 public:
  tMemoryProcessor() { disk_.put("std.ch", ""); }
  precomp::KorelPreYaccClass& operator*() { return processor_; }
  precomp::KorelPreYaccClass* operator->() { return &processor_; }
  /// Compiles a source and walks over its lines; returns the text.
  std::string run(const char* name, std::string_view source) {
    tString text;
    processor_.compileStr(name, source, text);
    int depth = 0;
    processor_.processLines(text, depth);
    return std::string(text.view());
  }

 private:
  tDiskManMemory disk_;
  precomp::KorelPreYaccClass processor_{&disk_};
};

/// Preprocesses the files that the options name.
inline tPreprocessed runSession(precomp::KorelPre16& session,
                                const std::vector<std::string>& options) {
  tAutoArray<tString> list;
  for (const std::string& option : options) list.add(new tString(option));
  tStringSink sink;
  const tOutputScope scope(sink);
  session.Init(list, 1);
  tString output;
  tString error;
  session.doIt(output, error);
  return {std::string(output.view()), std::string(error.view()), sink.text};
}

/// Preprocesses "main.prw" of the given files; "std.ch" is empty unless it is among them.
inline tPreprocessed preprocessFiles(tFiles files, std::vector<std::string> options = {},
                                     bool plainLines = true) {
  tDiskManMemory disk;
  disk.put("std.ch", "");
  for (const auto& [name, text] : files) disk.put(name, text);
  options.emplace_back("-Fmain.prw");
  precomp::KorelPre16 session(disk);
  session.setPlainLines(plainLines);
  return runSession(session, options);
}

inline tPreprocessed preprocess(std::string_view source, std::vector<std::string> options = {}) {
  return preprocessFiles({{"main.prw", source}}, std::move(options));
}
