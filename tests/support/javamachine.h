#pragma once

#include <jni.h>

#include <cstdarg>
#include <string>
#include <string_view>
#include <vector>

/// The few functions of a Java virtual machine that the library calls. Strings are UTF-16 in
/// memory, the default encoding is ASCII, and each step can be made to fail.
class tMachine {
 public:
  tMachine() {
    functions_.GetArrayLength = [](JNIEnv* e, jarray array) {
      return array == kBytes ? static_cast<jsize>(of(e).bytes_.size())
                             : static_cast<jsize>(of(e).elements.size());
    };
    functions_.GetObjectArrayElement = [](JNIEnv* e, jobjectArray, jsize i) {
      const char16_t* text = of(e).step().elements[static_cast<std::size_t>(i)];
      if (text != nullptr) ++of(e).references;
      return reinterpret_cast<jobject>(const_cast<char16_t*>(text));
    };
    functions_.GetStringLength = [](JNIEnv* e, jstring text) {
      of(e).step();
      return static_cast<jsize>(characters(text).size());
    };
    functions_.GetStringChars = [](JNIEnv* e, jstring text, jboolean*) -> const jchar* {
      if (of(e).step().fails()) return nullptr;
      ++of(e).pinned;
      return reinterpret_cast<const jchar*>(text);
    };
    functions_.ReleaseStringChars = [](JNIEnv* e, jstring, const jchar*) { --of(e).pinned; };
    functions_.EnsureLocalCapacity = [](JNIEnv* e, jint) {
      return of(e).step().fails() ? JNI_ERR : JNI_OK;
    };
    functions_.FindClass = [](JNIEnv* e, const char* name) -> jclass {
      if (of(e).step().fails()) return nullptr;
      of(e).lastClass_ = name;
      ++of(e).references;
      return kClass;
    };
    functions_.GetMethodID = [](JNIEnv* e, jclass, const char*, const char*) -> jmethodID {
      return of(e).step().fails() ? nullptr : reinterpret_cast<jmethodID>(1);
    };
    functions_.CallObjectMethodV = [](JNIEnv* e, jobject text, jmethodID, va_list) -> jobject {
      if (of(e).step().fails()) return nullptr;
      ++of(e).references;
      of(e).bytes_.clear();
      for (const char16_t c : characters(text)) {
        of(e).bytes_ += c < 0x80 ? static_cast<char>(c) : '?';
      }
      return kBytes;
    };
    functions_.GetByteArrayRegion = [](JNIEnv* e, jbyteArray, jsize at, jsize length, jbyte* to) {
      of(e).step().bytes_.copy(reinterpret_cast<char*>(to), static_cast<std::size_t>(length),
                               static_cast<std::size_t>(at));
    };
    functions_.ExceptionOccurred = [](JNIEnv* e) -> jthrowable {
      if (!of(e).pending) return nullptr;
      ++of(e).references;
      return kThrowable;
    };
    functions_.ExceptionCheck = [](JNIEnv* e) -> jboolean { return of(e).pending; };
    functions_.ExceptionClear = [](JNIEnv* e) { of(e).pending = false; };
    functions_.Throw = [](JNIEnv* e, jthrowable) -> jint {
      of(e).step().pending = true;
      return 0;
    };
    functions_.ThrowNew = [](JNIEnv* e, jclass, const char*) -> jint {
      of(e).step().pending = true;
      of(e).thrown = of(e).lastClass_;
      return 0;
    };
    functions_.DeleteLocalRef = [](JNIEnv* e, jobject) { --of(e).references; };
    functions_.GetStringUTFChars = [](JNIEnv* e, jstring text, jboolean*) -> const char* {
      if (of(e).step().fails()) return nullptr;
      ++of(e).pinned;
      of(e).bytes_.assign(characters(text).begin(), characters(text).end());
      return of(e).bytes_.c_str();
    };
    functions_.ReleaseStringUTFChars = [](JNIEnv* e, jstring, const char*) { --of(e).pinned; };
    functions_.NewStringUTF = [](JNIEnv* e, const char* bytes) -> jstring {
      if (of(e).step().fails()) return nullptr;
      of(e).made = bytes;
      return text(u"");
    };
    environment_.functions = &functions_;
    for (std::string* text : {&bytes_, &lastClass_, &made, &thrown}) text->reserve(4000);
  }

  JNIEnv* environment() { return &environment_; }

  std::vector<const char16_t*> elements;
  bool (*stepFails)() = [] { return false; };  // whether the next step throws
  bool pending = false;
  std::string thrown;
  int references = 0;
  int pinned = 0;
  int callsWhilePending = 0;
  std::string made;  // the modified UTF-8 of the newest string

  /// The array whose elements are `elements`.
  inline static const auto kArray = reinterpret_cast<jobjectArray>(10);

  /// A string of ASCII characters, which stay the caller's.
  static jstring text(const char16_t* characters) {
    return reinterpret_cast<jstring>(const_cast<char16_t*>(characters));
  }

 private:
  struct tEnvironment : JNIEnv {
    tMachine* machine;
  };
  static tMachine& of(JNIEnv* environment) {
    return *static_cast<tEnvironment*>(environment)->machine;
  }
  static std::u16string_view characters(jobject text) {
    return reinterpret_cast<const char16_t*>(text);
  }

  /// Called by every function that must not be called while an exception is pending.
  tMachine& step() {
    callsWhilePending += pending ? 1 : 0;
    return *this;
  }
  /// True for the step that fails; the exception is then pending.
  bool fails() {
    if (!stepFails()) return false;
    pending = true;
    return true;
  }

  inline static const auto kBytes = reinterpret_cast<jbyteArray>(2);
  inline static const auto kClass = reinterpret_cast<jclass>(4);
  inline static const auto kThrowable = reinterpret_cast<jthrowable>(6);

  JNINativeInterface_ functions_{};
  tEnvironment environment_{{}, this};
  std::string bytes_;
  std::string lastClass_;
};
