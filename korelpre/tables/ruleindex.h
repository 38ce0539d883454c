#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string_view>
#include <vector>

#include "korelpre/tables/rulesource.h"
#include "korelpre/tables/wordgate.h"
#include "lib_base/stringz.h"

namespace precomp {

struct tStoredRules;

/// A place in the text of an expansion where something of the use belongs.
struct tExpansionHole {
  static constexpr std::size_t kSpacing = static_cast<std::size_t>(-1);
  std::size_t at;        // in the text, in bytes
  std::size_t argument;  // from 0, or kSpacing: the blanks in front of the use
};

/// What the only definition of a name makes of a use, worked out when first asked for and valid for
/// one generation of the tables.
struct tNameExpansion {
  std::uint64_t generation = 0;
  bool plain = false;       // false: uses have to be rewritten token by token
  int rewrites = 0;         // how many lead to the text
  std::size_t written = 0;  // bytes that they write
  bool final = false;       // it takes no arguments, and no token of the text starts a rule
  tString text;             // of the result, without the spacing in front of its first literal
  std::vector<tExpansionHole> holes;  // in the order of their places
  std::size_t parameters = 0;
};

/// What a table of defines knows of one name.
struct tIndexedName {
  tString name;  // the key of the rule, if there is one
  std::uint32_t hash = 0;
  int rules = 0;              // rules of that name in the table
  tBaseXChg* rule = nullptr;  // the only one, or the latest
  bool waits = false;         // the rule is a stored one, to be made when the name is found
  std::unique_ptr<tNameExpansion> expansion;  // null until somebody asked for it
};

/// Finds the rules of a word at once, byte for byte, and dismisses most words by their first two
/// bytes. Belongs to a rule table, which tells it of every change.
class tRuleIndex {
 public:
  const tWordGate& gate() const { return gate_; }
  /// Null when the table has no rule of that name.
  tIndexedName* find(std::string_view name);
  /// Changes whenever the table does; never 0.
  std::uint64_t generation() const { return generation_; }

  void added(tBaseXChg* rule);
  /// `rule` takes the place of the only one of its name.
  void replaced(tBaseXChg* rule);
  /// A stored rule came; `table` is this index's own.
  void addedStored(std::string_view key, tRuleSource& table);
  /// As addedStored for all that are stored together, of which `table` has none else.
  void addedStored(const tStoredRules& stored, tRuleSource& table);
  /// How many rules of that name there are.
  int countOf(std::string_view name) const;
  /// `latest` is the rule of the same key that now stands last, or null.
  void removed(tBaseXChg* rule, tBaseXChg* latest);
  void clear();

 private:
  std::size_t placeOf(std::string_view name, std::uint32_t hash) const;
  const tIndexedName* search(std::string_view name, std::uint32_t hash) const;
  tIndexedName* findStored(std::string_view name, std::uint32_t hash);
  tIndexedName* settled(tIndexedName& entry);
  /// A new entry refers to the bytes of `name`.
  tIndexedName& entryFor(std::string_view name, std::uint32_t hash);
  void grow();

  tWordGate gate_;
  std::vector<tIndexedName> names_;
  std::vector<std::uint32_t> slots_;  // index into names_ + 1; 0 when empty
  std::uint64_t generation_ = 1;

  tRuleSource* table_ = nullptr;  // null while no stored rule came
  const tStoredRules* stored_ = nullptr;
  // Of names that have no entry in names_. They keep their places, since finding one makes it.
  std::deque<tIndexedName> storedNames_;
  std::vector<tIndexedName*> byStored_;  // by the place of the stored rule; null until it is found
};

}  // namespace precomp
