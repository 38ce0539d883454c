// An image is its head, for each table the rules' records and what the table knows about words,
// and a stream (tPCHStream) with the rules themselves and the header's notes. Of a table's parts
// only the records are always there.
//
// Whoever made the bytes, they are used only after every place and count in them has been found
// sound; the rules in the stream are checked when they are made (tStoredRule::make). The checksum
// keeps damage away, not malice.

#include "korelpre/headers/headerimage.h"

#include <cstring>
#include <limits>
#include <utility>

#include "korelpre/headers/contenthash.h"
#include "korelpre/rules/rulestream.h"
#include "korelpre/tables/wordgate.h"

namespace precomp {

namespace {

constexpr std::uint64_t kMagic = 0x0A1A0D486372504Bu;  // "KPrcH", then line ends
constexpr std::uint32_t kFormat = 1;
constexpr std::size_t kChecked = offsetof(tImageHead, version);

}  // namespace

std::unique_ptr<std::uint64_t[]> tHeaderImage::storage(std::size_t size) {
  return std::make_unique_for_overwrite<std::uint64_t[]>((size + 7) / 8);
}

void tHeaderImage::startHead(tImageHead& head) {
  head = {};
  head.magic = kMagic;
  std::strncpy(head.version, KRPRE_VERSION, sizeof head.version - 1);
  head.format = kFormat;
}

void tHeaderImage::seal(char* bytes, std::size_t size) {
  const std::uint64_t checksum = contentHash({bytes + kChecked, size - kChecked});
  std::memcpy(bytes + offsetof(tImageHead, checksum), &checksum, sizeof checksum);
}

bool tHeaderImage::looksLikeImage(std::string_view bytes) {
  return bytes.size() >= sizeof kMagic && std::memcmp(bytes.data(), &kMagic, sizeof kMagic) == 0;
}

std::shared_ptr<const tHeaderImage> tHeaderImage::open(std::unique_ptr<std::uint64_t[]> bytes,
                                                       std::size_t size) {
  std::shared_ptr<tHeaderImage> image(new tHeaderImage(std::move(bytes), size));
  return image->read() ? image : nullptr;
}

// `count` elements at `place`, or null when they do not lie in the image.
template <class T>
const T* tHeaderImage::part(std::uint32_t place, std::uint64_t count) const {
  const bool inside = place >= sizeof(tImageHead) && place % alignof(T) == 0 && place <= size_ &&
                      count <= (size_ - place) / sizeof(T);
  return inside ? reinterpret_cast<const T*>(bytes().data() + place) : nullptr;
}

bool tHeaderImage::mayBeImage(const tImageHead& head, std::uint64_t size) {
  tImageHead own;
  startHead(own);
  return head.magic == own.magic && head.size == size && head.format == own.format &&
         std::memcmp(head.version, own.version, sizeof own.version) == 0;
}

bool tHeaderImage::read() {
  if (size_ < sizeof(tImageHead) || size_ > std::numeric_limits<std::int32_t>::max()) return false;
  tImageHead head;
  std::memcpy(&head, bytes().data(), sizeof head);
  if (!mayBeImage(head, size_) || head.checksum != contentHash(bytes().substr(kChecked)))
    return false;
  for (int i = 0; i < 3; ++i) {
    if (!readTable(head.tables[i], tables_[i])) return false;
  }
  return readNotes(head.notes);
}

bool tHeaderImage::readTable(const tImageTable& table, tStoredRules& rules) const {
  if (table.count == 0) return true;
  rules.count = table.count;
  rules.rules = part<tStoredRule>(table.rules, table.count);
  if (rules.rules == nullptr || !checkRules(rules)) return false;
  rules.abbreviating = (table.flags & kImageAbbreviating) != 0;
  rules.irregular = (table.flags & kImageIrregular) != 0;
  if (table.order == 0) return true;
  rules.order = part<std::uint32_t>(table.order, table.count);
  rules.wordGate = part<std::uint64_t>(table.wordGate, tFoldedGate::kWords);
  rules.oddStarts = part<std::uint64_t>(table.oddStarts, 256 / 64);
  if (rules.order == nullptr || rules.wordGate == nullptr || rules.oddStarts == nullptr) {
    return false;
  }
  bool sound = true;
  for (std::uint32_t i = 0; i < table.count; ++i) sound &= rules.order[i] < table.count;
  if (!sound || table.names == 0) return sound;
  const bool powerOfTwo = table.nameSlots != 0 && (table.nameSlots & (table.nameSlots - 1)) == 0;
  rules.names = part<std::uint32_t>(table.names, table.nameSlots);
  rules.nameSlots = table.nameSlots;
  rules.nameGate = part<std::uint64_t>(table.nameGate, tWordGate::kWords);
  if (!powerOfTwo || rules.names == nullptr || rules.nameGate == nullptr) return false;
  bool anyFree = false;  // or a search would not end
  for (std::uint32_t i = 0; i < table.nameSlots; ++i) {
    sound &= rules.names[i] <= table.count;
    anyFree |= rules.names[i] == 0;
  }
  return sound && anyFree;
}

bool tHeaderImage::hasWholeTables() const {
  for (const tStoredRules& rules : tables_) {
    if (rules.count > 0 && rules.order == nullptr) return false;
  }
  return tables_[kDefines].count == 0 || tables_[kDefines].names != nullptr;
}

bool tHeaderImage::checkRules(const tStoredRules& rules) const {
  const char* const start = bytes().data();
  bool sound = true;
  for (std::uint32_t i = 0; i < rules.count; ++i) {
    const tStoredRule& rule = rules.rules[i];
    const auto at = static_cast<std::uint64_t>(reinterpret_cast<const char*>(&rule) - start);
    sound &= rule.home == at;
    sound &= at + rule.key + rule.keySize <= size_;
    sound &= at + rule.second + rule.secondSize <= size_;
    sound &= at + rule.body <= size_;
  }
  return sound;
}

void saveNotes(tPCHStream& stream, const tHeaderNotes& notes) {
  stream.putNumber(notes.largestText);
  stream.putNumber(notes.includedFiles);
  stream.putNumber(notes.includedBytes);
  stream.putNumber(notes.depth);
  stream.putNumber(notes.files.size());
  for (const tHeaderFile& file : notes.files) {
    stream.putText(file.requested);
    stream.putText(file.path);
    stream.putText(file.resolved);
    stream.putNumber(file.size);
    stream.putNumber(file.hash);
  }
  stream.putNumber(notes.tested.size());
  for (const tTestedName& tested : notes.tested) {
    stream.putText(tested.name);
    stream.putByte(tested.defined ? 1 : 0);
  }
  stream.putNumber(notes.includedNames.size());
  for (const std::string_view name : notes.includedNames) stream.putText(name);
  stream.putNumber(notes.markers.size());
  for (const tHeaderMarker& marker : notes.markers) {
    stream.putNumber(marker.line);
    stream.putName(marker.name);
  }
}

bool tHeaderImage::readNotes(std::size_t position) {
  tPCHStream stream(bytes(), position);
  notes_.largestText = stream.number();
  notes_.includedFiles = stream.number32();
  notes_.includedBytes = stream.number();
  notes_.depth = stream.number32();
  for (std::uint64_t left = stream.number(); left > 0 && !stream.failed(); --left) {
    tHeaderFile file;
    file.requested = stream.text();
    file.path = stream.text();
    file.resolved = stream.text();
    file.size = stream.number();
    file.hash = stream.number();
    notes_.files.push_back(file);
  }
  for (std::uint64_t left = stream.number(); left > 0 && !stream.failed(); --left) {
    const std::string_view name = stream.text();
    notes_.tested.push_back({name, stream.byte() != 0});
  }
  for (std::uint64_t left = stream.number(); left > 0 && !stream.failed(); --left) {
    notes_.includedNames.push_back(stream.text());
  }
  for (std::uint64_t left = stream.number(); left > 0 && !stream.failed(); --left) {
    const std::uint32_t line = stream.number32();
    notes_.markers.push_back({line, stream.name()});
  }
  return !stream.failed() && !notes_.files.empty();
}

}  // namespace precomp
