#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "ssvp40xpf/sslexdense.h"
#include "ssvp40xpf/ssyacctable.h"

namespace sstable {

/// A table image compiled into the library, in native byte order; sstableformat.h describes the
/// layout.
struct tImage {
  const std::uint32_t* words;
  std::size_t bytes;
  const char* name;  // for messages
};

/// With what the build has laid out.
struct tLexImage : tImage {
  std::span<const SSLexIndex> lists;
};
struct tYaccImage : tImage {
  SSYaccIndex index;
};

}  // namespace sstable

/// What the build generates from tools/grammars.
namespace builtin {

extern const sstable::tLexImage korelpreDfa;   // the directive processor's scanner
extern const sstable::tYaccImage korelpreLlr;  // its parser
extern const sstable::tLexImage korelDfa;      // the language's scanner
extern const sstable::tYaccImage korelLlr;     // its parser

}  // namespace builtin
