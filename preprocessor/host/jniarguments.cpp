#include "preprocessor/host/jniarguments.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "preprocessor/host/jnistring.h"
#include "preprocessor/host/textencoding.h"

namespace {

std::unique_ptr<char[]> copyOf(const std::string& text) {
  auto copy = std::make_unique<char[]>(text.size() + 1);
  std::memcpy(copy.get(), text.c_str(), text.size() + 1);
  return copy;
}

/// The characters of a host string; null when memory ran out in the host.
class tHostCharacters {
 public:
  tHostCharacters(JNIEnv* environment, jstring text)
      : environment_(environment),
        text_(text),
        first_(environment->GetStringChars(text, nullptr)) {}
  ~tHostCharacters() {
    if (first_ != nullptr) environment_->ReleaseStringChars(text_, first_);
  }
  tHostCharacters(const tHostCharacters&) = delete;
  tHostCharacters& operator=(const tHostCharacters&) = delete;

  bool isNull() const { return first_ == nullptr; }
  std::u16string_view view() const {
    static_assert(sizeof(jchar) == sizeof(char16_t));
    return {reinterpret_cast<const char16_t*>(first_),
            static_cast<std::size_t>(environment_->GetStringLength(text_))};
  }

 private:
  JNIEnv* environment_;
  jstring text_;
  const jchar* first_;
};

/// True when the conversion wrote "?" for a character that is none.
bool losesCharacters(std::u16string_view text, std::string_view native) {
  const auto count = std::count(native.begin(), native.end(), '?');
  return count != 0 && count != std::count(text.begin(), text.end(), u'?');
}

}  // namespace

tJniArguments::tJniArguments(JNIEnv* environment, jobjectArray array) : environment_(environment) {
  const jsize count = array == nullptr ? 0 : environment->GetArrayLength(array);
  slots_.reserve(static_cast<std::size_t>(count));
  owned_.reserve(static_cast<std::size_t>(count));
  for (jsize i = 0; i < count; ++i) {
    auto* element = static_cast<jstring>(environment->GetObjectArrayElement(array, i));
    const tLocalReference reference(environment, element);
    slots_.push_back(element == nullptr ? nullptr : convert(element));
    keepFailure();
  }
}

tJniArguments::~tJniArguments() {
  if (failure_ != nullptr) environment_->DeleteLocalRef(failure_);
}

void tJniArguments::throwFailure() {
  if (failure_ != nullptr) environment_->Throw(failure_);
}

char* tJniArguments::convert(jstring element) {
  const tHostCharacters characters(environment_, element);
  if (characters.isNull()) return nullptr;
  std::unique_ptr<char[]> native(JNU_GetStringNativeChars(environment_, element));
  if (native == nullptr) return nullptr;
  const std::u16string_view text = characters.view();
  if (text.find(u'\0') != std::u16string_view::npos) {
    JNU_ThrowByName(environment_, "java/lang/IllegalArgumentException",
                    "an argument holds the character 0");
    return nullptr;
  }
  if (losesCharacters(text, native.get())) native = copyOf(utf8FromUtf16(text));
  owned_.push_back(std::move(native));
  return owned_.back().get();
}

void tJniArguments::keepFailure() {
  jthrowable thrown = environment_->ExceptionOccurred();
  if (thrown == nullptr) return;
  environment_->ExceptionClear();
  if (failure_ == nullptr) {
    failure_ = thrown;
  } else {
    environment_->DeleteLocalRef(thrown);
  }
}
