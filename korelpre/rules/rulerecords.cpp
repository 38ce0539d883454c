// How rules and markers are saved and loaded.
//
// A marker is a byte that tells its kind and what stands out of the ordinary, its token, its
// optional groups and its words. What follows from the place of a marker in its chain is not
// saved: that the first of a group is its head, that the one behind a head may be empty, and what
// the result is linked with.

#include <memory>

#include "korelpre/rules/markerrecords.h"
#include "korelpre/rules/markertable.h"
#include "korelpre/rules/resultmarker.h"
#include "korelpre/rules/rule.h"
#include "korelpre/rules/rulestream.h"

namespace precomp {

using namespace markerrecords;

namespace {

// The first byte of a rule.
constexpr std::uint8_t kIsCommand = 0x01;
constexpr std::uint8_t kAbbreviates = 0x02;
constexpr std::uint8_t kCaseSensitive = 0x04;
constexpr std::uint8_t kHasPattern = 0x08;
constexpr std::uint8_t kHasResult = 0x10;

// Null when there is no such chain; the stream has failed then.
std::unique_ptr<tMatchMarker> loadChain(tPCHStream* stream, eMarkerSide side, bool isGroup) {
  std::unique_ptr<tMatchMarker> head;
  tMatchMarker* last = nullptr;
  if (!stream->enter()) return nullptr;
  for (bool more = true; more;) {
    const std::uint8_t first = stream->byte();
    const tMarkerRow* const row = markerOfKind(side, first & kKindBits);
    if (row == nullptr || stream->failed()) {
      stream->fail();
      return nullptr;
    }
    std::unique_ptr<tMatchMarker> marker(row->make(nullptr, tSpcString()));
    tMatchMarker* const added = marker.get();
    if (last == nullptr) {
      added->setGroupHead(isGroup);
      head = std::move(marker);
    } else {
      added->setMayBeEmpty(last->isGroupHead());
      last->setNext(marker.release());
    }
    last = added;
    if (!added->load(stream, first)) return nullptr;
    more = (first & kHasNext) != 0;
  }
  stream->leave();
  return head;
}

}  // namespace

void tMatchMarker::save(tPCHStream* stream) const {
  std::uint8_t first = kind_;
  if (hasGroups()) first |= kHasGroups;
  if (next_ != nullptr) first |= kHasNext;
  saveToken(stream, token_, first);
  if (!hasGroups()) return;
  stream->putNumber(static_cast<std::uint64_t>(groups().count()));
  for (int i = 0; i < groups().count(); ++i) saveChain(stream, groups()[i]);
}

bool tMatchMarker::load(tPCHStream* stream, std::uint8_t first) {
  loadToken(stream, token_, first);
  if ((first & kHasGroups) == 0) return !stream->failed();
  const eMarkerSide side = isResult() ? eMarkerSide::kResult : eMarkerSide::kPattern;
  const std::uint64_t count = stream->number();
  if (count == 0) stream->fail();
  for (std::uint64_t i = 0; i < count && !stream->failed(); ++i) {
    std::unique_ptr<tMatchMarker> group = loadChain(stream, side, true);
    if (group != nullptr) addGroup(group.release());
  }
  return !stream->failed();
}

void tBaseXChg::save(tPCHStream* stream) const {
  std::uint8_t first = 0;
  if (isCmd()) first |= kIsCommand;
  if (wordRule().abbreviate) first |= kAbbreviates;
  if (wordRule().caseSensitive) first |= kCaseSensitive;
  if (firstMatch() != nullptr) first |= kHasPattern;
  if (firstResult() != nullptr) first |= kHasResult;
  stream->putByte(first);
  stream->putText(key_);
  stream->putName(originFile_);
  stream->putNumber(static_cast<std::uint64_t>(originLine_));
  if (firstMatch() != nullptr) saveChain(stream, firstMatch());
  if (firstResult() != nullptr) saveChain(stream, firstResult());
}

bool tBaseXChg::load(tPCHStream* stream, std::uint8_t first) {
  setWordRule({(first & kAbbreviates) != 0, (first & kCaseSensitive) != 0});
  key_ = tString::borrow(stream->text());
  const tString file = tString::borrow(stream->name());
  setOrigin(file, static_cast<int>(stream->number32()));
  // A table finds the rule by its key, and its pattern must begin with it.
  if ((first & kHasPattern) == 0) return false;
  std::unique_ptr<tMatchMarker> pattern = loadChain(stream, eMarkerSide::kPattern, false);
  const bool sound =
      pattern != nullptr && pattern->isIdentifier() && pattern->token().view() == key_.view();
  if (!sound) return false;
  std::unique_ptr<tMatchMarker> result;
  if ((first & kHasResult) != 0) result = loadChain(stream, eMarkerSide::kResult, false);
  if (stream->failed()) return false;
  setChains(std::move(pattern), std::move(result));
  return true;
}

std::unique_ptr<tBaseXChg> tBaseXChg::restore(tPCHStream* stream, tRuleContext* context) {
  const std::uint8_t first = stream->byte();
  std::unique_ptr<tBaseXChg> rule;
  if ((first & kIsCommand) != 0) {
    rule = std::make_unique<tCommand>(context, tWordRule{}, nullptr, nullptr, tString());
  } else {
    rule = std::make_unique<tTranslate>(context, tWordRule{}, nullptr, nullptr, tString());
  }
  if (stream->failed() || !rule->load(stream, first)) return nullptr;
  return rule;
}

}  // namespace precomp
