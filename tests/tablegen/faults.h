#pragma once

#include <gtest/gtest.h>

#include <string>

#include "tools/tablegen/generror.h"

namespace tablegen {

struct tFault {
  std::string source;
  const char* message;
};

/// Expects that `read` refuses each source with the message beside it.
template <class Read, std::size_t kCount>
void expectFaults(const tFault (&faults)[kCount], Read read) {
  for (const tFault& fault : faults) {
    try {
      read(fault.source);
      ADD_FAILURE() << "accepted: " << fault.source;
    } catch (const tGenError& error) {
      EXPECT_STREQ(error.what(), fault.message) << fault.source;
    }
  }
}

}  // namespace tablegen
