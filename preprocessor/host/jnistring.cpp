#include "preprocessor/host/jnistring.h"

#include <cstddef>
#include <new>

namespace {

/// What String.getBytes answers, as a local reference; null after an exception, which is pending.
jbyteArray nativeBytes(JNIEnv* environment, jstring hostString) {
  jclass type = environment->FindClass("java/lang/String");
  if (type == nullptr) return nullptr;
  const tLocalReference typeReference(environment, type);
  jmethodID getBytes = environment->GetMethodID(type, "getBytes", "()[B");
  if (getBytes == nullptr) return nullptr;
  auto* bytes = static_cast<jbyteArray>(environment->CallObjectMethod(hostString, getBytes));
  jthrowable thrown = environment->ExceptionOccurred();
  if (thrown == nullptr) return bytes;
  environment->DeleteLocalRef(thrown);
  return nullptr;
}

}  // namespace

char* JNU_GetStringNativeChars(JNIEnv* environment, jstring hostString) {
  if (hostString == nullptr || environment->EnsureLocalCapacity(2) < 0) return nullptr;
  jbyteArray bytes = nativeBytes(environment, hostString);
  if (bytes == nullptr) return nullptr;
  const tLocalReference bytesReference(environment, bytes);
  const jsize length = environment->GetArrayLength(bytes);
  char* text = new (std::nothrow) char[static_cast<std::size_t>(length) + 1];
  if (text == nullptr) {
    JNU_ThrowByName(environment, "java/lang/OutOfMemoryError", nullptr);
    return nullptr;
  }
  environment->GetByteArrayRegion(bytes, 0, length, reinterpret_cast<jbyte*>(text));
  text[length] = '\0';
  return text;
}

void JNU_ThrowByName(JNIEnv* environment, const char* className, const char* message) {
  jclass type = environment->FindClass(className);
  if (type == nullptr) return;
  environment->ThrowNew(type, message);
  environment->DeleteLocalRef(type);
}
