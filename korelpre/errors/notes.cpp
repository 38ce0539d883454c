#include "korelpre/errors/notes.h"

#include <algorithm>

#include "lib_base/output.h"
#include "lib_base/translate.h"

namespace precomp {

tString filled(std::string_view text, std::initializer_list<std::string_view> arguments) {
  tString result;
  while (!text.empty()) {
    const std::size_t plain = std::min(text.find('%'), text.size());
    result.append(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.size() < 2) break;
    const auto index = static_cast<std::size_t>(text[1] - '1');
    if (index < arguments.size()) result.append(arguments.begin()[index]);
    text.remove_prefix(2);
  }
  return result;
}

tNote noted(const char* text, std::initializer_list<std::string_view> arguments) {
  tNote note;
  note.message = filled(text, arguments);
  const tString translated = translate(text);
  if (translated != text) note.translated = visibleControls(filled(translated, arguments));
  return note;
}

}  // namespace precomp
