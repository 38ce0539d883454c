#pragma once

#include <cstdint>

namespace precomp {

class tMatchMarker;
class tPCHStream;
class tSpcString;

namespace markerrecords {
// The first byte of a marker.
constexpr std::uint8_t kKindBits = 0x0F;
constexpr std::uint8_t kHasGroups = 0x10;
constexpr std::uint8_t kHasNext = 0x20;
constexpr std::uint8_t kOneBlank = 0x40;  // the spacing is a blank, and the line 0
constexpr std::uint8_t kUnusual = 0x80;   // spacing and line follow
}  // namespace markerrecords

/// Saves a marker's first byte, of which `first` are the kind and the flags that its token does not
/// decide, and its token.
void saveToken(tPCHStream* stream, const tSpcString& token, std::uint8_t first);
/// Loads the token behind a marker's first byte.
void loadToken(tPCHStream* stream, tSpcString& token, std::uint8_t first);
/// Saves a chain of markers, one after the other.
void saveChain(tPCHStream* stream, const tMatchMarker* head);
/// Loads one marker of a saved chain of literal words. True when another one follows; everything
/// else fails the stream.
bool loadWord(tPCHStream* stream, tSpcString& word);

}  // namespace precomp
