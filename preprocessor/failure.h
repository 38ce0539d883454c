#pragma once

/// Prints what the exception that is being handled says. To be called in a catch clause.
void reportException();
