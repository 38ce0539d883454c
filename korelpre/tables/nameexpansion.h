#pragma once

#include <cstdint>

#include "korelpre/tables/ruletable.h"

namespace precomp {

/// How many rewrites one statement may take; one more is a circular definition.
constexpr int kMostRewrites = 100;

/// The tables that decide what becomes of a name.
struct tNameTables {
  tXChgArray& defines;
  tXChgArray& translates;
  /// Changes whenever one of them does.
  std::uint64_t generation() const {
    return defines.index().generation() + translates.lookup().generation();
  }
};

/// Whether the only definition of a name has parameters, so that it means nothing without a "("
/// behind it.
bool isMacro(const tIndexedName& name);

/// What the definition of `name` makes of a use; kept in the entry until a table changes. Null when
/// only the rewriting of the statement can tell. `level` counts the nested calls.
const tNameExpansion* expandName(tNameTables tables, tIndexedName& name, int level = 0);

}  // namespace precomp
