#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "korelpre/tables/storedrules.h"

namespace precomp {

/// One of three in an image. Places are counted in bytes from the image's first; 0 is none.
struct tImageTable {
  std::uint32_t count;
  std::uint32_t rules;
  std::uint32_t order;
  std::uint32_t names;
  std::uint32_t nameSlots;
  std::uint32_t nameGate;
  std::uint32_t wordGate;
  std::uint32_t oddStarts;
  std::uint32_t flags;
};
constexpr std::uint32_t kImageAbbreviating = 1;
constexpr std::uint32_t kImageIrregular = 2;

/// What an image begins with. Numbers are the machine's own; an image of another machine shows in
/// `magic`.
struct tImageHead {
  std::uint64_t magic;
  std::uint64_t size;      // of the whole image, in bytes; its place is known to tStoredRule::make
  std::uint64_t checksum;  // of all that follows
  char version[24];        // of the library, padded with zeros
  std::uint32_t format;
  std::uint32_t notes;  // where the header's notes begin; see headerimage.cpp
  tImageTable tables[3];
  std::uint32_t padding;
};
static_assert(sizeof(tImageHead) % 8 == 0);

/// A file that a header was read from.
struct tHeaderFile {
  std::string_view requested;  // as an #include names it
  std::string_view path;       // where it was found
  std::string_view resolved;   // the same without links
  std::uint64_t size = 0;      // in bytes, as it lies on the disk
  std::uint64_t hash = 0;
};

/// A name that a conditional of a header asked for, and that the header had not defined itself.
struct tTestedName {
  std::string_view name;
  bool defined = false;
};

/// A "#line" marker that including a header writes.
struct tHeaderMarker {
  std::uint32_t line = 0;
  std::string_view name;
};

/// What is known of a header besides its rules.
struct tHeaderNotes {
  std::uint64_t largestText = 0;  // tString::maxSize() of the time
  std::uint32_t includedFiles = 0;
  std::uint64_t includedBytes = 0;
  std::uint32_t depth = 0;  // of the deepest file, 1 for the header itself
  std::vector<tHeaderFile> files;
  std::vector<tTestedName> tested;
  std::vector<std::string_view> includedNames;  // in the header and below, in upper case
  std::vector<tHeaderMarker> markers;           // of a header for includes
};

/// A header that has been read: its rules, ready to be put into tables, and all that must hold for
/// them to be what reading the text would give. Never changes, and may be used by several threads.
///
/// It is one block of bytes, which can be saved and used again where it is read in, without a pass
/// over its rules.
class tHeaderImage {
 public:
  enum eTable { kDefines, kCommands, kTranslates };

  /// Storage for an image of `size` bytes.
  static std::unique_ptr<std::uint64_t[]> storage(std::size_t size);
  /// Gives an image that has been put together its checksum.
  static void seal(char* bytes, std::size_t size);
  /// Null unless the bytes are a whole image that this library has made.
  static std::shared_ptr<const tHeaderImage> open(std::unique_ptr<std::uint64_t[]> bytes,
                                                  std::size_t size);
  static bool looksLikeImage(std::string_view bytes);
  /// Whether a file of `size` bytes that begins with `head` may be one.
  static bool mayBeImage(const tImageHead& head, std::uint64_t size);
  /// Fills in what every image of this library begins with.
  static void startHead(tImageHead& head);

  std::string_view bytes() const { return {reinterpret_cast<const char*>(words_.get()), size_}; }
  const tStoredRules& table(eTable table) const { return tables_[table]; }
  const tHeaderNotes& notes() const { return notes_; }
  /// Whether it holds what is needed to fill whole tables.
  bool hasWholeTables() const;

 private:
  tHeaderImage(std::unique_ptr<std::uint64_t[]> words, std::size_t size)
      : words_(std::move(words)), size_(size) {}
  bool read();
  bool readTable(const tImageTable& table, tStoredRules& rules) const;
  bool checkRules(const tStoredRules& rules) const;
  bool readNotes(std::size_t position);
  template <class T>
  const T* part(std::uint32_t place, std::uint64_t count) const;

  std::unique_ptr<std::uint64_t[]> words_;
  std::size_t size_;
  tStoredRules tables_[3];
  tHeaderNotes notes_;
};

class tPCHStream;
void saveNotes(tPCHStream& stream, const tHeaderNotes& notes);

}  // namespace precomp
