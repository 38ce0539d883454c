#include "ssvp40xpf/sssto.h"

#include <algorithm>

bool SSSetArray::add(unsigned value) {
  if (holds(value)) return true;
  if (members_.size() >= capacity_) {
    raise(SSErrorSetFull);
    return false;
  }
  members_.push_back(value);
  return true;
}

bool SSSetArray::holds(unsigned value) const {
  return std::find(members_.begin(), members_.end(), value) != members_.end();
}
