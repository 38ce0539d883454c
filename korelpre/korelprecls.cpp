#include "korelpre/korelprecls.h"

#include <cstring>

#include "korelpre/headers/headerrecorder.h"
#include "lib_base/fatal.h"
#include "lib_base/misc.h"
#include "lib_base/output.h"
#include "lib_base/translate.h"
#include "ssvp40xpf/builtintables.h"

namespace precomp {

namespace {

const SSYaccTable& parserTable() {
  static const SSYaccTable table(builtin::korelpreLlr.words, builtin::korelpreLlr.bytes,
                                 builtin::korelpreLlr.name);
  return table;
}

// Kept on purpose: only the first occurrence of the extension counts, so "a.zorb.zorb" is no
// extended source.
bool hasExtension(const tString& name, std::string_view extension) {
  const std::size_t first = name.findNoCase(extension);
  return first != tString::npos && first + extension.size() == name.size();
}

constexpr const char* kMissingHeaders = "KRSQLDEF.CH or KRCTLDEF.CH";
constexpr std::string_view kOptionalHeaders[] = {"std.ch", "KRCTLDEF.CH", "KRSQLDEF.CH"};

}  // namespace

KorelPreYaccClass::KorelPreYaccClass(tDiskMan* files)
    : root_(this), ownShared_(std::make_unique<tSharedState>()), shared_(*ownShared_) {
  if (files == nullptr) {
    shared_.ownFiles = std::make_unique<tDiskManLocal>();
    files = shared_.ownFiles.get();
  }
  shared_.files = files;
  setTable(parserTable());
}

KorelPreYaccClass::KorelPreYaccClass(tIncludedBy includer)
    : root_(&includer.processor.root()),
      includer_(&includer.processor),
      includedAt_(includer.line),
      shared_(includer.processor.shared_),
      depth_(includer.processor.depth_ + 1) {
  setTable(parserTable());
}

KorelPreYaccClass::~KorelPreYaccClass() {
  // Rules of line entries stand in dynDefines too, which outlives them.
  if (root_ == this) shared_.dynDefines.dropRules();
}

void KorelPreYaccClass::clear() {
  held_.reset();
  reset();
  lexer_.reset();
  consumer_.reset();
  IncludePath().Destroy();
  if (root_ == this) {
    shared_.dynDefines.dropRules();
    shared_.defines.Destroy();
    shared_.commands.Destroy();
    shared_.translates.Destroy();
    shared_.language.reset();
    shared_.errorString.clear();
    shared_.errorLine = shared_.errorColumn = 0;
    shared_.errorPlaced = false;
    shared_.diagnosis = {};
    shared_.walking = false;
    shared_.rewriting = {};
    shared_.includedFiles = 0;
    shared_.includedBytes = 0;
  }
  source_.clear();
  includes_.Destroy();
  if (root_ == this) shared_.markers.clear();
  includedNames_.clear();
  headerDone_ = false;
  conditionals_.Destroy();
  if (root_ == this) shared_.images.clear();
  skip_ = 0;
  currentLine_ = 0;
}

AYaccClass* KorelPreYaccClass::KorelYacc() {
  if (shared_.language == nullptr) shared_.language = std::make_unique<AYaccClass>();
  return shared_.language.get();
}

void KorelPreYaccClass::setRuleObserver(tRuleObserver* observer) {
  shared_.observer = observer;
  for (tXChgArray* table : {defines(), commands(), translates()}) table->setObserver(observer);
}

bool KorelPreYaccClass::compile(const char* name, const char* directory, tString& passedOn,
                                unsigned char includeMode) {
  includeMode_ = includeMode;
  if (includeMode == 0) markExtendedSource(name);
  const tString savedDirectory = currentDirectory_;
  tString scratch;
  if (!loadfile(name, directory, passedOn, scratch)) {
    if (isOptionalHeader(scratch)) {
      root().headerMissing_ = 1;
      if (shared_.recorder != nullptr) shared_.recorder->spoil();
      return false;
    }
    exception(2090, nullptr, name);
  }
  if (inCycle_) {
    if (shared_.recorder != nullptr) shared_.recorder->spoil();
    return false;
  }
  takeText(true);
  parseText();
  if (!savedDirectory.empty()) SetCurDir(savedDirectory);
  finishText();
  return true;
}

bool KorelPreYaccClass::compileStr(const char* name, std::string_view text, tString& /*output*/) {
  includeMode_ = 0;
  requestedName_ = openedName_ = fileName_ = tString(name);
  text_ = tString();
  text_.append(text);
  takeText(false);
  parseText();
  finishText();
  return true;
}

// Kept on purpose: deciding about the extended source also forgets that a header was missing.
void KorelPreYaccClass::markExtendedSource(const char* name) {
  const tString text(name);
  KorelPreYaccClass& marked = root();
  if (hasExtension(text, ".zorb") || hasExtension(text, ".pzorb_")) {
    marked.extendedSource_ = 1;
    marked.headerMissing_ = 0;
    return;
  }
  const bool headerMissing = headerMissing_ != 0;
  marked.extendedSource_ = 0;
  marked.headerMissing_ = 0;
  if (!headerMissing) return;
  currentLine_ = 0;
  exception(2090, nullptr, kMissingHeaders);
}

bool KorelPreYaccClass::isOptionalHeader(const tString& name) const {
  if (includer_ == nullptr || root_->extendedSource_ == 0) return false;
  for (const std::string_view header : kOptionalHeaders) {
    if (equalNoCase(name, header)) return true;
  }
  return false;
}

void KorelPreYaccClass::parseText() {
  // What a text that failed has left behind.
  if (root_ == this) {
    dynDefines()->dropRules();
    shared_.errorPlaced = false;
  }
  conditionals_.Destroy();
  skip_ = 0;
  source_.clear();
  innerDirective_ = 0;
  source_.expect(text_.size());
  atLineStart_ = true;
  anyDelivered_ = inSql_ = sqlEnding_ = continuing_ = false;
  sql_ = {};
  lastTokenLine_ = 0;
  lastTokenEnd_ = 0;
  shared_.walking = false;
  reset();
  consumer_ = std::make_unique<SSLexStringConsumer>(
      text_.data(), text_.size(), SSLexConsumer::textType, SSLexStringConsumer::kBorrowed);
  lexer_ = std::make_unique<KorelPreLexClass>(*consumer_);
  setLex(*lexer_);
  includeStandardHeader();
  try {
    parse();
  } catch (const SSException& failure) {
    placeScannerError(failure);
    throw;
  }
  source_.extendTo(lineCount());
  reset();
  lexer_.reset();
}

void KorelPreYaccClass::finishText() {
  if (conditionals_.empty()) return;
  errCol() = 0;
  exceptionAt(2069, conditionals_.last()->line, nullptr);
}

int KorelPreYaccClass::error(unsigned /*state*/, SSLexLexeme& lookahead) {
  // A line feed may stand behind comment lines; what is wrong stands before it.
  const bool atEnd = lookahead.token() == sstable::kTokenEof;
  if (atEnd && inSql_) exceptionAt(2002, sql_.line, nullptr);
  if (atEnd) exceptionAt(2001, ownLineCount(), nullptr);
  const bool atLineEnd = lookahead.token() == korelpre::kTokLineFeed && lastTokenLine_ > 0;
  if (atLineEnd) exceptionAt(2001, lastTokenLine_, nullptr, columnAt(lastTokenEnd_));
  // The quote of a string is not part of its lexeme.
  const bool quoted =
      lookahead.token() == korelpre::kTokString || lookahead.token() == korelpre::kTokSqString;
  exceptionAt(2001, static_cast<int>(lookahead.line()), nullptr,
              static_cast<int>(lookahead.offset()) - (quoted ? 1 : 0));
}

// Without the empty line that the line end added behind the text makes.
int KorelPreYaccClass::ownLineCount() const {
  const bool lineAdded = text_.view().ends_with("\r\n\r\n");
  return lineAdded ? lineCount() - 1 : lineCount();
}

SSYaccStackElement* KorelPreYaccClass::stackElement() {
  return new tKorelPreStackElement;
}

void KorelPreYaccClass::printLine(const tTknString& statement, unsigned char original) {
  tString text;
  statement.appendText(text, original != 0);
  const tAutoArray<tTknString>& continuations = statement.continuations();
  for (int i = 0; i < continuations.count(); ++i) {
    if (text.empty() || text[text.size() - 1] != ';') text.append(';');
    continuations[i].appendText(text, false);
  }
  qdprintf("%s", text.c_str());
  qdprintf("\n");
}

}  // namespace precomp
