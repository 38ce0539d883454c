#pragma once

#include <jni.h>

#include <memory>
#include <vector>

/// The elements of an array of host strings as an argument vector.
///
/// Each string is converted by JNU_GetStringNativeChars. Where that loses a character, because the
/// virtual machine's default encoding does not have it, the argument is UTF-8 instead: a "?" in its
/// place would name no file. A null element is a null slot, and so is one that cannot be converted
/// or that holds the character 0, behind which the run would not see it.
///
/// What the virtual machine throws on the way is kept, the first of it, until throwFailure: nothing
/// is pending while the run goes on. No local reference is left for an element.
class tJniArguments {
 public:
  /// `array` may be null, and is then an empty one. Both must outlive this object.
  tJniArguments(JNIEnv* environment, jobjectArray array);
  ~tJniArguments();
  tJniArguments(const tJniArguments&) = delete;
  tJniArguments& operator=(const tJniArguments&) = delete;

  int count() const { return static_cast<int>(slots_.size()); }
  char** slots() { return slots_.data(); }
  /// Makes what was kept pending, if anything was.
  void throwFailure();

 private:
  /// The slot of one element; null when the conversion fails, and then an exception may be pending.
  char* convert(jstring element);
  void keepFailure();

  JNIEnv* environment_;
  std::vector<std::unique_ptr<char[]>> owned_;
  std::vector<char*> slots_;
  jthrowable failure_ = nullptr;
};
