#pragma once

#include <cstddef>
#include <cstdint>

namespace sstable {

/// A table image as it is compiled into the library; sstableformat.h tells its layout. The words
/// are in the byte order of the machine.
struct tImage {
  const std::uint32_t* words;
  std::size_t bytes;
  const char* name;  // for messages
};

}  // namespace sstable

/// The images that the build makes from tools/grammars.
namespace builtin {

extern const sstable::tImage korelpreDfa;  // the scanner of the directive processor
extern const sstable::tImage korelpreLlr;  // its parser
extern const sstable::tImage korelDfa;     // the scanner of the language
extern const sstable::tImage korelLlr;     // its parser

}  // namespace builtin
