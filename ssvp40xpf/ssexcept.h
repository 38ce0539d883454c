#pragma once

#include <array>
#include <cstddef>
#include <exception>
#include <initializer_list>
#include <memory>
#include <new>

/// The runtime's error numbers; sserrors.def lists them with their texts.
enum eSSError : unsigned {
#define SS_ERROR(name, number, text) name = number,
#include "ssvp40xpf/sserrors.def"
#undef SS_ERROR
};

constexpr int kSSOutOfStorage = -1;

/// The text (a printf format) of an error; empty for an unknown number.
const char* ssErrorText(unsigned number);

/// One argument of an exception: nothing, a number, or a string that it owns.
class SSExceptionArgument {
 public:
  enum eKind { kEmpty, kNumber, kString };

  SSExceptionArgument() = default;
  SSExceptionArgument(long number) : kind_(kNumber), number_(number) {}
  /// Copies the string; null counts as an empty string.
  SSExceptionArgument(const char* text);
  SSExceptionArgument(const SSExceptionArgument& other);
  SSExceptionArgument& operator=(const SSExceptionArgument& other);

  eKind kind() const { return kind_; }
  long number() const { return number_; }
  const char* text() const { return text_ ? text_.get() : ""; }

 private:
  eKind kind_ = kEmpty;
  long number_ = 0;
  std::unique_ptr<char[]> text_;
};

/// A numbered error of the runtime or of code built on it. Copying copies the arguments too.
class SSException : public std::exception {
 public:
  static constexpr std::size_t kArguments = 8;
  static constexpr std::size_t kMessageLength = 511;

  /// Arguments beyond the eighth are dropped; a text longer than 511 characters is truncated.
  SSException(int number, const char* text,
              std::initializer_list<SSExceptionArgument> arguments = {});

  int errorId() const { return number_; }
  const char* message() const { return message_.data(); }
  const char* what() const noexcept override { return message_.data(); }
  /// The argument at the zero-based `index`; an empty one beyond the eighth.
  const SSExceptionArgument& argument(std::size_t index) const;

  /// Allocating an exception never calls the allocation-failure handler, which raises one itself;
  /// `new` returns null when out of memory.
  static void* operator new(std::size_t size) noexcept;
  static void operator delete(void* storage);

 private:
  int number_;
  std::array<SSExceptionArgument, kArguments> arguments_;
  std::array<char, kMessageLength + 1> message_{};
};

/// Raised by the allocation-failure handler; its number is -1.
class SSExceptionOutOfStorage : public SSException {
 public:
  SSExceptionOutOfStorage();
};

/// The process-wide mode of raising errors.
class SSExceptionInfo {
 public:
  /// Enables or disables exceptions and returns the previous setting. While they are disabled, a
  /// failing operation just returns its failure value (none, null, false or 1). Initially enabled.
  static bool setException(bool enabled);
  /// Selects throwing by pointer (true) or by value (false, the default); returns the previous
  /// setting.
  static bool setThrowPointer(bool pointer);
  static bool exceptionsEnabled();
  static bool throwPointer();
};

/// Raises SSExceptionOutOfStorage: by value, or by pointer in throw-pointer mode.
[[noreturn]] void SSExceptionNewHandler();
/// Makes SSExceptionNewHandler the allocation-failure handler; returns the previous handler.
std::new_handler setSSExceptionNewHandler();

/// Base of every class that can raise an error. Has a slot for the last exception that the object
/// raised in throw-pointer mode.
class SSExceptionPresent {
 public:
  SSExceptionPresent() = default;
  SSExceptionPresent(const SSExceptionPresent&) = delete;
  SSExceptionPresent& operator=(const SSExceptionPresent&) = delete;

  /// Raises error `number` with a printf-style text and up to eight arguments, each a number or a
  /// string. Throws by value, or by pointer in throw-pointer mode (the slot then refers to the
  /// exception, and whoever catches it must `delete` it). Returns if exceptions are disabled. A
  /// formatted text longer than an exception's message is truncated; one that exceeds even the
  /// formatting buffer (kFormatLength characters) raises SSErrorMessageTooLong.
  template <class... Arguments>
  void throwException(unsigned number, const char* format, const Arguments&... arguments) const {
    static_assert(sizeof...(arguments) <= SSException::kArguments);
    if (SSExceptionInfo::exceptionsEnabled()) {
      raiseFormatted(number, format, {SSExceptionArgument(arguments)...});
    }
  }

  /// Calls throwException with the text of that error number.
  template <class... Arguments>
  void raise(eSSError error, const Arguments&... arguments) const {
    throwException(error, ssErrorText(error), arguments...);
  }

  static constexpr std::size_t kFormatLength = 8191;

  /// The exception in the slot, or null; the slot is not changed.
  SSException* lastException() const { return last_; }
  /// The exception in the slot, or null; ownership passes to the caller.
  SSException* takeLastException() const;
  /// Empties the slot, freeing an exception that the object still owns.
  void clearLastException() const;
  /// Puts an exception into the slot, which owns it until it is taken.
  void keepException(SSException* exception) const;

 protected:
  ~SSExceptionPresent() { clearLastException(); }

 private:
  void raiseFormatted(unsigned number, const char* format,
                      std::initializer_list<SSExceptionArgument> arguments) const;

  mutable SSException* last_ = nullptr;
  mutable bool ownsLast_ = false;
};
