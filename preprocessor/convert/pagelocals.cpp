#include "preprocessor/convert/pagelocals.h"

namespace {

constexpr std::string_view kOpening = "([{";
constexpr std::string_view kClosing = ")]}";

/// Collects the pieces of a statement.
class tLocalReader {
 public:
  explicit tLocalReader(std::vector<tPageLocal>& locals) : locals_(locals) { begin(); }

  void take(ePiece piece, std::string_view text, bool apart);
  void finish();

 private:
  void begin();
  bool takeMark(char mark);

  std::vector<tPageLocal>& locals_;
  tString* part_ = nullptr;  // of the variable, to which text belongs
  int depth_ = 0;
  bool afterColon_ = false;
};

void tLocalReader::begin() {
  locals_.emplace_back();
  part_ = &locals_.back().declaration;
}

/// Commas and assignments outside brackets are none of the text.
bool tLocalReader::takeMark(char mark) {
  const bool assigns = mark == '=' && part_ == &locals_.back().declaration;
  depth_ += kOpening.find(mark) != std::string_view::npos ? 1 : 0;
  depth_ -= kClosing.find(mark) != std::string_view::npos ? 1 : 0;
  if (depth_ != 0) return false;
  if (mark == ',') begin();
  if (assigns) {
    if (afterColon_) part_->resize(part_->size() - 1);
    part_ = &locals_.back().value;
  }
  return mark == ',' || assigns;
}

void tLocalReader::take(ePiece piece, std::string_view text, bool apart) {
  const bool mark = piece == ePiece::kOther && takeMark(text[0]);
  afterColon_ = text == ":";
  if (mark) return;
  if (piece == ePiece::kWord && part_->empty() && part_ == &locals_.back().declaration) {
    locals_.back().name = tString(text);
    locals_.back().name.toUpper();
  }
  if (apart && !part_->empty()) *part_ += ' ';
  *part_ += text;
}

void tLocalReader::finish() {
  for (tPageLocal& local : locals_) {
    local.declaration.trim();
    local.value.trim();
  }
}

}  // namespace

ePiece readPageLocals(tPageCode& code, std::vector<tPageLocal>& locals, int& lines) {
  tLocalReader reader(locals);
  std::size_t end = code.end();
  ePiece piece = code.nextStatementPiece(lines);
  for (; !endsStatement(piece); piece = code.nextStatementPiece(lines)) {
    reader.take(piece, code.piece(), code.begin() != end);
    end = code.end();
  }
  reader.finish();
  return piece;
}
