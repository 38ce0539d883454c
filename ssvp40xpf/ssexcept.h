#pragma once

#include <array>
#include <cstddef>
#include <exception>
#include <initializer_list>
#include <memory>
#include <new>

/// Numbers of the runtime's errors; their texts stand beside them in sserrors.def.
enum eSSError : unsigned {
#define SS_ERROR(name, number, text) name = number,
#include "ssvp40xpf/sserrors.def"
#undef SS_ERROR
};

constexpr int kSSOutOfStorage = -1;

/// The text (a printf format) of an error; empty for a number that has none.
const char* ssErrorText(unsigned number);

/// One argument of an exception: nothing, a number, or a string of its own.
class SSExceptionArgument {
 public:
  enum eKind { kEmpty, kNumber, kString };

  SSExceptionArgument() = default;
  SSExceptionArgument(long number) : kind_(kNumber), number_(number) {}
  /// Copies the text; a null pointer counts as an empty text.
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

/// A numbered error of the runtime, or of what is built on it. Copying copies the arguments too.
class SSException : public std::exception {
 public:
  static constexpr std::size_t kArguments = 8;
  static constexpr std::size_t kMessageLength = 511;

  /// Arguments beyond the eighth are dropped; a text longer than 511 characters is cut.
  SSException(int number, const char* text,
              std::initializer_list<SSExceptionArgument> arguments = {});

  int errorId() const { return number_; }
  const char* message() const { return message_.data(); }
  const char* what() const noexcept override { return message_.data(); }
  /// The argument at `index`, from 0; an empty one beyond the eighth.
  const SSExceptionArgument& argument(std::size_t index) const;

  /// Storage of an exception never goes through the allocation-failure handler, which raises one;
  /// `new` gives null when there is none.
  static void* operator new(std::size_t size) noexcept;
  static void operator delete(void* storage);

 private:
  int number_;
  std::array<SSExceptionArgument, kArguments> arguments_;
  std::array<char, kMessageLength + 1> message_{};
};

/// What the allocation-failure handler raises: number -1.
class SSExceptionOutOfStorage : public SSException {
 public:
  SSExceptionOutOfStorage();
};

/// How the whole process raises errors.
class SSExceptionInfo {
 public:
  /// Switches raising on or off and returns the previous value. While it is off an operation that
  /// fails just returns its failing result (none, null, false or 1). On at first.
  static bool setException(bool enabled);
  /// Chooses between throwing a pointer (true) and throwing by value; returns the previous choice.
  /// By value at first.
  static bool setThrowPointer(bool pointer);
  static bool exceptionsEnabled();
  static bool throwPointer();
};

/// Raises SSExceptionOutOfStorage: by value, or by pointer in throw-pointer mode.
[[noreturn]] void SSExceptionNewHandler();
/// Makes SSExceptionNewHandler the allocation-failure handler; returns the previous handler.
std::new_handler setSSExceptionNewHandler();

/// Base of every class that can raise an error. Holds the slot with the last exception that the
/// object raised in throw-pointer mode.
class SSExceptionPresent {
 public:
  SSExceptionPresent() = default;
  SSExceptionPresent(const SSExceptionPresent&) = delete;
  SSExceptionPresent& operator=(const SSExceptionPresent&) = delete;

  /// Raises error `number` with a text formatted by printf rules from up to eight arguments, each
  /// a number or a string: by value, or by pointer in throw-pointer mode (the slot then shows the
  /// exception, and whoever catches it frees it with `delete`). Returns when exceptions are
  /// disabled. A formatted text longer than an exception's message is cut; one that even the
  /// formatting buffer (kFormatLength characters) cannot hold raises SSErrorMessageTooLong.
  template <class... Arguments>
  void throwException(unsigned number, const char* format, const Arguments&... arguments) const {
    static_assert(sizeof...(arguments) <= SSException::kArguments);
    if (SSExceptionInfo::exceptionsEnabled()) {
      raiseFormatted(number, format, {SSExceptionArgument(arguments)...});
    }
  }

  /// throwException with the text that belongs to the number.
  template <class... Arguments>
  void raise(eSSError error, const Arguments&... arguments) const {
    throwException(error, ssErrorText(error), arguments...);
  }

  static constexpr std::size_t kFormatLength = 8191;

  /// The exception in the slot, or null; the slot stays as it is.
  SSException* lastException() const { return last_; }
  /// The exception in the slot, or null; from now on the caller frees it.
  SSException* takeLastException() const;
  /// Empties the slot. Frees an exception that the object keeps and nobody has taken.
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
