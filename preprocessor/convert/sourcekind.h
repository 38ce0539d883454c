#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// What turns a source into what the preprocessor reads.
enum class eConverter : std::uint8_t { kNone, kInlineBlocks, kPage, kForeign };

/// What a source's extension decides.
struct tSourceKind {
  std::string_view extension;  // with its dot
  const char* temporary;       // extension of the normalised copy
  const char* output;          // extension of the preprocessed text
  const char* error;           // extension of the error text
  eConverter converter;
};

/// The extension of the language that foreign sources are converted to.
inline constexpr std::string_view kExtendedLanguage = ".zorb";

/// The kinds that have a name of their own.
std::span<const tSourceKind> sourceKinds();

/// The kind of a source by its extension, dot included, without regard to case. Every extension has
/// one: what the table does not name is an ordinary program, whose text is taken as it is.
const tSourceKind& sourceKind(std::string_view extension);
/// The same by the name of the source.
const tSourceKind& sourceKindOf(std::string_view name);

/// Whether a file with this extension is one that people write, a source or a header: one that the
/// table names. No output may take its place.
bool isSourceExtension(std::string_view extension);
