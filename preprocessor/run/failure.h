#pragma once

#include "lib_base/stringz.h"

/// Prints what the exception that is being handled says and returns it in English. To be called in
/// a catch clause.
tString reportException();
