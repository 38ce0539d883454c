#include "korelpre/text/spcstring.h"

#include <new>

#include "lib_base/fatal.h"

namespace precomp {

void* tSpcString::allocate(std::size_t size) {
  try {
    return ssPoolAllocate(size);
  } catch (const std::bad_alloc&) {
    fatalAllocation(size, "korelpre/text/spcstring", __LINE__);
  }
}

}  // namespace precomp
