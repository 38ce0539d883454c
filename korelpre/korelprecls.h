#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "korelpre/directives/include.h"
#include "korelpre/directives/sourcelines.h"
#include "korelpre/directives/sqlblock.h"
#include "korelpre/directives/stackelement.h"
#include "korelpre/errors/diagnostic.h"
#include "korelpre/errors/fileobserver.h"
#include "korelpre/rules/definereader.h"
#include "korelpre/rules/rulereader.h"
#include "korelpre/statements/check.h"
#include "korelpre/tables/ruletable.h"
#include "korelpre/text/linescan.h"
#include "lib_base/diskman.h"
#include "lib_base/list.h"
#include "lib_base/stringz.h"
#include "ssvp40xpf/ayacc.h"
#include "ssvp40xpf/korelprelex.h"
#include "ssvp40xpf/ssyacc.h"

namespace precomp {

class KorelPreYaccClass;
class tHeaderCache;
class tHeaderImage;
struct tHeaderNotes;
class tHeaderRecorder;
class tPlainWriter;

/// An open #ifdef or #ifndef.
struct tIFDef {
  int kind = 1;
  tString name;            // "ignore" when it was opened in a skipped region
  int line = 0;            // 0 when it was opened in a skipped region
  std::uint8_t state = 0;  // the skip flag that holds inside the block
};

/// The rules that were applied to the statement that was last rewritten token by token.
struct tRewriting {
  const KorelPreYaccClass* file = nullptr;
  int line = 0;
  std::vector<const tBaseXChg*> rules;
  int replacedAt = 0;  // the last line of the main file that replaced a rule
};

/// What the processors of a file and of all that it includes have in common; the root owns it.
struct tSharedState {
  ~tSharedState() { dynDefines.dropRules(); }

  std::vector<std::shared_ptr<const tHeaderImage>> images;  // rules refer to them
  tAutoArray<tString> includePath;
  tMarkerArena markers;   // of most rules
  tXChgArray dynDefines;  // its rules belong to line entries
  tXChgArray defines;
  tXChgArray commands;
  tXChgArray translates;
  std::unique_ptr<tDiskMan> ownFiles;
  tDiskMan* files = nullptr;
  tString standardHeader = tString::borrow("std.ch");
  bool plainLines = true;
  std::unique_ptr<AYaccClass> language;
  tStatementCheck checks;
  tRuleObserver* observer = nullptr;
  tHeaderCache* headerCache = nullptr;
  tHeaderRecorder* recorder = nullptr;  // while a header is read to make an image of it
  tFileObserver* fileObserver = nullptr;

  // The last error.
  tString errorString;
  int errorLine = 0;
  int errorColumn = 0;
  bool errorPlaced = false;
  tDiagnosis diagnosis;

  bool walking = false;  // phase 2 has begun
  tRewriting rewriting;

  // What has been included.
  int includedFiles = 0;
  std::int64_t includedBytes = 0;
};

/// The directive processor of one source file.
///
/// compile() reads the file and carries out its directives; processLines() walks over its lines,
/// enters rules into the tables where their line is reached and writes the rewritten statements.
/// The processor of an included file points to the root, the processor of the main file, and all
/// of them share the root's rule tables and include path.
///
/// Errors leave as SSException with the number of the error; the text and the line are kept in
/// errString() and errLine() of the root.
class KorelPreYaccClass : public SSYacc {
 public:
  /// A root. `files` must outlive it; null means the machine's file system.
  explicit KorelPreYaccClass(tDiskMan* files = nullptr);
  struct tIncludedBy {
    KorelPreYaccClass& processor;
    int line;  // of the directive; 0 for the standard header
  };
  /// The processor of a file that the given processor's file includes.
  explicit KorelPreYaccClass(tIncludedBy includer);
  ~KorelPreYaccClass() override;

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
  /// As above at a line of this processor's file, from 1, and a column, 0 for that of the line's
  /// first character that is no blank.
  [[noreturn]] void exceptionAt(int code, int line, const char* extra, int column = 0);
  /// As above at a place noted earlier; `place` may be of any file of the program.
  [[noreturn]] void exceptionAt(int code, const tStatementPlace& place, const char* extra);
  /// The place of a statement on a line of this processor's file.
  tStatementPlace placeOf(int line) { return {this, line, root_->currentLine_, 0}; }
  /// The column, from 1, of a token in this file's text; 0 when the token is not taken from it.
  int columnOf(const tSpcString& token) const;
  /// Whether the main source is written in the extended language.
  bool isExtendedSource() const { return root_->extendedSource_ != 0; }

  void SetCurDir(const tString& directory) { currentDirectory_ = directory; }
  const tString& GetCurDir() const { return currentDirectory_; }

  // The shared tables; made on first use. Each answers the root's.
  tAutoArray<tString>& IncludePath() { return shared_.includePath; }
  tXChgArray* dynDefines() { return &shared_.dynDefines; }
  tXChgArray* defines() { return &shared_.defines; }
  tXChgArray* commands() { return &shared_.commands; }
  tXChgArray* xcommands() { return commands(); }
  tXChgArray* translates() { return &shared_.translates; }
  tXChgArray* xtranslates() { return translates(); }

  /// The language's parser, which bounds expressions; made on first use and shared like the tables.
  AYaccClass* KorelYacc();

  // The last error.
  tString& errString() { return shared_.errorString; }
  int& errLine() { return shared_.errorLine; }
  int& errCol() { return shared_.errorColumn; }
  const tDiagnosis& lastDiagnosis() const { return shared_.diagnosis; }

  /// True when the host supplies the texts of files itself; extLoadFile is then asked instead of
  /// the file system.
  virtual bool hasExtLoadFile() { return root_ != this && root().hasExtLoadFile(); }
  /// The text of the file `name`; false when there is none.
  virtual bool extLoadFile(const tString& name, tString& text) {
    return root_ != this && root().extLoadFile(name, text);
  }

  /// Back to the state after construction, the standard header's name aside.
  void clear();

  /// The header that is read ahead of every main file; "std.ch" at first.
  void setStandardHeader(const tString& name) { shared_.standardHeader = name; }
  /// Whether plain lines are kept as spans of the source (the default) or all lines go through
  /// scanner and grammar. The output is the same.
  void setPlainLines(bool plain) { shared_.plainLines = plain; }

  /// Lets `observer` see how statements are rewritten; null for none. All processors of the run
  /// share it; it must outlive them or be taken away.
  void setRuleObserver(tRuleObserver* observer);

  /// Lets headers be read once for all processors that share this cache; null for none. It must
  /// outlive the reading.
  void setHeaderCache(tHeaderCache* cache) { shared_.headerCache = cache; }
  /// Fills the tables from the file that a run has saved of the standard header; false when there
  /// is none that holds what the text would give.
  bool loadPchFile();
  /// Reads a header, no standard header before it, and saves it as the standard header it is to
  /// be. False when it was not saved; what is wrong with the header itself is raised. The cache
  /// must be one that saves.
  bool prepch(const char* header);
  /// Tells `observer` of every included file; null for none. It must outlive the run or be taken
  /// away.
  void setFileObserver(tFileObserver* observer) { shared_.fileObserver = observer; }

  // Conditional compilation. A null name means that the directive lies in a skipped region.
  std::uint8_t doIfDef(const tSpcString* name, int line);
  std::uint8_t doIfNDef(const tSpcString* name, int line);
  void doElseIF(int line);
  void doEndIF(int line);
  /// `element`, emptied in a skipped region.
  tKorelPreStackElement* ifValid(tKorelPreStackElement* element);
  bool skipping() const { return skip_ != 0; }

  // The parser's operations.
  SSLexLexeme* nextLexeme() override;
  SSYaccStackElement* stackElement() override;
  SSYaccStackElement* reduce(unsigned production, unsigned size) override;
  int error(unsigned state, SSLexLexeme& lookahead) override;

 protected:
  KorelPreYaccClass& root() { return *root_; }
  tDiskMan& files() { return *shared_.files; }

 private:
  friend class tInclude;

  // Loading (filefinder.cpp).
  bool findAndRead(const tString& bare);
  bool readFrom(const tString& directory, const tString& name);
  void tellRead(const tString& path);
  bool beingCompiledAbove(const tString& path) const;
  void countInclude(std::int64_t bytes);
  void takeText(bool mayBePacked);
  void markExtendedSource(const char* name);
  bool isOptionalHeader(const tString& name) const;
  [[noreturn]] void raiseIncludeLimit(const char* limit);

  // Headers that are read once (headerreader.cpp).
  static constexpr bool kWholeTables = true;
  void includeStandardHeader();
  bool compileStandardHeader();
  std::shared_ptr<const tHeaderImage> recordStandardHeader();
  bool savePchFile(const tHeaderImage& image, unsigned set);
  bool includeHeader(tInclude& record);
  bool takeCachedInclude(tInclude& record);
  void recordInclude(tInclude& record, tHeaderRecorder& recorder);
  bool noteMarkers(tHeaderRecorder& recorder);
  bool takeCachedHeader(const tString& name, bool wholeTables);
  void takeImage(const tString& name, const std::shared_ptr<const tHeaderImage>& image,
                 bool wholeTables);
  bool fits(const tHeaderImage& image, bool wholeTables);
  bool fitsTables(const tHeaderImage& image) const;
  bool isDefined(std::string_view name) const;
  void makeWay(const tStoredRules& stored, bool wholeTables);
  tString locate(const tString& requested);
  bool mayInclude(const tHeaderNotes& notes) const;

  // Phase 1.
  void parseText();
  void finishText();
  void placeError(int line, int column, tString& text);
  void diagnose(int code, const char* slug, const tString& message, int line, int column);
  void diagnoseInclude(int code, const char* slug, const tString& message);
  int columnAt(std::size_t offset) const;
  std::vector<const tBaseXChg*> rulesAppliedTo(int line);
  std::vector<const tBaseXChg*> rulesOfPlain(int line);
  bool appliesTo(const tBaseXChg& rule, int mainLine) const;
  void placeScannerError(const SSException& failure);
  void passPlainLines();
  void countSkippedDirective(eConditional directive, int line);
  void takeConditional(eConditional directive, std::string_view name, int line);
  SSLexLexeme* scannedLexeme();
  void noteDelivered(const SSLexLexeme& lexeme);
  void noteContinuation(const SSLexLexeme& lexeme);
  int lineCount() const;
  int ownLineCount() const;

  // Directive actions (korelprered.cpp).
  tKorelPreStackElement& part(unsigned index);
  int lineOf(unsigned index);
  std::string_view directiveText();
  void reduceDirective(unsigned production);
  // Embedded SQL (sqlblock.cpp).
  void beginSql(int line);
  bool isSqlLine(int line) const;
  tKorelPreStackElement* reduceSql(unsigned production);
  tKorelPreStackElement* makeSqlCall();
  std::string_view lexemeText(unsigned index);
  void reduceSkipped(unsigned production);
  void attachStatement(tKorelPreStackElement& list);
  void doInclude(int line, const tString& name);
  void doDefine(int line, const tSpcString& name, tAutoArray<tSpcString>& value);
  void doDefineWithParameters(int line, const tAutoArray<tSpcString>& parameters,
                              tAutoArray<tSpcString>& value);
  void enterDefineDirective(int line, std::unique_ptr<tTranslate> rule, std::string_view directive);
  void doRule(unsigned production, int line);
  bool readRule(const char* start, const char* end, int line);
  bool readDefine(const char* start, const char* end, int line);
  void addRule(std::unique_ptr<tBaseXChg> rule, int line);
  void enterRule(std::unique_ptr<tBaseXChg> rule);
  void enterDefine(std::unique_ptr<tBaseXChg> rule);
  void removeSingleDefine(const tString& name);
  void noteReplaced();
  void removeDynamicDefines(const tString& name);
  bool searchInclude(const tString& name) const;
  void noteIncluded(const tString& name);

  // Values of the grammar's symbols (values.cpp).
  tKorelPreStackElement* reduceValue(unsigned production, unsigned size);
  tKorelPreStackElement* makeToken(unsigned production);
  tKorelPreStackElement* makeSpace(const SSLexLexeme& lexeme);
  tKorelPreStackElement* takeOver(unsigned index);
  tKorelPreStackElement* makeName(unsigned index);
  tKorelPreStackElement* makeMarker(unsigned production);
  tKorelPreStackElement* addWord(unsigned production);
  tKorelPreStackElement* startChain(tChainBuilder::eSide side);
  void addElement(tChainBuilder& chain, tKorelPreStackElement& element);

  // Phase 2.
  void walkIncludesOnly(tString& output, int& depth);
  void walkLines(tString& output, int& depth);
  void processInclude(tInclude& include, tString& output, int& depth);
  tString openingName() const;
  void writeOpeningMarker(tString& output);
  bool enterPending(tSourceLine& entry);
  void processPlain(int line, tPlainWriter& writer, tString& output);

  KorelPreYaccClass* root_;
  KorelPreYaccClass* includer_ = nullptr;
  int includedAt_ = 0;  // the line of the includer's directive; 0 for the standard header
  std::unique_ptr<tSharedState> ownShared_;  // in the root
  tSharedState& shared_;

  // The file.
  tString fileName_;
  tString openedName_;  // with its whole path, as found
  tString foundDirectory_;
  tString requestedName_;
  tString resolvedName_;
  tString currentDirectory_;
  tString text_;
  tSourceCode source_;
  tAutoArray<tInclude> includes_;
  std::unordered_set<std::string> includedNames_;  // here and below, in upper case
  int depth_ = 0;                                  // of includes; 0 for the main file
  int currentLine_ = 0;
  std::uint8_t includeMode_ = 0;
  // Kept next to each other: who writes the first also clears the second.
  std::uint8_t extendedSource_ = 0;
  std::uint8_t headerMissing_ = 0;
  std::uint8_t skip_ = 0;
  bool inCycle_ = false;
  bool headerDone_ = false;
  bool precompiling_ = false;  // a header is read to be saved
  tAutoArray<tIFDef> conditionals_;

  tRuleReader reader_;
  tDefineReader defineReader_;
  tTknString scratch_;                // the plain statement being rewritten
  std::vector<int> failedPositions_;  // of the statement being rewritten

  // The scan of the file.
  std::unique_ptr<SSLexConsumer> consumer_;
  std::unique_ptr<KorelPreLexClass> lexer_;
  SSRef<SSLexLexeme> held_;  // to be delivered next
  bool atLineStart_ = true;
  bool anyDelivered_ = false;
  bool inSql_ = false;
  bool sqlEnding_ = false;   // EndSql has been delivered, but not its line feed
  bool continuing_ = false;  // a continuation came last
  tSqlBlock sql_;
  int lastTokenLine_ = 0;
  std::size_t innerDirective_ = 0;  // where the last directive that was reduced begins
  std::size_t lastTokenEnd_ = 0;
};

}  // namespace precomp
