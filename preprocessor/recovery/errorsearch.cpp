// Goes over a source from error to error.
//
//   [run]     The source is preprocessed as ever. Without an error, or when enough were told, that
//             is all.
//   [tell]    The error is told, unless it may be nothing but a consequence of one before.
//   [repair]  What might get the run over the error is tried; the attempt that gets farthest is
//             kept. So the first error is the one of a plain run, and each further one is what a
//             plain run would say when those before it had been mended.
//
// It ends because the runs are counted, and what they read and match.

#include "preprocessor/recovery/errorsearch.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "korelpre/errors/errortexts.h"
#include "korelpre/lint/warnings.h"
#include "lib_base/output.h"
#include "lib_gzip/zipsource.h"

using precomp::eSourceError;
using precomp::tDiagnosis;

namespace {

constexpr int kMostRuns = 200;
constexpr std::size_t kMostBytes = std::size_t{256} << 20;  // of sources, in all runs
constexpr std::uint64_t kMostSteps = 400'000'000;  // of the matcher, likewise: as in one run

class tKeptOutput : public tOutputSink {
 public:
  void write(std::string_view text) override { text_ += text; }
  const std::string& text() const { return text_; }

 private:
  std::string text_;
};

eSourceError errorOf(const tDiagnosis& diagnosis) {
  return static_cast<eSourceError>(diagnosis.code);
}

// Errors of directives, which are found before all others.
bool isOfDirective(const tDiagnosis& error) {
  switch (errorOf(error)) {
    case eSourceError::kSyntax:
    case eSourceError::kIncludeNotFound:
    case eSourceError::kUnclosedConditional:
    case eSourceError::kElseWithoutIfdef:
    case eSourceError::kLimitExceeded:
      return true;
    default:
      return false;
  }
}

}  // namespace

struct tErrorSearch::tOutcome {
  std::unique_ptr<precomp::KorelPre16> session;
  tString output;
  std::string printed;
  bool failed = false;
  const tDiagnosis& error() const { return session->diagnosis(); }
  bool endsAt(const tDiagnosis& other) const {
    return failed && error().line == other.line && error().file == other.file &&
           error().code == other.code;
  }
};

tErrorSearch::tErrorSearch(tDiskManOverlay& files, const tString& source, tSetUp setUp, tTell tell)
    : files_(files), source_(source), setUp_(std::move(setUp)), tell_(std::move(tell)) {}

tErrorSearch::~tErrorSearch() = default;

precomp::KorelPre16& tErrorSearch::session() const {
  return *last_->session;
}

std::vector<tDiagnosis> tErrorSearch::takeWarnings() {
  std::vector<tDiagnosis> warnings = last_->session->takeWarnings();
  if (runs_ == 1) return warnings;
  // What was repaired may have needed an include.
  const char* const unneeded = precomp::warningTextOf(precomp::eWarning::kUnneededInclude).slug;
  std::erase_if(warnings, [&](const tDiagnosis& warning) {
    if (warning.slug == unneeded) return true;
    const auto text = texts_.find(std::string(warning.file.view()));
    return text != texts_.end() && text->second != nullptr &&
           text->second->repairs().contains(warning.line);
  });
  return warnings;
}

bool tErrorSearch::run(int most, tString& output) {
  textOf(source_);  // from now on it is laid for each run
  last_ = runOnce(true);
  const bool found = last_->failed;
  if (!found) output = std::move(last_->output);
  int told = 0;
  while (last_->failed && told < most) {
    if (told == 0 || !isConsequence(last_->error())) {
      tell(*last_);
      ++told;
    }
    std::unique_ptr<tOutcome> next = goOn(*last_);
    if (next == nullptr) break;
    last_ = std::move(next);
  }
  return found;
}

// Null when the file cannot be read. What is kept in memory is gone from there afterwards.
tRepairedText* tErrorSearch::textOf(const tString& name) {
  std::unique_ptr<tRepairedText>& text = texts_[std::string(name.view())];
  if (text == nullptr) {
    tString read;
    const std::unique_ptr<tFile> file = files_.open(name.c_str());
    if (file == nullptr || !file->readAll(read)) return nullptr;
    tString unpacked;
    if (unpackZipSource(read, tString::maxSize(), unpacked) == eZipResult::kOk) read = unpacked;
    text = std::make_unique<tRepairedText>(std::string(read.view()));
  }
  return text.get();
}

// A session takes a file out of memory when it reads it.
void tErrorSearch::lay(const tString& name, const tRepairedText& text) {
  const std::unique_ptr<tFile> file = files_.create(name.c_str());
  if (file == nullptr) return;
  const std::string now = text.text();
  bytes_ += now.size();
  file->write(now);
  file->close();
}

std::unique_ptr<tErrorSearch::tOutcome> tErrorSearch::runOnce(bool first) {
  ++runs_;
  for (const auto& [name, text] : texts_) {
    if (text != nullptr && (text->isRepaired() || name == source_.view()))
      lay(tString(name), *text);
  }
  auto outcome = std::make_unique<tOutcome>();
  outcome->session = std::make_unique<precomp::KorelPre16>(files_);
  tKeptOutput printed;
  {
    const tOutputScope scope(printed);
    setUp_(*outcome->session, first, edited_);
    tString errorText;
    outcome->session->doIt(outcome->output, errorText);
    outcome->failed = outcome->session->errorCount() > 0 || !errorText.empty();
  }
  outcome->printed = printed.text();
  steps_ += outcome->session->matcherSteps();
  return outcome;
}

// Whether further runs would take much longer than the first may.
bool tErrorSearch::isSpent() const {
  return runs_ >= kMostRuns || bytes_ >= kMostBytes || steps_ >= kMostSteps;
}

// [repair] Null when nothing gets the run farther.
std::unique_ptr<tErrorSearch::tOutcome> tErrorSearch::goOn(const tOutcome& outcome) {
  const tDiagnosis& error = outcome.error();
  tRepairedText* const text = error.file.empty() ? nullptr : textOf(error.file);
  if (text == nullptr) return nullptr;
  if (error.file != source_) {
    files_.keepInMemory(error.file);
    edited_ = true;
  }
  const tRepairedText::tRepairs before = text->repairs();
  tRepairedText::tRepairs kept = before;
  std::unique_ptr<tOutcome> best;
  for (const tRepair& repair : repairsOf(error, *text, outcome.session->openBlocks())) {
    if (isSpent()) break;
    text->setRepairs(before);
    for (const auto& [line, change] : repair) text->add(line, change);
    std::unique_ptr<tOutcome> tried = runOnce(false);
    if (tried->endsAt(error)) continue;
    if (best != nullptr && reach(*tried) <= reach(*best)) continue;
    kept = text->repairs();
    best = std::move(tried);
    if (!best->failed) break;
  }
  text->setRepairs(kept);
  return best;
}

// The line of the source at which a run ended; of directives, which are read first, far in front.
long tErrorSearch::reach(const tOutcome& outcome) const {
  if (!outcome.failed) return std::numeric_limits<long>::max();
  constexpr long kDirectives = 1L << 32;
  return mainLine(outcome.error()) - (isOfDirective(outcome.error()) ? kDirectives : 0);
}

int tErrorSearch::mainLine(const tDiagnosis& error) const {
  return error.includedFrom.empty() ? error.line : error.includedFrom.back().line;
}

// [tell] Rules of the source may make errors of what a repair has put in. A rule or a header that
// is missing may have made something else of a command: an error of structures or of "@" in a body
// with commands may have no other reason.
bool tErrorSearch::isConsequence(const tDiagnosis& error) {
  const tRepairedText* const text = textOf(error.file);
  if (text != nullptr && error.column > 0 && error.column <= text->shift(error.line)) return true;
  const bool startsAt = errorOf(error) == eSourceError::kInvalidReference &&
                        mayBeCommand(error.sourceLine) &&
                        error.sourceLine.find("@") != tString::npos;
  if (startsAt && atSigns_) return true;
  if (!unexplained_ || isOfDirective(error) || text == nullptr) return false;
  const tLineRange body = bodyAt(*text, error.line);
  for (int line = body.first; line <= body.last; ++line) {
    if (mayBeCommand(text->line(line))) return true;
  }
  return false;
}

void tErrorSearch::tell(tOutcome& outcome) {
  tDiagnosis error = outcome.error();
  unexplained_ = unexplained_ || errorOf(error) == eSourceError::kSyntax ||
                 errorOf(error) == eSourceError::kIncludeNotFound || error.slug == "cannot-read";
  atSigns_ = atSigns_ || errorOf(error) == eSourceError::kInvalidReference;
  // What the user sees is the text as he wrote it.
  if (const tRepairedText* const text = textOf(error.file)) {
    const auto shown = [&](int line, tString& sourceLine, int& column, int& endColumn) {
      const int shift = text->shift(line);
      sourceLine = tString(text->original(line));
      column = std::max(column - shift, 0);
      endColumn = std::max(endColumn - shift, 0);
    };
    if (error.line > 0) shown(error.line, error.sourceLine, error.column, error.endColumn);
    for (precomp::tNote& note : error.notes) {
      if (note.file == error.file && note.line > 0) {
        shown(note.line, note.sourceLine, note.column, note.endColumn);
      }
    }
  }
  writeOutput(outcome.printed);
  tell_(error, *outcome.session);
}
