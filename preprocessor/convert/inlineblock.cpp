#include "preprocessor/convert/inlineblock.h"

#include <algorithm>
#include <string_view>

#include "korelpre/lint/suppressions.h"
#include "korelpre/text/cursor.h"
#include "lib_base/misc.h"
#include "lib_gzip/zipsource.h"
#include "preprocessor/convert/sourcekind.h"
#include "preprocessor/copy/fileparts.h"
#include "preprocessor/copy/textlines.h"

namespace {

constexpr std::string_view kBegin = "BEGINCONTENT";
constexpr std::string_view kEnd = "ENDCONTENT";
constexpr std::string_view kVariable = "VAR";
constexpr std::string_view kQuote = "'";
constexpr std::string_view kQuoteCall = "' + CHR(39) + '";
constexpr std::string_view kExpression = "%Exp:";

std::size_t leadingWhite(std::string_view line) {
  return precomp::skipBlanks(line, 0);
}

// Kept on purpose: the last letter counts in upper case only.
bool asksForTrimming(std::string_view text) {
  constexpr std::string_view kOptimize = "OPTIMIZ";
  return startsWithNoCase(text, kOptimize) && text.substr(kOptimize.size()).starts_with('E');
}

/// The walk over the lines of a text.
class tBlockWalk {
 public:
  eConversion convert(tString& text);
  /// What was found to be wrong, in the order of the lines.
  const tBlockFaults& faults() const { return faults_; }

 private:
  void takeOutside(std::string_view line);
  void open(std::string_view line, std::string_view declaration);
  void takeInside(std::string_view line);
  void takeContent(std::string_view line);
  void put(std::string_view text);
  void putBlanks(std::size_t count) { put(tString(count, ' ')); }

  tString output_;
  bool tooLarge_ = false;
  bool completed_ = false;
  int line_ = 0;
  tBlockFaults faults_;

  // The block that is open.
  bool inside_ = false;
  bool firstLine_ = false;
  bool trim_ = false;
  tBlockFault opening_{precomp::eWarning::kUnclosedContent, 0, {}};
  tString variable_;
  std::size_t indentation_ = 0;
};

void tBlockWalk::put(std::string_view text) {
  if (text.size() > tString::maxSize() - std::min(output_.size(), tString::maxSize())) {
    tooLarge_ = true;
  }
  if (!tooLarge_) output_ += text;
}

eConversion tBlockWalk::convert(tString& text) {
  output_.reserve(std::min(text.size() + text.size() / 2 + 64, tString::maxSize()));
  for (std::string_view rest = text; !rest.empty() && !tooLarge_;) {
    const std::string_view line = takeLine(rest);
    ++line_;
    inside_ ? takeInside(line) : takeOutside(line);
  }
  if (tooLarge_) return eConversion::kTooLarge;
  if (inside_) faults_.push_back(opening_);
  if (!completed_ || inside_) return eConversion::kNone;
  text = std::move(output_);
  return eConversion::kDone;
}

void tBlockWalk::takeOutside(std::string_view line) {
  const std::string_view statement = trimmed(line);
  if (!startsWithNoCase(statement, kBegin)) {
    put(line);
    put("\n");
    return;
  }
  tString declaration(trimmed(statement.substr(kBegin.size())));
  declaration.replaceAll("\t", "");
  // Kept on purpose: a line that opens a block without VAR leaves no line at all.
  if (startsWithNoCase(declaration, kVariable)) return open(line, declaration);
  faults_.push_back({precomp::eWarning::kContentWithoutVariable, line_, tString(line)});
}

void tBlockWalk::open(std::string_view line, std::string_view declaration) {
  const std::string_view named = trimmed(declaration.substr(kVariable.size()));
  variable_ = tString(named.substr(0, named.find(' ')));
  indentation_ = leadingWhite(line);
  putBlanks(indentation_);
  put("\n");
  trim_ = asksForTrimming(trimmed(named.substr(variable_.size())));
  inside_ = true;
  opening_.line = line_;
  opening_.text = tString(line);
  firstLine_ = true;
}

void tBlockWalk::takeInside(std::string_view line) {
  if (!startsWithNoCase(trimmed(line), kEnd)) {
    takeContent(line);
  } else {
    putBlanks(leadingWhite(line));
    completed_ = true;
    inside_ = false;
    trim_ = false;
  }
  put("\n");
}

void tBlockWalk::takeContent(std::string_view line) {
  const auto quotes = static_cast<std::size_t>(std::count(line.begin(), line.end(), '\''));
  if (line.size() + quotes * kQuoteCall.size() > tString::maxSize() / 2) tooLarge_ = true;
  if (tooLarge_) return;

  tString content(line);
  PrepareSingleQuotes(content);
  ReplaceExp(content);
  const std::string_view shown =
      trim_ ? trimmed(content)
            : content.view().substr(std::min(leadingWhite(content), indentation_));
  putBlanks(indentation_);
  if (shown.empty()) return;
  put(variable_);
  put(firstLine_ ? " := '" : " += '");
  put(shown);
  put("' + CHR(10)");
  firstLine_ = false;
}

/// False for a source that certainly holds no block; it is then read without holding it whole.
bool mayHoldBlock(tFile& source, int& reason) {
  if (source.size() > static_cast<std::int64_t>(tString::maxSize())) return false;
  tFileParts parts(source, kBegin.size() - 1);
  for (bool first = true; parts.next(); first = false) {
    if (first && isZipSource(parts.part())) return true;
    if (findTextNoCase(parts.seen(), kBegin) != std::string_view::npos) return true;
  }
  reason = source.error();
  return false;
}

}  // namespace

void PrepareSingleQuotes(tString& line) {
  line.replaceAll(kQuote, kQuoteCall);
}

void ReplaceExp(tString& line) {
  const std::string_view text = line;
  std::size_t at = findText(text, kExpression);
  if (at == tString::npos) return;
  tString output;
  output.reserve(text.size() + text.size() / 4);
  std::size_t copied = 0;
  while (at != tString::npos) {
    const std::size_t start = at + kExpression.size();
    const std::size_t end = text.find('%', start);
    if (end == std::string_view::npos) break;
    output.append(text.substr(copied, at - copied)).append("' + ");
    output.append(text.substr(start, end - start)).append(" + '");
    copied = end + 1;
    at = findText(text, kExpression, copied);
  }
  output += text.substr(copied);
  line = std::move(output);
}

eConversion BCParse(tString& text, tBlockFaults* faults) {
  tBlockWalk walk;
  const tString source = text;
  const eConversion result = walk.convert(text);
  if (faults == nullptr || walk.faults().empty()) return result;
  const precomp::tSuppressions suppressions(source);
  for (const tBlockFault& fault : walk.faults()) {
    const char* const slug = precomp::warningTextOf(fault.what).slug;
    if (!suppressions.covers(slug, fault.line)) faults->push_back(fault);
  }
  return result;
}

eConversion DoBCPreprocessor(tDiskManOverlay& files, const tString& name, int& reason,
                             tBlockFaults* faults) {
  if (sourceKindOf(name).converter != eConverter::kInlineBlocks) return eConversion::kNone;
  const auto nothing = [&] { return reason == 0 ? eConversion::kNone : eConversion::kUnreadable; };
  {
    const std::unique_ptr<tFile> source = files.open(name.c_str(), reason);
    if (!source || !mayHoldBlock(*source, reason)) return nothing();
  }
  tString text;
  if (!readSourceText(files, name, text, reason)) return nothing();
  const eConversion result = BCParse(text, faults);
  if (result == eConversion::kDone) keepConverted(files, name, text);
  return result;
}
