#pragma once

#include <jni.h>

/// The bytes of `hostString` in the virtual machine's default encoding, with a zero behind them;
/// the caller frees them with delete[]. Null for a null string and when the conversion fails; what
/// the virtual machine threw then is pending, java.lang.OutOfMemoryError when memory ran out here.
/// No local reference is left.
char* JNU_GetStringNativeChars(JNIEnv* environment, jstring hostString);

/// Throws a new exception of the class (as "java/lang/Error") with `message`, which may be null.
/// When there is no such class, what FindClass threw is pending instead.
void JNU_ThrowByName(JNIEnv* environment, const char* className, const char* message);

/// Deletes a local reference where the scope ends. Null is allowed.
class tLocalReference {
 public:
  tLocalReference(JNIEnv* environment, jobject object)
      : environment_(environment), object_(object) {}
  ~tLocalReference() {
    if (object_ != nullptr) environment_->DeleteLocalRef(object_);
  }
  tLocalReference(const tLocalReference&) = delete;
  tLocalReference& operator=(const tLocalReference&) = delete;

 private:
  JNIEnv* environment_;
  jobject object_;
};
