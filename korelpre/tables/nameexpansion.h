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

/// Works out what a use of `name` finally becomes, when a chain of #defines without parameters is
/// all there is to it, and keeps it in the entry until a table changes. Null when only the
/// rewriting of the statement can tell.
const tNameExpansion* expandName(tNameTables tables, tIndexedName& name);

}  // namespace precomp
