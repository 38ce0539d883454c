#include <jni.h>

#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

#include "include/krpre.h"
#include "lib_base/diskman.h"
#include "lib_base/fatal.h"
#include "preprocessor/host/headertext.h"
#include "preprocessor/host/jniarguments.h"
#include "preprocessor/host/jnistring.h"
#include "preprocessor/host/shippedheaders.h"
#include "preprocessor/host/textencoding.h"

namespace {

/// Runs `action` for the host; should memory run out, `failed` is the answer and the host's
/// OutOfMemoryError is pending. The library's own strings fail by a tFatalError.
template <typename tAction, typename tResult>
tResult guarded(JNIEnv* environment, tResult failed, const tAction& action) {
  try {
    return action();
  } catch (...) {
    if (!environment->ExceptionCheck()) {
      JNU_ThrowByName(environment, "java/lang/OutOfMemoryError", "krpre");
    }
    return failed;
  }
}

/// The failing of an assertion that no host can take for an ordinary result.
[[noreturn]] void endWithDamagedHeader(const std::string& name) {
  // Where hosts have always seen this assertion fail.
  const tFatalError error("damaged packed header", "korelpre/korelprecls", 1452);
  std::fflush(stdout);
  std::fprintf(stderr, "Assertion failed: %s in file %s at line %u: %s\n", error.text(),
               error.unit(), error.line(), name.c_str());
  std::abort();
}

/// The modified UTF-8 of a host string; null when memory ran out in the host.
class tHostName {
 public:
  tHostName(JNIEnv* environment, jstring text)
      : environment_(environment),
        text_(text),
        bytes_(environment->GetStringUTFChars(text, nullptr)) {}
  ~tHostName() {
    if (bytes_ != nullptr) environment_->ReleaseStringUTFChars(text_, bytes_);
  }
  tHostName(const tHostName&) = delete;
  tHostName& operator=(const tHostName&) = delete;

  const char* bytes() const { return bytes_; }

 private:
  JNIEnv* environment_;
  jstring text_;
  const char* bytes_;
};

tString nameOf(JNIEnv* environment, jstring fileName) {
  const tHostName name(environment, fileName);
  if (name.bytes() == nullptr) throw std::bad_alloc();
  return utf8FromModified(name.bytes());
}

std::string headerForHost(const tString& name) {
  tDiskManLocal disk;
  tString text;
  if (readHeaderText(disk, name.c_str(), text) == eHeaderText::kDamaged) {
    endWithDamagedHeader(std::string(name.view()));
  }
  return modifiedUtf8FromText(text);
}

}  // namespace

jint Java_Krpre_prebuild(JNIEnv* environment, jobject /*receiver*/, jobjectArray arguments) {
  return guarded(environment, jint{KRPRE_OUTPUT_FAILED}, [&] {
    tJniArguments vector(environment, arguments);
    const jint result = doPreProc(vector.count(), vector.slots());
    // What the host prints does not go through this buffer and would overtake the messages.
    std::fflush(stdout);
    vector.throwFailure();
    return result;
  });
}

jstring Java_Krpre_getCH(JNIEnv* environment, jobject /*receiver*/, jstring fileName) {
  return guarded(environment, jstring{nullptr}, [&] {
    const tString name = fileName == nullptr ? tString() : nameOf(environment, fileName);
    return environment->NewStringUTF(headerForHost(name).c_str());
  });
}

jstring Java_Krpre_headers(JNIEnv* environment, jclass /*type*/) {
  return guarded(environment, jstring{nullptr}, [&] {
    return environment->NewStringUTF(modifiedUtf8FromText(shippedHeaders()).c_str());
  });
}
