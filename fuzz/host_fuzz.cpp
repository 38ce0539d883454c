// What hosts hand to the interface: strings and failures of a Java virtual machine, texts in any
// encoding, names, command lines, descriptions of hosts of any size. Conversions must be sound and
// lead back; each failure is seen and nothing is lost; a text is cut only where its reader says.
//
// The first byte of the input chooses what is handed over, see kSubjects. No argument names a file,
// so that nothing on the disk is touched but the header that is read.

#include <jni.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/bytereader.h"
#include "fuzz/check.h"
#include "include/krpre.h"
#include "lib_gzip/zipsource.h"
#include "preprocessor/host/textencoding.h"
#include "tests/support/javamachine.h"

namespace {

std::string cut(tByteReader& input, char separator = '\0') {
  const std::string_view rest = input.rest();
  std::string text(rest.substr(0, rest.find(separator)));
  input = tByteReader(rest.substr(std::min(text.size() + 1, rest.size())));
  return text;
}

std::u16string unitsOf(tByteReader& input, std::size_t most) {
  std::u16string units;
  while (units.size() < most && !input.rest().empty()) {
    units += static_cast<char16_t>(input.word(2));
    if (units.back() == u'@') units.back() = u'A';
  }
  return units;
}

int stepsToFailure = 0;  // 0: no step fails
int failures = 0;

bool stepFails() {
  if (stepsToFailure == 0 || --stepsToFailure > 0) return false;
  ++failures;
  return true;
}

/// Lets the machine's step of this number fail, none if it is 0.
void failAt(tMachine& machine, unsigned step) {
  stepsToFailure = static_cast<int>(step);
  failures = 0;
  machine.stepFails = stepFails;
}

void checkMachine(const tMachine& machine) {
  require(machine.callsWhilePending == 0, "nothing is called while an exception is pending");
  require(machine.references == 0, "no local reference is left");
  require(machine.pinned == 0, "no characters stay pinned");
}

void prebuild(tByteReader& input) {
  tMachine machine;
  failAt(machine, input.byte() % 32);
  std::vector<std::u16string> elements(input.byte() % 6);
  for (std::u16string& element : elements) element = unitsOf(input, input.byte() % 16);
  for (const std::u16string& element : elements) {
    machine.elements.push_back(element == u"-" ? nullptr : element.c_str());
  }
  const int result = Java_Krpre_prebuild(machine.environment(), nullptr, tMachine::kArray);
  require(result == KRPRE_OK || machine.pending, "a run without sources succeeds");
  require(machine.pending == (failures > 0), "a failure is pending in the end");
  checkMachine(machine);
}

/// Whether another reader takes it for UTF-8.
bool isUtf8Elsewhere(std::string_view bytes) {
  try {
    nlohmann::json(bytes).dump();
    return true;
  } catch (const nlohmann::json::exception&) {
    return false;
  }
}

void convertText(tByteReader& input) {
  const std::string_view bytes = input.rest();
  const bool utf8 = isUtf8(bytes);
  require(utf8 == isUtf8Elsewhere(bytes), "both readers agree on what is UTF-8");
  const std::string modified = modifiedUtf8FromText(bytes);
  require(modified.find('\0') == std::string::npos, "modified UTF-8 holds no zero");
  const tString back = utf8FromModified(modified);
  if (utf8 && bytes.find('\0') == std::string_view::npos) {
    requireEqual(back, bytes, "UTF-8 comes back");
  }
  utf8FromModified(bytes);
  require(isUtf8(utf8FromUtf16(unitsOf(input, bytes.size()))), "UTF-16 becomes UTF-8");
}

void readHeader(tByteReader& input) {
  static const int kFile = memfd_create("header", 0);
  const bool packs = input.byte() % 2 != 0;
  tMachine machine;
  failAt(machine, input.byte() % 4);
  const std::string_view text = input.rest();
  if (!packs && isZipSource(text)) return;  // a damaged one ends the process
  const tString packed = packs ? packZipSource(text) : tString(text);
  require(ftruncate(kFile, 0) == 0, "the file is emptied");
  require(pwrite(kFile, packed.c_str(), packed.size(), 0) >= 0, "and filled");
  // The name is that of the file behind the descriptor.
  const std::string name = "/proc/self/fd/" + std::to_string(kFile);
  const std::u16string wide(name.begin(), name.end());
  jstring read = Java_Krpre_getCH(machine.environment(), nullptr, tMachine::text(wide.c_str()));
  require((read == nullptr) == (failures > 0), "a text unless something failed");
  require(machine.pending == (failures > 0), "a failure is pending in the end");
  checkMachine(machine);
  if (read == nullptr) return;
  std::string expected(packs ? text.substr(0, text.find('\0')) : text);
  expected = modifiedUtf8FromText(expected + "\r\n");
  requireEqual(machine.made, expected, "the header and a line end");
}

using tQuestion = std::size_t(const char* first, const char* second, char* answer,
                              std::size_t size);

void ask(tQuestion* question, tByteReader& input) {
  const std::size_t size = input.byte();
  const std::string first = cut(input);
  const std::string second = cut(input);
  const std::size_t full = question(first.c_str(), second.c_str(), nullptr, 0);
  std::string whole(full + 1, 'x');
  require(question(first.c_str(), second.c_str(), whole.data(), whole.size()) == full,
          "the length");
  require(whole.back() == '\0', "a zero ends it");
  std::vector<char> part(size, 'x');
  require(question(first.c_str(), second.c_str(), part.data(), size) == full, "the length again");
  if (size == 0) return;
  const std::size_t kept = std::min(size - 1, full);
  require(std::memcmp(part.data(), whole.data(), kept) == 0 && part[kept] == '\0', "it is cut");
}

void askQuestions(tByteReader& input) {
  const std::string_view rest = input.rest();
  ask(krpre_output_name, input);
  input = tByteReader(rest);
  ask(krpre_translate, input);
  input = tByteReader(rest);
  ask([](const char*, const char*, char* answer,
         std::size_t size) { return krpre_headers_directory(answer, size); },
      input);
  const int source = krpre_is_source(std::string(rest).c_str());
  require(source == 0 || source == 1, "yes or no");
}

void runCommandLine(tByteReader& input) {
  const int count = static_cast<int>(input.byte()) - 2;
  std::string line(input.rest());
  std::replace(line.begin(), line.end(), '@', 'A');
  int silencer = -1;
  const int saved = redirectOutPut(&silencer);
  const int result = executeKrpreDll(count, line.c_str());
  restoreOutPut(saved, silencer);
  close(saved);
  require(result == KRPRE_OK, "a run without sources succeeds");
}

/// What a host hears of the one text that it gives.
struct tHeard {
  int outputs = 0;
  int failures = 0;
  int results = 0;
  std::string messages;
};

void hear(krpre_host& host, tHeard& heard) {
  host.context = &heard;
  host.message = [](void* to, const char* text, std::size_t length) {
    require(text[length] == '\0', "a zero ends a message");
    static_cast<tHeard*>(to)->messages.append(text, length);
  };
  host.output = [](void* to, const char*, const char* text, std::size_t length) {
    require(text[length] == '\0', "a zero ends an output");
    ++static_cast<tHeard*>(to)->outputs;
  };
  host.diagnostic = [](void* to, const krpre_diagnostic* report) {
    tHeard& all = *static_cast<tHeard*>(to);
    if (report->severity == KRPRE_SEVERITY_ERROR) ++all.failures;
    if (report->severity == KRPRE_SEVERITY_RESULT) ++all.results;
  };
}

void runText(tByteReader& input) {
  tHeard heard;
  krpre_host host{};
  host.size = sizeof host - input.byte() % 4 * sizeof(void*);
  hear(host, heard);
  const unsigned counts = input.byte();
  const std::string language = cut(input, '\n'), directory = cut(input, '\n');
  const std::string name = cut(input, '\n'), value = cut(input, '\n'), source = cut(input, '\n');
  const char* const directories[] = {directory.c_str(), counts == 1 ? nullptr : "dir"};
  const krpre_define defines[] = {{name.c_str(), value.c_str()}, {"Other", nullptr}};
  host.language = language.c_str();
  host.includeDirectoryCount = counts % 3;
  host.includeDirectories = counts == 2 ? nullptr : directories;
  host.defineCount = counts / 3 % 3;
  host.defines = counts == 6 ? nullptr : defines;
  krpre_headers* const headers = krpre_headers_new(0);
  host.headers = headers;
  const std::string_view text = input.rest();
  const int result = krpre_text(0, nullptr, &host, source.c_str(), text.data(), text.size());
  require(krpre_headers_read(headers) >= 0 && krpre_headers_reused(headers) >= 0, "counts");
  krpre_headers_free(headers);
  require(result == 0 || result == 1 || result == 15 || result == -1, "a result of the run");
  require((heard.outputs == 1) == (result == 0), "an output exactly after a success");
  require(result == 0 || heard.failures == 0 || !heard.messages.empty(), "failures are told");
}

void (*const kSubjects[])(tByteReader& input) = {prebuild,     convertText,    readHeader,
                                                 askQuestions, runCommandLine, runText};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const tSilence silence;
  tByteReader input(bytes, size);
  const unsigned subject = input.byte();
  kSubjects[subject % std::size(kSubjects)](input);
  return 0;
}
