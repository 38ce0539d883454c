#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "korelpre/directives/conditionals.h"
#include "korelpre/directives/shared.h"
#include "korelpre/directives/sourcelines.h"
#include "korelpre/errors/sourcefile.h"
#include "lib_base/list.h"
#include "ssvp40xpf/ssexcept.h"

namespace precomp {

class tHeaderImage;
class tProgramFile;

/// An #include that was carried out, or the standard header: the file that was read, or the image
/// that stands for it.
class tInclude {
 public:
  /// `line` is that of the directive, from 1; 0 for the standard header. `includer` is the file
  /// that holds the directive; it must outlive this object.
  tInclude(int line, const tString& name, tProgramFile& includer);
  ~tInclude();
  tInclude(const tInclude&) = delete;
  tInclude& operator=(const tInclude&) = delete;

  /// Makes the file that process(), or whoever does the same, reads and compiles.
  tProgramFile& start();
  /// Reads and compiles the file. False when it was optional and is missing, or is already being
  /// compiled further up; everything else that is wrong is raised.
  bool process();

  int line() const { return line_; }
  /// As written in the directive.
  const tString& name() const { return name_; }
  /// After process().
  tProgramFile& file() { return *file_; }
  /// Null when the file was read.
  const tHeaderImage* image() const { return image_.get(); }
  void setImage(std::shared_ptr<const tHeaderImage> image) { image_ = std::move(image); }

 private:
  int line_;
  tString name_;
  tProgramFile& includer_;
  std::shared_ptr<const tHeaderImage> image_;
  std::unique_ptr<tProgramFile> file_;
};

/// The names of a file.
struct tProgramFileNames {
  tString requested;  // as a directive or the host names it
  tString shown;      // in messages: its name without directories, behind where it was found
  tString opened;     // with its whole path, as found
  tString resolved;   // its path without links
};

/// One file of a program, the main source or one that it includes: its text, its lines, and where
/// it stands in the chain of includes. Raises what is wrong in it.
class tProgramFile final : public tSourceFile {
 public:
  /// A main file. `shared` must outlive it.
  explicit tProgramFile(tSharedState& shared);
  /// A file that the directive on line `line` of `includer` includes; 0 for the standard header.
  tProgramFile(tProgramFile& includer, int line);
  ~tProgramFile() override;
  tProgramFile(const tProgramFile&) = delete;
  tProgramFile& operator=(const tProgramFile&) = delete;
  /// Back to the state after construction.
  void clear();

  tSharedState& shared() const { return shared_; }
  /// This file when it is the main one.
  tProgramFile& mainFile() const { return *main_; }
  bool isMain() const { return main_ == this; }
  /// Null for a main file.
  tProgramFile* includer() const { return includer_; }
  int includedAt() const { return includedAt_; }
  /// Of includes; 0 for the main file.
  int depth() const { return depth_; }
  /// Calls `visit` with this file, its includer and so on, until it answers true. False when it
  /// never does.
  template <class Visit>
  bool anyUpwards(const Visit& visit) const {
    for (const tProgramFile* file = this; file != nullptr; file = file->includer_) {
      if (visit(*file)) return true;
    }
    return false;
  }

  /// Finds the file `name` (see tFileFinder) and reads it. False when it is not there; that it
  /// cannot be read, or a limit that it exceeds, is raised.
  bool read(const tString& name);
  /// Makes what was read the text to be compiled. With `mayBePacked` a packed text is unpacked.
  void takeText(bool mayBePacked);
  /// To be called when the file has been compiled: of one without statements little is kept.
  void releaseText();
  /// Whether the file that was read is being compiled further up; its text was not read then.
  bool inCycle() const { return inCycle_; }

  /// A file is included once into what one file includes, and never into itself.
  bool hasIncluded(const tString& name) const;
  void noteIncluded(const tString& name);
  const std::unordered_set<std::string>& includedNames() const { return includedNames_; }

  // What is raised (raise.cpp). Everything leaves as SSException with the number of the error.
  /// At a line of this file, from 1, and a column, 0 for that of the line's first character that is
  /// no blank. `extra` (may be null) completes the text of some errors, and `notes` are told with
  /// it.
  [[noreturn]] void raise(eSourceError error, int line, const char* extra = nullptr, int column = 0,
                          std::vector<tNote> notes = {});
  using tSourceFile::raise;
  /// The included file `name` is not there.
  [[noreturn]] void raiseMissing(const tString& name);
  /// The file exceeds a limit, or is damaged.
  [[noreturn]] void raiseLimit(const char* limit);
  /// The same for what begins at a line of it.
  [[noreturn]] void raiseLimit(const char* limit, int line);
  /// A file of this name is there, or may be, and cannot be read, for which `error` is the errno
  /// value.
  [[noreturn]] void raiseUnreadable(const tString& name, int error);
  /// What the scanner or the parser threw, which does not know about files, again with its place.
  /// Returns when it has one already. `line` is that which the scanner has reached.
  void raiseAgain(const SSException& failure, int line);
  tStatementPlace placeOf(int line) override { return {this, line, main_->currentLine, 0}; }
  tNote noteAt(const tStatementPlace& place, tNote note) const override;
  int columnOf(const tSpcString& token) const override;
  bool isExtendedSource() const override { return shared_.extendedSource; }
  /// The column, from 1, of the byte at `offset` of the text.
  int columnAt(std::size_t offset) const;
  /// A line of the text, from 1, without its line end; empty when there is none.
  std::string_view lineText(int line) const;

  tProgramFileNames names;
  tString text;
  tSourceCode lines;
  tAutoArray<tInclude> includes;
  tConditionals conditionals;
  int currentLine = 0;      // the directive or statement in work
  bool isIncluded = false;  // rules enter the tables at once

 private:
  void throwError(eSourceError error, const tStatementPlace& place, const char* extra,
                  std::vector<tNote> notes) override;
  bool readFrom(const tString& path);
  bool readByHost(const tString& path);
  bool readByPath(const tString& path);
  void enter(std::int64_t bytes);
  void unpackText();
  void diagnose(int code, const char* slug, const tString& message, int line, int column,
                std::vector<tNote> notes = {});
  [[noreturn]] void raiseOfInclude(const char* slug, std::string_view what);
  void diagnoseInclude(int code, const char* slug, const tString& message,
                       std::vector<tNote> notes = {});
  void placeError(int line, int column, tString& message);
  void pointAtOpen(int line);
  std::vector<const tBaseXChg*> rulesAppliedTo(int line);
  std::vector<const tBaseXChg*> rulesOfPlain(int line);
  bool appliesTo(const tBaseXChg& rule, int mainLine) const;

  tSharedState& shared_;
  tProgramFile* main_;
  tProgramFile* includer_ = nullptr;
  int includedAt_ = 0;
  int depth_ = 0;
  bool inCycle_ = false;
  std::unordered_set<std::string> includedNames_;  // here and below, in upper case
};

}  // namespace precomp
