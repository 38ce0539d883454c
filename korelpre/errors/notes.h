#pragma once

#include <initializer_list>
#include <string_view>

#include "korelpre/errors/diagnostic.h"

namespace precomp {

/// A text with `arguments` in the places of "%1" to "%9".
tString filled(std::string_view text, std::initializer_list<std::string_view> arguments);

/// A note without a place, in English and in the language of the run. `text` is a literal of the
/// files in translations/.
tNote noted(const char* text, std::initializer_list<std::string_view> arguments = {});

}  // namespace precomp
