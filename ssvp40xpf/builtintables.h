#pragma once

#include <cstddef>
#include <cstdint>

namespace sstable {

/// A table image compiled into the library, in native byte order; sstableformat.h describes the
/// layout.
struct tImage {
  const std::uint32_t* words;
  std::size_t bytes;
  const char* name;  // for messages
};

}  // namespace sstable

/// The images that the build generates from tools/grammars.
namespace builtin {

extern const sstable::tImage korelpreDfa;  // the directive processor's scanner
extern const sstable::tImage korelpreLlr;  // its parser
extern const sstable::tImage korelDfa;     // the language's scanner
extern const sstable::tImage korelLlr;     // its parser

}  // namespace builtin
