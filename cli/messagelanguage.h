#pragma once

#include <string>

/// The language of messages for people, as the name of a locale for krpre_host; empty for English.
/// It is named by the first of the environment variables LC_ALL, LC_MESSAGES and LANG that is set,
/// unless LANGUAGE prefers another.
std::string messageLanguage();

/// Words of a message in that language, or as they are if there is no translation or no memory.
std::string translated(const std::string& language, const char* text);
