#pragma once

#include <string>

#include "lib_base/fatal.h"

/// The text of the fatal error that `action` ends with; empty when there is none.
template <class Action>
std::string fatalOf(Action action) {
  try {
    action();
  } catch (const tFatalError& error) {
    return error.text();
  }
  return {};
}
