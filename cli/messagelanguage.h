#pragma once

#include <string>

/// The language of messages for people, as the name of a locale for krpre_host; empty for English.
/// It is named by the first of the environment variables LC_ALL, LC_MESSAGES and LANG that is set,
/// unless LANGUAGE prefers another.
std::string messageLanguage();
