#pragma once

#include <string_view>

/// What a source's extension decides.
struct tSourceKind {
  std::string_view extension;  // with its dot
  const char* temporary;       // extension of the normalised copy
  const char* output;          // extension of the preprocessed text
  const char* error;           // extension of the error text
  bool foreign;                // to be converted before it is preprocessed
};

/// The kind of a source by its extension, dot included, without regard to case. Every extension has
/// one: what the table does not name is an ordinary program.
const tSourceKind& sourceKind(std::string_view extension);

/// Whether a file with this extension is one that people write: a source that the table names, or
/// a header. No output may take its place.
bool isSourceExtension(std::string_view extension);
