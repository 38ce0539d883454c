#pragma once

#include <jni.h>

#include <memory>
#include <vector>

/// The elements of an array of host strings as an argument vector.
///
/// Each string is converted by JNU_GetStringNativeChars. If that loses a character, because it is
/// missing from the virtual machine's default encoding, the argument is UTF-8 instead: a "?" in its
/// place would not name a file. A null element becomes a null slot, and so does one that cannot be
/// converted or that contains the character 0, which would cut it short.
///
/// The first exception that the virtual machine throws on the way is kept until throwFailure, so
/// that none is pending during the run. No local references to elements are left.
class tJniArguments {
 public:
  /// A null `array` counts as an empty one. Both must outlive this object.
  tJniArguments(JNIEnv* environment, jobjectArray array);
  ~tJniArguments();
  tJniArguments(const tJniArguments&) = delete;
  tJniArguments& operator=(const tJniArguments&) = delete;

  int count() const { return static_cast<int>(slots_.size()); }
  char** slots() { return slots_.data(); }
  /// Throws the exception that was kept, if there is one.
  void throwFailure();

 private:
  /// The slot of one element; null if the conversion fails, when an exception may be pending.
  char* convert(jstring element);
  void keepFailure();

  JNIEnv* environment_;
  std::vector<std::unique_ptr<char[]>> owned_;
  std::vector<char*> slots_;
  jthrowable failure_ = nullptr;
};
