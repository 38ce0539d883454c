#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "korelpre/directives/headerreader.h"
#include "korelpre/directives/lexemefeed.h"
#include "korelpre/directives/programfile.h"
#include "korelpre/directives/shared.h"
#include "korelpre/directives/sqlblock.h"
#include "korelpre/directives/stackelement.h"
#include "lib_base/diskman.h"
#include "lib_base/list.h"
#include "lib_base/stringz.h"
#include "ssvp40xpf/ssyacc.h"

namespace precomp {

/// The directive processor of one source file.
///
/// compile() reads the file and carries out its directives; processLines() walks over its lines,
/// enters rules into the tables where their line is reached and writes the rewritten statements.
/// The root, which hosts make, is the processor of the main file; each included file is compiled by
/// a processor of its own, which shares the root's state and goes when the file is compiled.
///
/// Errors leave as SSException with the number of the error; the text and the line are kept in
/// errString() and errLine() of the root.
class KorelPreYaccClass : public SSYacc, public tRuleContext, public tProgramRoot {
 public:
  /// A root. `files` must outlive it; null means the machine's file system.
  explicit KorelPreYaccClass(tDiskMan* files = nullptr);
  ~KorelPreYaccClass() override;
  KorelPreYaccClass(const KorelPreYaccClass&) = delete;
  KorelPreYaccClass& operator=(const KorelPreYaccClass&) = delete;

  /// Reads a file and carries out its directives. `directory` (may be null) becomes the current
  /// directory and goes to the front of the include path. `includeMode` is set for every file but
  /// the main one. False when the file is an optional header that is missing or one that is already
  /// being compiled up the chain.
  bool compile(const char* name, const char* directory, tString& passedOn,
               unsigned char includeMode);
  /// As compile for a main source that is held in memory. True when no conditional is left open.
  bool compileStr(const char* name, std::string_view text, tString& output);
  /// Finds and reads a file into the source text; `scratch` receives its bare name in upper case.
  bool loadfile(const char* name, const char* directory, tString& passedOn, tString& scratch);

  /// Appends the generated lines to `output`, without a line feed at its end. `depth` counts the
  /// nested calls and is 0 outside of them.
  void processLines(tString& output, int& depth);
  /// Rewrites a statement until no rule applies and appends it and a line feed to `output`.
  void processLine(tTknString& statement, tString& output);
  /// Writes a statement to standard output.
  void printLine(const tTknString& statement, unsigned char original);

  /// Raises the numbered error `code`; the line is that of `token`, or the current line when it is
  /// null. `extra` (may be null) completes the text of some codes.
  [[noreturn]] void exception(int code, const tSpcString* token, const char* extra);

  void SetCurDir(const tString& directory) { currentDirectory_ = directory; }
  const tString& GetCurDir() const { return currentDirectory_; }

  // The shared tables. Each processor answers the root's.
  tAutoArray<tString>& IncludePath() { return shared_.finder.includePath(); }
  tXChgArray* dynDefines() { return &shared_.rules.dynDefines; }
  tXChgArray* defines() { return &shared_.rules.defines; }
  tXChgArray* commands() { return &shared_.rules.commands; }
  tXChgArray* xcommands() { return commands(); }
  tXChgArray* translates() { return &shared_.rules.translates; }
  tXChgArray* xtranslates() { return translates(); }
  AYaccClass* KorelYacc() override { return shared_.rules.KorelYacc(); }

  tString& errString() { return shared_.error.text; }
  int& errLine() { return shared_.error.line; }
  int& errCol() { return shared_.error.column; }
  const tDiagnosis& lastDiagnosis() const { return shared_.error.diagnosis; }
  std::uint64_t matcherSteps() const { return shared_.matcherSteps; }  // of the program
  /// The structures that are open, or were at the last error; outermost first.
  const std::vector<tBlockCmd>& openBlocks() const { return shared_.checks.openBlocks(); }
  std::string_view sourceLine(int line) const { return file_.lineText(line); }  // from 1

  bool hasExtLoadFile() override { return false; }
  bool extLoadFile(const tString& /*name*/, tString& /*text*/) override { return false; }

  /// Back to the state after construction, what the operations below have set aside.
  void clear();

  /// The header that is read ahead of every main file; "std.ch" at first.
  void setStandardHeader(const tString& name) { shared_.standardHeader = name; }
  /// Whether plain lines stay spans of the source (the default). The output is the same if not.
  void setPlainLines(bool plain) { shared_.plainLines = plain; }
  /// Lets `observer`, which must outlive the run or be taken away, see rewritings; null for none.
  void setRuleObserver(tRuleObserver* observer);
  /// Tells `observer`, which must outlive the run, of every included file; null for none.
  void setFileObserver(tFileObserver* observer) { shared_.fileObserver = observer; }
  /// Lets all processors that share this cache, which must outlive them, read headers once.
  void setHeaderCache(tHeaderCache* cache) { shared_.headerCache = cache; }

  /// Fills the tables from the saved standard header; false when none holds what its text would.
  bool loadPchFile();
  /// Reads a header and saves it as a standard header. False when it was not saved; what is wrong
  /// with the header itself is raised. The cache must be one that saves.
  bool prepch(const char* header);

  // Conditional compilation; see tConditionals. A null name: in a skipped region.
  std::uint8_t doIfDef(const tSpcString* name, int line);
  std::uint8_t doIfNDef(const tSpcString* name, int line);
  void doElseIF(int line);
  void doEndIF(int line);
  /// `element`, emptied in a skipped region.
  tKorelPreStackElement* ifValid(tKorelPreStackElement* element);
  bool skipping() const { return file_.conditionals.skipping(); }
  // The parser's operations.
  SSLexLexeme* nextLexeme() override { return feed_->next(); }
  SSYaccStackElement* stackElement() override { return new tKorelPreStackElement; }
  SSYaccStackElement* reduce(unsigned production, unsigned size) override;
  void ClearprintCmdList() override;
  bool compileInclude(tProgramFile& file, const tString& name) override;

 protected:
  tDiskMan& files() { return shared_.finder.files(); }
  void setSourceWatcher(tSourceWatcher* watcher) { shared_.watcher = watcher; }
  tString toldOf(const SSException& failure, const tString& name);

 private:
  /// The processor of a file that another one includes.
  explicit KorelPreYaccClass(tProgramFile& file);

  template <class tAction>
  bool keepingError(const char* name, const tAction& action);
  bool compileFile(const char* name, const char* directory, tString& passedOn);
  void markExtendedSource(const char* name);
  bool begin(const char* name, const char* directory, tString& passedOn);
  void beginText();
  bool parseOn();
  void finishText();
  void include(const tString& name, int line);
  void endAwaited(bool done);
  // What productions do (korelprered.cpp).
  tKorelPreStackElement& part(unsigned index);
  int lineOf(unsigned index);
  std::string_view directiveText();
  void reduceDirective(unsigned production, int line);
  void reduceDefine(unsigned production, int line);
  void reduceRule(eDirective directive, int line);

  std::unique_ptr<tSharedState> ownShared_;  // in the root
  tSharedState& shared_;
  std::unique_ptr<tProgramFile> ownFile_;  // in the root
  tProgramFile& file_;
  tString currentDirectory_;
  bool headerDone_ = false;      // the standard header has been read
  tInclude* awaited_ = nullptr;  // the include of an included file that the parser has paused for
  tImageWork work_;              // for its image
  tSqlBlock sql_;
  std::unique_ptr<tLexemeFeed> feed_;
  std::size_t innerDirective_ = 0;  // where the last directive that was reduced begins
};

}  // namespace precomp
