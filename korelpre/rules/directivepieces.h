#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "korelpre/rules/markerarena.h"
#include "korelpre/text/tknstring.h"

namespace precomp {

/// The text of one directive, cut into its tokens by the scanner's own automaton. Gives up at what
/// is not plain: a comment between tokens, an escaped character, a token that no pattern, result or
/// value may have, a continuation with nothing behind it.
class tDirectivePieces {
 public:
  /// Behind the line feed of the directive's last line.
  const char* lineEnd() const { return lineEnd_; }
  int lines() const { return lines_; }
  /// The text of the directive without what follows its last token.
  std::string_view text() const { return text_; }

 protected:
  struct tPiece {
    std::string_view text;
    std::string_view spacing;
    std::uint32_t kind = 0;
    std::uint32_t token = 0;
    int line = 0;  // from 0, that of the directive

    bool is(std::uint32_t wanted) const { return kind == wanted; }
    bool isTight(std::uint32_t wanted) const { return kind == wanted && spacing.empty(); }
    bool isName() const;
    bool isString() const;
    tSpcString make(std::string_view shown) const {
      return tSpcString(shown, tString(), kind, token, 0);
    }
    tSpcString make() const { return make(text); }
  };

  /// Cuts what stands from `p` to the end of the directive, which begins at `directive`. False when
  /// something in it is not plain. `end` is that of the whole text.
  bool readPieces(const char* directive, const char* p, const char* end);
  /// The spacing of a piece, which refers to the text, or to `arena` when it does not stand in the
  /// text as it is; owned then when that is null.
  tString spacingOf(const tPiece& piece, tMarkerArena* arena) const;
  std::size_t count() const { return pieces_.size(); }
  /// An empty one past the last.
  const tPiece& piece(std::size_t at) const { return at < pieces_.size() ? pieces_[at] : none_; }

 private:
  bool readGap(const char*& p, const char* end, tPiece& piece);
  bool readPiece(const char*& p, const char* end, tPiece& piece);

  std::string_view text_;
  const char* lineEnd_ = nullptr;
  int lines_ = 0;
  std::vector<tPiece> pieces_;
  tAutoArray<tString> joinedGaps_;  // blanks that do not stand together in the text
  const tPiece none_{};
};

}  // namespace precomp
