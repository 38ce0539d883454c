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

/// What a message is about: "%1" in its texts stands for the first of them.
using tMessageArguments = std::initializer_list<std::string_view>;

/// Prints a message in the language of the run.
void printMessage(eMessage message, tMessageArguments arguments = {});

/// What a host is told: severity, slug and text, in English. File and place are the caller's to
/// add.
precomp::tDiagnosis diagnosisOf(eMessage message, tMessageArguments arguments = {});
