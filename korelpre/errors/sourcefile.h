#pragma once

#include <exception>
#include <utility>
#include <vector>

#include "korelpre/errors/diagnostic.h"
#include "korelpre/errors/errortexts.h"

namespace precomp {

class tSourceFile;
class tSpcString;

/// Where a statement stands. The file must outlive it.
struct tStatementPlace {
  tSourceFile* file = nullptr;
  int line = 0;      // of that file, from 1
  int mainLine = 0;  // the line of the main file that led there
  int column = 0;    // from 1; 0 for that of the first character of the line that is no blank
};

/// What checks and rules need of the file that a statement comes from.
class tSourceFile {
 public:
  virtual ~tSourceFile() = default;

  /// Raises `error` at a place of any file of the program. `extra` (may be null) completes the text
  /// of some errors, and `notes` are told with it.
  [[noreturn]] void raise(eSourceError error, const tStatementPlace& place, const char* extra,
                          std::vector<tNote> notes = {}) {
    throwError(error, place, extra, std::move(notes));
    std::terminate();
  }
  /// The place of a statement on a line of this file, from 1.
  virtual tStatementPlace placeOf(int line) = 0;
  /// The note with the place of a statement of this file.
  virtual tNote noteAt(const tStatementPlace& place, tNote note) const = 0;
  /// The column, from 1, of a token in this file's text; 0 when the token is not taken from it.
  virtual int columnOf(const tSpcString& token) const = 0;
  /// Whether the main source is written in the extended language.
  virtual bool isExtendedSource() const = 0;

 protected:
  /// What raise() does. Never returns; the compiler is not told that of a virtual operation.
  virtual void throwError(eSourceError error, const tStatementPlace& place, const char* extra,
                          std::vector<tNote> notes) = 0;
};

}  // namespace precomp
