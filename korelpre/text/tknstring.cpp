#include "korelpre/text/tknstring.h"

#include <cstring>

namespace precomp {

void tTknString::doReset(tRuleContext* /*context*/, int start) {
  lastPlaces_.clear();
  if (start < 0) {
    cursor_ = 0;
    if (!tokens_.empty() && !newTokens_.empty()) newTokens_[0].setSpacing(tokens_[0].spacing());
    tokens_.Destroy();
    tokens_.swap(newTokens_);
    return;
  }
  int end = curTokenIdx() - 1;
  if (end < 0) end = count() - 1;
  const int removed = start <= end && end < count() ? end - start + 1 : 0;
  tokens_.splice(start, removed, newTokens_);
}

const int* tTknString::lastPlaceOf(const tMatchMarker* word) const {
  for (const auto& known : lastPlaces_) {
    if (known.first == word) return &known.second;
  }
  return nullptr;
}

void tTknString::noteLastPlace(const tMatchMarker* word, int place) {
  constexpr std::size_t kMost = 16;
  if (lastPlaces_.size() == kMost) lastPlaces_.erase(lastPlaces_.begin());
  lastPlaces_.emplace_back(word, place);
}

void tTknString::appendText(tString& text, bool original) const {
  const tAutoArray<tSpcString>& shown = original && !original_.empty() ? original_ : tokens_;
  append(shown, sizeOf(shown), text);
}

bool tTknString::appendWithin(std::size_t limit, tString& text) const {
  const std::size_t size = sizeOf(tokens_);
  if (size >= limit - text.size()) return false;
  append(tokens_, size, text);
  return true;
}

void tTknString::append(const tAutoArray<tSpcString>& shown, std::size_t size, tString& text) {
  if (size == 0) return;
  char* to = text.extend(size);
  // Most pieces are nothing, one blank or one bracket.
  const auto put = [&to](std::string_view piece) {
    if (piece.size() == 1) {
      *to = piece[0];
    } else if (!piece.empty()) {
      std::memcpy(to, piece.data(), piece.size());
    }
    to += piece.size();
  };
  for (int i = 0; i < shown.count(); ++i) {
    put(shown[i].spacing());
    put(shown[i]);
  }
}

void tTknString::keepOriginal() {
  original_.Destroy();
  for (int i = 0; i < tokens_.count(); ++i) original_.add(new tSpcString(tokens_[i]));
}

std::size_t tTknString::sizeOf(const tAutoArray<tSpcString>& tokens) {
  std::size_t size = 0;
  for (int i = 0; i < tokens.count(); ++i) size += tokens[i].spacing().size() + tokens[i].size();
  return size;
}

}  // namespace precomp
