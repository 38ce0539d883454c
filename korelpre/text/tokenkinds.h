#pragma once

#include "ssvp40xpf/korelpreproductions.h"

namespace precomp {

/// What a token of a statement is: the number of the directive grammar's production of `token` that
/// made it (kKindIdentifier ...). Tokens made from bare text have kind 0.
using enum korelpre::eTokenProduction;

}  // namespace precomp
