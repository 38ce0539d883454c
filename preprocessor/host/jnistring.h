#pragma once

#include <jni.h>

/// The bytes of `hostString` in the virtual machine's default encoding, zero-terminated; the caller
/// frees them with delete[]. Null for a null string and if the conversion fails; an exception is
/// pending then, java.lang.OutOfMemoryError if memory ran out here. No local reference is left.
char* JNU_GetStringNativeChars(JNIEnv* environment, jstring hostString);

/// Throws a new exception of the class ("java/lang/Error", say) with `message`, which may be null.
/// If there is no such class, the exception of FindClass is pending instead.
void JNU_ThrowByName(JNIEnv* environment, const char* className, const char* message);

/// Deletes a local reference, which may be null, at the end of the scope.
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
