#include "korelpre/korelpre.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "korelpre/text/cursor.h"
#include "lib_base/fatal.h"
#include "lib_base/output.h"
#include "lib_base/pathname.h"
#include "lib_base/translate.h"

namespace precomp {

namespace {

enum class eOption { kFile, kUser, kIgnored, kDirectories, kDefine };

struct tOptionGroup {
  eOption option;
  std::string_view spellings[4];
};

// In the order in which an option is searched for them. Kept on purpose: a spelling counts wherever
// it stands in the option.
constexpr tOptionGroup kOptionGroups[] = {
    {eOption::kFile, {"-F"}},
    {eOption::kUser, {"/U", "/u", "-U", "-u"}},
    {eOption::kIgnored, {"/N", "/n", "-N", "-n"}},
    {eOption::kIgnored, {"/S", "/s", "-S", "-s"}},
    {eOption::kDirectories, {"/I", "/i", "-I", "-i"}},
    {eOption::kIgnored, {"/P", "/p", "-P", "-p"}},
    {eOption::kDefine, {"/D", "/d", "-D", "-d"}},
};

constexpr std::size_t kLongestValue = 255;

// A list of directories is full of what looks like other markers ("/I/usr/inc" holds "/u"), so an
// option that starts as one is one, a "-F" inside it aside.
bool namesDirectories(std::string_view option) {
  return option.size() >= 2 && (option[0] == '/' || option[0] == '-') &&
         (option[1] == 'I' || option[1] == 'i');
}

}  // namespace

void KorelPre16::Init(const tAutoArray<tString>& options, unsigned char skipEnvironment) {
  clear();
  clearErrors();
  fileList_.Destroy();
  if (skipEnvironment == 0) {
    const char* directories = std::getenv("INCLUDE");
    if (directories != nullptr) addDirectories(directories);
  }
  for (int i = 0; i < options.count(); ++i) takeOption(options[i]);
}

void KorelPre16::takeOption(std::string_view option) {
  const bool directories = namesDirectories(option);
  for (const tOptionGroup& group : kOptionGroups) {
    if (directories && (group.option == eOption::kUser || group.option == eOption::kIgnored)) {
      continue;
    }
    for (const std::string_view spelling : group.spellings) {
      const std::size_t at = spelling.empty() ? tString::npos : option.find(spelling);
      if (at == tString::npos) continue;
      const std::string_view whole = option.substr(at + spelling.size());
      const std::string_view rest = whole.substr(0, kLongestValue);
      switch (group.option) {
        case eOption::kFile:
          // A name that stands at the start is the run's own and is not cut.
          fileList_.add(new tString(normaliseFileName(at == 0 ? whole : rest)));
          break;
        case eOption::kUser:
          userValue_ = tString(rest);
          break;
        case eOption::kDirectories:
          addDirectories(rest);
          break;
        case eOption::kDefine:
          addDefine(rest);
          break;
        case eOption::kIgnored:
          break;
      }
      return;
    }
  }
}

void KorelPre16::addDirectories(std::string_view list) {
  for (;;) {
    const std::size_t end = list.find(';');
    const std::string_view directory = list.substr(0, end);
    if (!directory.empty()) IncludePath().add(new tString(directory));
    if (end == std::string_view::npos) return;
    list.remove_prefix(end + 1);
  }
}

void KorelPre16::addDefine(std::string_view text) {
  const std::size_t equals = text.find('=');
  if (equals == std::string_view::npos) return define(text, std::nullopt);
  define(text.substr(0, equals), text.substr(equals + 1));
}

void KorelPre16::define(std::string_view name, std::optional<std::string_view> value) {
  // Plain lines are searched for words only.
  if (!std::all_of(name.begin(), name.end(), isWordByte)) setPlainLines(false);
  tSpcString key;
  key.setText(tString(name));
  tAutoArray<tSpcString> tokens;
  if (value) {
    tokens.add(new tSpcString(tString(*value)));
  }
  defines()->enter(std::make_unique<tTranslate>(this, key, tokens));
}

void KorelPre16::setWarnings(const tWarningSet& wanted) {
  lint_ = wanted.empty() ? nullptr : std::make_unique<tLint>(wanted);
  setSourceWatcher(lint_.get());
}

std::vector<tDiagnosis> KorelPre16::takeWarnings() {
  return lint_ == nullptr ? std::vector<tDiagnosis>() : lint_->take();
}

void KorelPre16::doIt(tString& output, tString& errorText) {
  try {
    for (int i = 0; i < fileList_.count(); ++i) {
      if (!doFile(fileList_[i], output, errorText)) return;
    }
  } catch (const SSException& failure) {
    diagnosis_ = lastDiagnosis();
    if (diagnosis_.slug.empty()) {
      diagnoseOther(failure.errorId(), "runtime-error", tString(failure.message()));
    }
    fail(toldOf(failure, shownName_.empty() ? bareName(currentFile_) : shownName_), errorText);
    qdprintf("%s", errorText.c_str());
  } catch (const tAllocationError&) {
    throw;  // no error of a source
  } catch (const tDamagedImage&) {
    throw;
  } catch (const tFatalError& failure) {
    diagnoseOther(0, "internal-error",
                  tString::format("%s in file %s at line %u", failure.text(), failure.unit(),
                                  failure.line()));
    fail(::toldOf(failure), errorText);
    qdprintf("%s\n", errorText.c_str());
  }
}

bool KorelPre16::doFile(const tString& name, tString& output, tString& errorText) {
  currentFile_ = name;
  tPathParts parts;
  SplitPath(name, parts);
  parts.drive.append(parts.directory);
  if (!files().exists(name.c_str()) && !hasExtLoadFile()) {
    diagnoseOther(0, "file-not-found", tString::borrow("File not found"));
    const tString shown = visibleControls(bareName(name));
    fail(tString::format("%s %s\n", translate("File not found").c_str(), shown.c_str()), errorText);
    qdprintf("%s", errorText.c_str());
    return false;
  }
  if (compile(name.c_str(), parts.drive.c_str(), errorText, 0)) {
    int depth = 0;
    processLines(output, depth);
  }
  return true;
}

void KorelPre16::fail(const tString& message, tString& errorText) {
  ++errorCount_;
  errorText = message;
  errString() = message;
}

// What is wrong with the file as a whole.
void KorelPre16::diagnoseOther(int code, const char* slug, const tString& message) {
  diagnosis_ = {};
  diagnosis_.code = code;
  diagnosis_.slug = tString::borrow(slug);
  diagnosis_.message = message;
  diagnosis_.file = currentFile_;
}

void KorelPre16::clearErrors() {
  diagnosis_ = {};
  errorCount_ = 0;
  errString().clear();
}

}  // namespace precomp
