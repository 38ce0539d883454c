#include "korelpre/rules/arenalist.h"

#include "lib_base/fatal.h"

namespace precomp {

void arenaListOutOfBounds() {
  fatalError("array index out of bounds", "korelpre/rules/arenalist", __LINE__);
}

}  // namespace precomp
