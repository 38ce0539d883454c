#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// The lexical elements of a block of a page.
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
  kBlockComment,  // the part of a comment between "/*" and "*/" that is on one line
  kOther,         // one character
};

/// Splits the code of a block into pieces as the scanner of sources would, so that "%>" closes the
/// block only in code, not in a string or between "/*" and "*/". Cheap to copy: looking ahead is
/// done with a copy.
class tPageCode {
 public:
  enum eKind : std::uint8_t { kStatements, kExpression };

  /// `at` is the index just past the opening of a block. The page must outlive this object.
  tPageCode(std::string_view page, std::size_t at, eKind kind)
      : page_(page), end_(at), kind_(kind) {}

  /// Reads the next piece. At the end of the page it is empty, however often it is asked for.
  ePiece next();
  std::string_view piece() const { return page_.substr(begin_, end_ - begin_); }
  /// The index of the piece, and the one just past it.
  std::size_t begin() const { return begin_; }
  std::size_t end() const { return end_; }
  /// As next, but skips blanks, comments, and line ends after which the statement or expression
  /// continues; these are counted in `lines`.
  ePiece nextStatementPiece(int& lines);
  /// The piece that nextStatementPiece would return.
  ePiece peek() const;

  /// The current line continues the one before, or begins within a comment.
  bool continues() const { return continued_ || inComment_; }
  /// Nothing but blanks precedes the piece on its line.
  bool startsLine() const { return startsLine_; }
  /// In the lines of an SQL statement, "*" does not begin a comment.
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

/// Whether a piece returned by nextStatementPiece ends the statement before it.
inline bool endsStatement(ePiece piece) {
  return piece == ePiece::kEnd || piece == ePiece::kClose || piece == ePiece::kLineEnd ||
         piece == ePiece::kSeparator;
}
