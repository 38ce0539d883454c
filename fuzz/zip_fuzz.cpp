// Packed sources: any bytes as a file; any text packed and unpacked again; the packed text with
// bytes exchanged and cut off.
//
// The input begins with a count of damages and the damages, two bytes of place and one of value
// each, then a word of two bytes that is cut off the end. The rest is the text, and a file too.

#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/bytereader.h"
#include "fuzz/check.h"
#include "lib_gzip/zipsource.h"

namespace {

constexpr std::size_t kHeader = 12;
constexpr std::size_t kLimit = 1 << 20;
constexpr std::string_view kBefore = "before";

eZipResult unpack(std::string_view file, std::size_t limit, tString& text) {
  text = tString(kBefore);
  const eZipResult result = unpackZipSource(file, limit, text);
  if (result != eZipResult::kOk) requireEqual(text, kBefore, "a failure leaves the text as it is");
  if (!isZipSource(file) || file.size() < kHeader) {
    require(result == eZipResult::kShortHeader, "a file without its header is refused as such");
    return result;
  }
  tByteReader header(file.substr(4));
  const std::size_t unpacked = header.word(4);
  const std::size_t packed = header.word(4);
  if (packed > file.size() - kHeader || unpacked > limit) {
    require(result == eZipResult::kBadLengths, "lengths are checked before the data");
  } else if (result == eZipResult::kOk) {
    require(text.size() == unpacked, "the text is as long as told");
  } else {
    require(result == eZipResult::kDamaged, "what else can be wrong is the data");
  }
  return result;
}

void checkRoundTrip(std::string_view text, const tString& file) {
  tString unpacked;
  require(unpack(file, text.size(), unpacked) == eZipResult::kOk, "a packed text can be unpacked");
  requireEqual(unpacked, text, "unpacking gives the text that was packed");
  const std::string longer = std::string(file.view()) + "#zip";
  require(unpack(longer, kLimit, unpacked) == eZipResult::kOk, "more bytes behind do not matter");
  if (text.empty()) return;
  require(unpack(file, text.size() - 1, unpacked) == eZipResult::kBadLengths,
          "a text beyond the limit is refused");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  tByteReader input(bytes, size);
  tByteReader damages = input;
  const unsigned count = input.byte() % 16;
  for (unsigned i = 0; i < count; ++i) input.word(3);
  const std::uint32_t cut = input.word(2);
  const std::string_view text = input.rest();

  const tString file = packZipSource(text);
  checkRoundTrip(text, file);

  std::string damaged(file.view());
  damages.byte();
  for (unsigned i = 0; i < count; ++i) {
    const std::size_t place = damages.word(2) % damaged.size();
    damaged[place] = static_cast<char>(damaged[place] ^ static_cast<char>(damages.byte()));
  }
  if (cut < damaged.size()) damaged.resize(damaged.size() - cut);
  tString unpacked;
  unpack(damaged, kLimit, unpacked);
  unpack(text, kLimit, unpacked);
  return 0;
}
