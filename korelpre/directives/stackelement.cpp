#include "korelpre/directives/stackelement.h"

#include "korelpre/text/tokenkinds.h"

namespace precomp {

void tKorelPreStackElement::add(const tSpcString& token) {
  if (token.kind() == kKindSpace) {
    pendingSpacing_ = token;
    return;
  }
  auto added = std::make_unique<tSpcString>();
  *added = token;
  added->setSpacing(pendingSpacing_);
  pendingSpacing_.clear();
  list_.add(added.release());
}

void tKorelPreStackElement::clearValues() {
  token_.clear();
  list_.Destroy();
  pendingSpacing_.clear();
  marker_.reset();
  chain_.reset();
}

}  // namespace precomp
