#include "korelpre/rules/chainbuilder.h"

#include "korelpre/rules/patternmarkers.h"
#include "korelpre/rules/resultmarker.h"
#include "korelpre/text/tokenkinds.h"

namespace precomp {

namespace {

struct tByteKind {
  char byte;
  std::uint32_t kind;
};

// The characters that are tokens of their own; none else needs a backslash.
constexpr tByteKind kByteKinds[] = {
    {'$', kKindDollar},     {'>', kKindGreater},     {'<', kKindLess},
    {'.', kKindDot},        {'&', kKindAmpersand},   {',', kKindComma},
    {'#', kKindHash},       {'+', kKindPlus},        {'-', kKindMinus},
    {'/', kKindSlash},      {'*', kKindStar},        {'%', kKindPercent},
    {'^', kKindCaret},      {'!', kKindBang},        {'(', kKindParenOpen},
    {')', kKindParenClose}, {'[', kKindBracketOpen}, {']', kKindBracketClose},
    {'{', kKindBraceOpen},  {'}', kKindBraceClose},  {'=', kKindEqual},
    {':', kKindColon},      {'|', kKindBar},         {'@', kKindAt},
    {';', kKindSemicolon},  {'?', kKindQuestion},
};

std::uint32_t kindOfByte(char byte) {
  for (const tByteKind& entry : kByteKinds) {
    if (entry.byte == byte) return entry.kind;
  }
  return kKindEscaped;
}

/// Takes no token and holds the group that opens a chain.
tMatchMarker* newPlaceholder(tChainBuilder::eSide side, tMarkerArena* arena) {
  if (side == tChainBuilder::kPattern) return makeMarker<tMatchMarkerOpt>(arena);
  return makeMarker<tResultMarkerOpt>(arena);
}

}  // namespace

void unescape(tSpcString& token) {
  if (token.kind() != kKindEscaped || token.size() != 2) return;
  token.setText(tString::borrow(token.view().substr(1)));
  token.setKind(kindOfByte(token.data()[0]));
}

void tChainBuilder::addToken(const tSpcString& token) {
  if (token.kind() == kKindSpace) {
    addSpacing(token);
  } else if (token.kind() == kKindBracketOpen) {
    openGroup();
  } else if (token.kind() == kKindBracketClose) {
    closeGroup();
  } else {
    tSpcString literal;
    literal = token;
    unescape(literal);
    addLiteral(literal);
  }
}

void tChainBuilder::addLiteral(const tSpcString& literal) {
  if (side_ == kPattern) {
    add(makeMarker<tMatchIdentifier>(arena_, literal));
  } else {
    add(makeMarker<tResultIdentifier>(arena_, literal));
  }
}

void tChainBuilder::addSpacing(const tString& blanks) {
  if (spacing_.empty()) {
    spacing_ = blanks;
  } else if (arena_ != nullptr) {
    spacing_ = tString::borrow(arena_->join(spacing_, blanks));
  } else {
    spacing_.append(blanks);
  }
}

void tChainBuilder::add(tMatchMarker* marker) {
  if (!balanced_) {
    delete marker;
    return;
  }
  marker->token().setSpacing(spacing_);
  marker->token().setLine(0);
  spacing_ = tString();
  append(marker);
}

void tChainBuilder::append(tMatchMarker* marker) {
  tMatchMarker* before = lastInChain();
  if (before != nullptr) {
    before->setNext(marker);
    marker->setMayBeEmpty(before->isGroupHead());
  } else if (open_.empty()) {
    head_.reset(marker);
  } else {
    marker->setGroupHead(true);
    open_.back().owner->addGroup(marker, arena_);
  }
  (open_.empty() ? last_ : open_.back().last) = marker;
}

void tChainBuilder::openGroup() {
  if (!balanced_) return;
  if (open_.size() >= static_cast<std::size_t>(kDeepestGroup)) {
    balanced_ = false;
    return;
  }
  if (lastInChain() == nullptr) append(newPlaceholder(side_, arena_));
  open_.push_back({lastInChain(), nullptr});
}

void tChainBuilder::closeGroup() {
  if (open_.empty()) {
    balanced_ = false;
  } else {
    open_.pop_back();
  }
}

}  // namespace precomp
