// Images of headers and the records in them, changed at will. What is no sound image is refused;
// what is taken for one fills tables, prints its listing and preprocesses a source, or ends with an
// ordinary error.
//
// With the first byte even, the rest is read as one rule. Otherwise the rest changes an image that
// was made of a header: four bytes for each change, the place in three of them and the new value.
// With kOnDisk the image is the file beside the header; without a sum that fits, or with any bytes
// in its place, it must not show.

#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>

#include "fuzz/bytereader.h"
#include "fuzz/check.h"
#include "korelpre/headers/headercache.h"
#include "korelpre/korelpre.h"
#include "korelpre/rules/rulestream.h"
#include "lib_base/diskman.h"
#include "lib_base/fatal.h"
#include "tests/support/memorydisk.h"

namespace {

using namespace precomp;

enum eMode : unsigned { kImage = 1, kOnDisk = 2, kNotSealed = 4, kAnyBytes = 8 };

constexpr std::string_view kHeader =
    "#define NAME value + 1\n#define CALL(a, bb) f(a, bb,  a)\n"
    "#command SAY <x> [AT <r>, <c> [COLOR <k>]] => put(<x> [, <r>] [, <c> [, <k>]])\n"
    "#command SAY TWICE <x> => twice(<x>)\n"
    "#xcommand LIST <l,...> [TO <(f)>] [<on: ON, OFF NOW>] => l({<l>}, <(f)>, <.on.>)\n"
    "#translate pick( <*rest*> ) => #<rest>\n"
    "#xtranslate keep <x> with <y> => <\"x\"> <{y}>\n"
    "#command DEEP [ [ [ONE <a>] TWO <b>] THREE <c>] => deep([ [<a>,] <b>,] <c>)\n";
constexpr std::string_view kSource =
    "SAY 1 + NAME AT 2, 3 COLOR x\nsay twice pick(a, b)\nLIST a, b OFF NOW TO f.x\n"
    "x := CALL(1, 2) + keep a with b\nDEEP ONE 1 TWO 2 THREE 3\n#define NAME 2\nNAME\n";

std::string savedName(tDiskManMemory& disk) {
  return "kept/" + disk.namesIn("kept").at(0);
}

std::string_view soundImage() {
  static const std::string kImage = [] {
    tDiskManMemory disk;
    disk.put("std.ch", kHeader);
    tHeaderCache cache(tString("kept"));
    tAutoArray<tString> options;
    KorelPre16 session(disk);
    session.Init(options, 1);
    session.setHeaderCache(&cache);
    require(session.prepch("std.ch"), "the header is saved");
    return *disk.bytes(savedName(disk));
  }();
  return kImage;
}

void useRules(const tHeaderImage& image) {
  tDiskManMemory disk;
  disk.put("std.ch", "");
  KorelPre16 session(disk);
  tAutoArray<tString> options;
  session.Init(options, 1);
  tXChgArray* const tables[] = {session.defines(), session.commands(), session.translates()};
  try {
    for (int i = 0; i < 3; ++i) {
      const tStoredRules& rules = image.table(static_cast<tHeaderImage::eTable>(i));
      if (image.hasWholeTables()) {
        tables[i]->addStored(rules, &session);
        continue;
      }
      for (std::uint32_t k = 0; k < rules.count; ++k) {
        tables[i]->addStored(rules.rules[k], &session);
      }
    }
    tString output;
    session.compileStr("main.prw", kSource, output);
    int depth = 0;
    session.processLines(output, depth);
    tString listing;
    for (const tXChgArray* table : tables) {
      for (int k = 0; k < table->count(); ++k) table->get(k)->print(&listing);
    }
  } catch (const SSException&) {
  } catch (const tFatalError&) {
  }
}

std::string throughCache(tDiskManMemory& disk, tHeaderCache* cache) try {
  KorelPre16 session(disk);
  tAutoArray<tString> options;
  options.add(new tString("-Fmain.prw"));
  session.Init(options, 1);
  session.setHeaderCache(cache);
  tString output;
  tString error;
  session.doIt(output, error);
  return std::string(output.view()) + "\n== " + std::string(error.view());
} catch (const tDamagedImage&) {
  cache->setTryAgain(true);  // as a run does
  return throughCache(disk, cache);
}

void useSavedFile(std::string_view image, bool mayShow) {
  tDiskManMemory disk;
  disk.put("std.ch", kHeader);
  disk.put("main.prw", kSource);
  static const std::string kPlain = throughCache(disk, nullptr);
  tHeaderCache cache(tString("kept"));
  throughCache(disk, &cache);
  disk.put(savedName(disk), image);
  const std::string saved = throughCache(disk, &cache);
  if (!mayShow) requireEqual(saved, kPlain, "a file that is no sound image does not show");
}

void useChangedImage(tByteReader& input, unsigned mode) {
  if ((mode & kAnyBytes) != 0) return useSavedFile(input.rest(), false);
  const std::string_view sound = soundImage();
  auto words = tHeaderImage::storage(sound.size());
  char* const bytes = reinterpret_cast<char*>(words.get());
  std::memcpy(bytes, sound.data(), sound.size());
  for (std::string_view changes = input.rest(); changes.size() >= 4; changes.remove_prefix(4)) {
    const auto byte = [&](std::size_t i) {
      return std::size_t{static_cast<unsigned char>(changes[i])};
    };
    const std::size_t place = byte(0) | byte(1) << 8 | byte(2) << 16;
    bytes[place % sound.size()] = changes[3];
  }
  const bool sealed = (mode & kNotSealed) == 0;
  if (sealed) tHeaderImage::seal(bytes, sound.size());
  if ((mode & kOnDisk) != 0) return useSavedFile({bytes, sound.size()}, sealed);
  const auto image = tHeaderImage::open(std::move(words), sound.size());
  if (image != nullptr) useRules(*image);
}

void readRule(std::string_view bytes) {
  tPCHStream stream(bytes, 0);
  const std::unique_ptr<tBaseXChg> rule = tBaseXChg::restore(&stream, nullptr);
  if (rule == nullptr) return;
  tString listing;
  rule->print(&listing);
  tPCHStream again;
  rule->save(&again);
  tPCHStream reading(again.written(), 0);
  const std::unique_ptr<tBaseXChg> same = tBaseXChg::restore(&reading, nullptr);
  require(same != nullptr, "what was saved is loaded");
  tString second;
  same->print(&second);
  require(listing == second, "and lists as it did");
  std::string cut = again.written();
  cut.resize(bytes.size() % cut.size());
  tPCHStream shorter(cut, 0);
  require(tBaseXChg::restore(&shorter, nullptr) == nullptr, "a rule ends where its bytes end");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  const tSilence silence;
  tByteReader input(bytes, size);
  const unsigned mode = input.byte();
  if ((mode & kImage) == 0) {
    readRule(input.rest());
  } else {
    useChangedImage(input, mode);
  }
  return 0;
}
