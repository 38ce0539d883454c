#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// What a block of a page is made of.
enum class ePiece : std::uint8_t {
  kEnd,           // of the page
  kClose,         // "%>"
  kLineEnd,       // "\r\n", "\r" or "\n"
  kBlanks,        // blanks and tabs
  kWord,          // a name, a keyword or a number
  kString,        // with its quotes
  kLoneQuote,     // a quote that its line does not close
  kSeparator,     // ";", between statements or in front of a line end
  kComment,       // up to the end of the line or the block: "//", "&&", a line that begins with "*"
  kBlockComment,  // what one line holds of a comment between "/*" and "*/"
  kOther,         // one character
};

/// Cuts the code of a block into pieces, as the scanner of sources would, so that "%>" closes the
/// block where it stands in the code and not in a string or between "/*" and "*/". Cheap to copy:
/// a copy looks ahead.
class tPageCode {
 public:
  enum eKind : std::uint8_t { kStatements, kExpression };

  /// Begins behind the opening of a block. The page must outlive this object.
  tPageCode(std::string_view page, std::size_t at, eKind kind)
      : page_(page), end_(at), kind_(kind) {}

  /// Reads the next piece. At the end of the page, which may be asked for again, it is empty.
  ePiece next();
  std::string_view piece() const { return page_.substr(begin_, end_ - begin_); }
  /// Where the piece begins, and what is behind it.
  std::size_t begin() const { return begin_; }
  std::size_t end() const { return end_; }
  /// As next, but passes blanks, comments and the line ends, which it counts in `lines`, behind
  /// which the statement or the expression goes on.
  ePiece nextStatementPiece(int& lines);
  /// What nextStatementPiece would give.
  ePiece peek() const;

  /// The line that was begun last continues the one before, or begins within a comment.
  bool continues() const { return continued_ || inComment_; }
  /// Nothing but blanks stands before the piece on its line.
  bool startsLine() const { return startsLine_; }
  /// In the lines of an SQL statement "*" is no comment.
  void setSql(bool sql) { sql_ = sql; }
  bool sql() const { return sql_; }

 private:
  ePiece read();
  ePiece readComment();
  ePiece readBlockComment();
  ePiece readString();
  ePiece readLineEnd();
  bool at(std::string_view text) const { return page_.substr(end_).starts_with(text); }
  bool endAt(std::string_view mark, std::size_t from);

  std::string_view page_;
  std::size_t begin_ = 0;
  std::size_t end_;
  eKind kind_;
  bool inComment_ = false;
  bool sql_ = false;
  bool continued_ = false;
  bool startsLine_ = true;
  bool nextStartsLine_ = true;
  ePiece last_ = ePiece::kLineEnd;  // neither blanks nor comment
};

/// Whether a statement ends in front of such a piece, given by nextStatementPiece.
inline bool endsStatement(ePiece piece) {
  return piece == ePiece::kEnd || piece == ePiece::kClose || piece == ePiece::kLineEnd ||
         piece == ePiece::kSeparator;
}
