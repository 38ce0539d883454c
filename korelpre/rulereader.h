#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "korelpre/rulebuild.h"

namespace precomp {

/// Reads the directives that define commands and translations straight from the text. What it makes
/// of one is what scanner and grammar make of it; forms that are out of the ordinary, and what may
/// be wrong, it leaves to them.
class tRuleReader {
 public:
  /// Reads the directive whose line starts at `start`. The text must end with a line feed and have
  /// "\r\n" for every line end. False when this is no such directive or not an ordinary one.
  /// The markers lie in `arena`, which may have less room afterwards even when it fails; null: each
  /// on its own.
  bool read(const char* start, const char* end, tMarkerArena* arena);
  /// Destroys what was read and not released.
  void drop();

  // What the last read() that succeeded has read.
  bool isCommand() const { return command_; }
  bool abbreviates() const { return abbreviate_; }
  tChainBuilder& pattern() { return pattern_; }
  tChainBuilder& result() { return result_; }
  /// The text of the directive without what follows its last token.
  std::string_view text() const { return text_; }
  /// Behind the line feed of its last line.
  const char* lineEnd() const { return lineEnd_; }
  int lines() const { return lines_; }

 private:
  struct tPiece {
    std::string_view text;
    std::string_view spacing;
    std::uint32_t kind = 0;
    std::uint32_t token = 0;

    bool is(std::uint32_t wanted) const { return kind == wanted; }
    bool isTight(std::uint32_t wanted) const { return kind == wanted && spacing.empty(); }
    bool isName() const;
    bool isString() const;
    tSpcString make(std::string_view shown) const {
      return tSpcString(tString::borrow(shown), tString(), kind, token, 0);
    }
    tSpcString make() const { return make(text); }
  };

  bool readWord(const char*& p, const char* end);
  bool readPieces(const char* p, const char* end);
  bool readGap(const char*& p, const char* end, tPiece& piece);
  bool readPiece(const char*& p, const char* end, tPiece& piece);
  bool build();
  bool buildPattern();
  bool buildResult();
  bool buildElement(tChainBuilder& chain, tMatchMarker* (tRuleReader::*marker)(std::size_t&));
  tString spacingOf(const tPiece& piece);
  void addToken(tChainBuilder& chain, const tPiece& token);
  tMatchMarker* patternMarker(std::size_t& at);
  tMatchMarker* restrictedMarker(std::size_t& at);
  tMatchMarker* resultMarker(std::size_t& at);
  tMatchMarker* dumbMarker(std::size_t& at);
  bool encloses(std::size_t at, std::uint32_t before, std::uint32_t after) const;
  const tPiece& piece(std::size_t at) const { return at < pieces_.size() ? pieces_[at] : none_; }

  tMarkerArena* arena_ = nullptr;
  bool command_ = false;
  bool abbreviate_ = false;
  tChainBuilder pattern_{tChainBuilder::kPattern};
  tChainBuilder result_{tChainBuilder::kResult};
  std::string_view text_;
  const char* lineEnd_ = nullptr;
  int lines_ = 0;

  std::vector<tPiece> pieces_;
  tAutoArray<tString> joinedGaps_;  // blanks that do not stand together in the text
  std::size_t at_ = 0;
  const tPiece none_{};
};

}  // namespace precomp
