#pragma once

#include <string>

/// The language of messages for people, as the variables LC_ALL, LC_MESSAGES and LANG name it, the
/// first that is set, and LANGUAGE, which may prefer others: the name of a locale for krpre_host,
/// empty for English.
std::string messageLanguage();
