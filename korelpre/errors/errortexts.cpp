#include "korelpre/errors/errortexts.h"

namespace precomp {

namespace {

constexpr tErrorText kErrorTexts[] = {
#define SOURCE_ERROR(name, number, slug, text) {number, slug, text},
#include "korelpre/errors/sourceerrors.def"
#undef SOURCE_ERROR
};

}  // namespace

std::span<const tErrorText> errorTexts() {
  return kErrorTexts;
}

const tErrorText& errorTextOf(int code) {
  for (const tErrorText& entry : kErrorTexts) {
    if (entry.code == code) return entry;
  }
  return std::end(kErrorTexts)[-1];
}

}  // namespace precomp
