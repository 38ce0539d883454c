#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// What converts a source before it is preprocessed.
enum class eConverter : std::uint8_t { kNone, kInlineBlocks, kPage, kForeign };

/// What the extension of a source decides.
struct tSourceKind {
  std::string_view extension;  // with its dot
  const char* temporary;       // extension of the normalised copy
  const char* output;          // extension of the preprocessed text
  const char* error;           // extension of the error text
  eConverter converter;
};

/// The extension of the extended language, to which foreign sources are converted.
inline constexpr std::string_view kExtendedLanguage = ".zorb";

/// The kinds in the table.
std::span<const tSourceKind> sourceKinds();

/// The kind of a source by its extension, dot included, ignoring case. An extension that is not in
/// the table means an ordinary program that needs no conversion.
const tSourceKind& sourceKind(std::string_view extension);
/// The same by the file name of the source.
const tSourceKind& sourceKindOf(std::string_view name);

/// Whether files with this extension are written by people, being sources or headers: no output may
/// replace them.
bool isSourceExtension(std::string_view extension);
