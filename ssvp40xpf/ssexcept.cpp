#include "ssvp40xpf/ssexcept.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

struct tErrorText {
  unsigned number;
  const char* text;
};

constexpr tErrorText kErrorTexts[] = {
#define SS_ERROR(name, number, text) {number, text},
#include "ssvp40xpf/sserrors.def"
#undef SS_ERROR
};

std::atomic<bool> exceptionsOn{true};
std::atomic<bool> pointersThrown{false};

/// Appends one argument formatted by a conversion such as "%5ld". Length modifiers are ignored: a
/// number is always a long.
void appendArgument(std::string& out, std::string conversion, char letter,
                    const SSExceptionArgument& argument) {
  if (letter == 's' && argument.kind() == SSExceptionArgument::kNumber) letter = 'd';
  if (letter != 's') conversion += 'l';
  conversion += letter;
  const auto print = [&](char* to, std::size_t size) {
    return letter == 's' ? std::snprintf(to, size, conversion.c_str(), argument.text())
                         : std::snprintf(to, size, conversion.c_str(), argument.number());
  };
  const int length = print(nullptr, 0);
  if (length <= 0) return;
  const std::size_t before = out.size();
  out.resize(before + static_cast<std::size_t>(length) + 1);
  print(out.data() + before, static_cast<std::size_t>(length) + 1);
  out.pop_back();
}

/// printf with typed arguments; conversions without an argument print nothing.
std::string formatText(const char* format, std::initializer_list<SSExceptionArgument> arguments) {
  std::string out;
  const SSExceptionArgument* argument = arguments.begin();
  for (const char* at = format; *at != '\0'; ++at) {
    if (*at != '%' || *++at == '%') {
      out += *at;
      continue;
    }
    std::string conversion = "%";
    while (*at != '\0' && std::strchr("-+ #0123456789.", *at) != nullptr) conversion += *at++;
    while (*at != '\0' && std::strchr("hlqjzt", *at) != nullptr) ++at;
    if (*at == '\0') break;
    if (std::strchr("diouxXs", *at) == nullptr || argument == arguments.end()) continue;
    appendArgument(out, conversion, *at, *argument++);
  }
  return out;
}

}  // namespace

const char* ssErrorText(unsigned number) {
  const auto* const found =
      std::find_if(std::begin(kErrorTexts), std::end(kErrorTexts),
                   [number](const tErrorText& error) { return error.number == number; });
  return found == std::end(kErrorTexts) ? "" : found->text;
}

SSExceptionArgument::SSExceptionArgument(const char* text) : kind_(kString) {
  if (text == nullptr) return;
  const std::size_t size = std::strlen(text) + 1;
  text_ = std::make_unique<char[]>(size);
  std::memcpy(text_.get(), text, size);
}

SSExceptionArgument::SSExceptionArgument(const SSExceptionArgument& other) {
  *this = other;
}

SSExceptionArgument& SSExceptionArgument::operator=(const SSExceptionArgument& other) {
  if (this == &other) return *this;
  std::unique_ptr<char[]> copied;
  if (other.text_) copied = std::move(SSExceptionArgument(other.text()).text_);
  text_ = std::move(copied);
  kind_ = other.kind_;
  number_ = other.number_;
  return *this;
}

SSException::SSException(int number, const char* text,
                         std::initializer_list<SSExceptionArgument> arguments)
    : number_(number) {
  std::copy_n(arguments.begin(), std::min(arguments.size(), kArguments), arguments_.begin());
  const std::size_t length = strnlen(text, kMessageLength);
  std::memcpy(message_.data(), text, length);
}

const SSExceptionArgument& SSException::argument(std::size_t index) const {
  static const SSExceptionArgument kNone;
  return index < kArguments ? arguments_[index] : kNone;
}

void* SSException::operator new(std::size_t size) noexcept {
  return std::malloc(size);
}

void SSException::operator delete(void* storage) {
  std::free(storage);
}

SSExceptionOutOfStorage::SSExceptionOutOfStorage()
    : SSException(kSSOutOfStorage, "SSException0001e: Out of storage") {}

bool SSExceptionInfo::setException(bool enabled) {
  return exceptionsOn.exchange(enabled);
}

bool SSExceptionInfo::setThrowPointer(bool pointer) {
  return pointersThrown.exchange(pointer);
}

bool SSExceptionInfo::exceptionsEnabled() {
  return exceptionsOn.load(std::memory_order_relaxed);
}

bool SSExceptionInfo::throwPointer() {
  return pointersThrown.load(std::memory_order_relaxed);
}

void SSExceptionNewHandler() {
  if (SSExceptionInfo::throwPointer()) {
    SSException* const exception = new SSExceptionOutOfStorage;
    if (exception != nullptr) throw exception;
  }
  throw SSExceptionOutOfStorage();
}

std::new_handler setSSExceptionNewHandler() {
  return std::set_new_handler(SSExceptionNewHandler);
}

void SSExceptionPresent::raiseFormatted(
    unsigned number, const char* format,
    std::initializer_list<SSExceptionArgument> arguments) const {
  std::string text = formatText(format, arguments);
  if (text.size() > kFormatLength) {
    number = SSErrorMessageTooLong;
    text = ssErrorText(number);
  }
  SSException exception(static_cast<int>(number), text.c_str(), arguments);
  if (!SSExceptionInfo::throwPointer()) throw exception;

  SSException* const thrown = new SSException(exception);
  if (thrown == nullptr) throw SSExceptionOutOfStorage();
  clearLastException();
  last_ = thrown;
  throw thrown;
}

SSException* SSExceptionPresent::takeLastException() const {
  ownsLast_ = false;
  return last_;
}

void SSExceptionPresent::clearLastException() const {
  if (ownsLast_) delete last_;
  last_ = nullptr;
  ownsLast_ = false;
}

void SSExceptionPresent::keepException(SSException* exception) const {
  if (exception != last_) clearLastException();
  last_ = exception;
  ownsLast_ = true;
}
