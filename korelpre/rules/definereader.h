#pragma once

#include "korelpre/rules/directivepieces.h"
#include "korelpre/rules/ruledirective.h"

namespace precomp {

/// Reads #define directives straight from the text, under the conditions of tRuleReader.
class tDefineReader : public tDirectivePieces {
 public:
  /// Reads the directive whose line, number `line`, starts at `start`. The text must end with a
  /// line feed and have "\r\n" for every line end. False when this is no #define or not an ordinary
  /// one. What is read refers to the text and to bytes in `arena`, which can be null.
  bool read(const char* start, const char* end, int line, tMarkerArena* arena);

  // What the last read() that succeeded has read.
  /// The directive, which refers to this reader.
  tRuleDirective directive() const;
  /// With the "(" that follows it when there are parameters.
  const tSpcString& name() const { return name_; }
  bool hasParameters() const { return !parameters_.empty(); }
  const tAutoArray<tSpcString>& parameters() const { return parameters_; }
  const tAutoArray<tSpcString>& value() const { return value_; }

 private:
  bool readName(const char*& p, const char* end, int line);
  bool readParameters(std::size_t& at, int line);
  bool readValue(std::size_t at, tMarkerArena* arena);

  int line_ = 0;
  tSpcString name_;
  tAutoArray<tSpcString> parameters_;
  tAutoArray<tSpcString> value_;
};

}  // namespace precomp
