#include "korelpre/directives/include.h"

#include "korelpre/korelprecls.h"

namespace precomp {

tInclude::tInclude(int line, const tString& name, KorelPreYaccClass& includer)
    : line_(line), name_(name), includer_(includer) {}

tInclude::~tInclude() = default;

bool tInclude::process() {
  processor_ =
      std::make_unique<KorelPreYaccClass>(KorelPreYaccClass::tIncludedBy{includer_, line_});
  tString scratch;
  return processor_->compile(name_.c_str(), nullptr, scratch, 1);
}

}  // namespace precomp
