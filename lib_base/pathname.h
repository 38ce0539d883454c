#pragma once

#include <string>
#include <string_view>

#include "lib_base/stringz.h"

/// The parts of a file name. Concatenated in order, they give the name again.
struct tPathParts {
  tString drive;      // empty on this platform
  tString directory;  // up to and including the last '/'; may be empty
  tString base;       // without directory and extension
  tString extension;  // from the last '.' of the bare name, including the dot; may be empty
};

/// Splits a name. A leading dot does not start an extension (".profile" is all base). A backslash
/// is an ordinary character.
void SplitPath(std::string_view name, tPathParts& parts);

/// The extension alone, as SplitPath gives it; a part of `name`.
std::string_view extensionOf(std::string_view name);

/// Base and extension.
tString bareName(std::string_view name);

/// Joins the two with a '/' unless `directory` already ends with one. An empty directory gives
/// `name`.
tString joinPath(std::string_view directory, std::string_view name);

/// `name` without "." components and doubled slashes. Null counts as an empty name.
std::string plainPath(const char* name);
std::string plainPath(std::string_view name);

/// `name` with every backslash read as '/'.
tString slashedPath(std::string_view name);

/// A file name as the file layer expects it, without surrounding blanks and double quotes.
tString normaliseFileName(std::string_view name);
