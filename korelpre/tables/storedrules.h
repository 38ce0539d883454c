#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "korelpre/text/words.h"
#include "lib_base/fatal.h"
#include "lib_base/slots.h"

namespace precomp {

class tRuleContext;
class tBaseXChg;

/// Thrown when a rule of an image turns out to be damaged: the header has to be read again.
class tDamagedImage : public tFatalError {
 public:
  using tFatalError::tFatalError;
};

/// A rule as it lies in the image of a header: what is needed to find it, and where the rest is.
/// It belongs to its image, and all places are counted in bytes: `home` back from this record to
/// the image's first byte, the others on from this record.
struct tStoredRule {
  enum eFlag : std::uint8_t { kIsCommand = 1, kAbbreviates = 2, kCaseSensitive = 4 };

  std::uint32_t home;
  std::uint32_t key;
  std::uint32_t second;  // the word that must follow the key, when secondSize is not 0
  std::uint32_t body;    // what tBaseXChg::save wrote
  std::uint16_t keySize;
  std::uint8_t secondSize;
  std::uint8_t flags;

  std::string_view keyText() const { return {at(key), keySize}; }
  std::string_view secondWord() const { return {at(second), secondSize}; }
  tWordRule wordRule() const {
    return {(flags & kAbbreviates) != 0, (flags & kCaseSensitive) != 0};
  }
  bool isCommand() const { return (flags & kIsCommand) != 0; }
  /// Makes the rule; its texts refer to the image. Throws tDamagedImage when that is damaged.
  std::unique_ptr<tBaseXChg> make(tRuleContext* context) const;

 private:
  const char* at(std::uint32_t place) const { return reinterpret_cast<const char*>(this) + place; }
};

/// The rules of one table as they lie in an image, with what a table of exactly these rules knows
/// about words.
struct tStoredRules {
  const tStoredRule* rules = nullptr;  // in the order of arrival
  std::uint32_t count = 0;
  const std::uint32_t* order = nullptr;  // indexes of the rules in the order of the table
  /// Slots by the key's hash: index + 1 of its only rule, or 0 when empty. Null when the table
  /// keeps no index of names.
  const std::uint32_t* names = nullptr;
  std::uint32_t nameSlots = 0;              // a power of two
  const std::uint64_t* nameGate = nullptr;  // the bits of the gates
  const std::uint64_t* wordGate = nullptr;
  const std::uint64_t* oddStarts = nullptr;  // a bit for each byte
  bool abbreviating = false;
  bool irregular = false;

  /// Null when there is no rule of that name.
  const tStoredRule* findName(std::string_view name, std::uint32_t hash) const {
    if (names == nullptr) return nullptr;
    const std::uint32_t* slot = findSlot(
        names, nameSlots - 1, hash, [](std::uint32_t number) { return number == 0; },
        [&](std::uint32_t number) { return rules[number - 1].keyText() == name; });
    return slot != nullptr ? &rules[*slot - 1] : nullptr;
  }
};

}  // namespace precomp
