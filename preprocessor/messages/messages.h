#pragma once

#include <cstdint>
#include <initializer_list>
#include <string_view>

#include "korelpre/errors/diagnostic.h"
#include "lib_base/stringz.h"

/// The messages of a run, one for each row of messages.def. Code names a row, never a text.
enum class eMessage : std::uint8_t {
#define MESSAGE(name, severity, slug, told, printed) name,
#include "preprocessor/messages/messages.def"
#undef MESSAGE
};

/// The values for "%1", "%2" and so on in the texts of a message.
using tMessageArguments = std::initializer_list<std::string_view>;

/// Prints a message in the language of the run. It needs no memory, a translation aside: without
/// any the message is in English.
void printMessage(eMessage message, tMessageArguments arguments = {});

/// Severity, slug and text of a message for a host, in English and in the language of the run. The
/// caller adds file and place.
precomp::tDiagnosis diagnosisOf(eMessage message, tMessageArguments arguments = {});
