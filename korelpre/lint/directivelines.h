#pragma once

#include <string_view>
#include <vector>

#include "korelpre/text/directivewords.h"

namespace precomp {

/// A line of a text that begins with a directive, whether or not a conditional skips it.
struct tDirectiveLine {
  eDirective directive;
  int line;
  std::string_view name;  // the word behind the directive, or the name in quotes; may be empty
  int column;             // of the name
};

/// All of them; the text must end with a line feed, and outlive what is returned.
std::vector<tDirectiveLine> directiveLinesOf(std::string_view text);

}  // namespace precomp
