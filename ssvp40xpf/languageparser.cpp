#include "ssvp40xpf/languageparser.h"

#include "ssvp40xpf/builtintables.h"

AYaccClass::AYaccClass() : walk_(builtinTable()) {
  setTable(builtinTable());
}

AYaccClass::~AYaccClass() = default;

const SSYaccTable& AYaccClass::builtinTable() {
  static const SSYaccTable table(builtin::korelLlr.index, builtin::korelLlr.name);
  return table;
}

bool AYaccClass::compile(const char* text, int& line, int& offset, tString& /*message*/,
                         int /*mode*/) {
  return compile(std::string_view(text), line, offset);
}

bool AYaccClass::compile(std::string_view text, int& line, int& offset) {
  reset();
  lexer_.reset();
  consumer_.reset();
  text_.clear();
  text_.append(text);
  text_.append('\n');
  consumer_ = std::make_unique<SSLexStringConsumer>(
      text_.data(), text_.size(), SSLexConsumer::textType, SSLexStringConsumer::kBorrowed);
  lexer_ = std::make_unique<ALexClass>(*consumer_);
  setLex(*lexer_);
  errorLine_ = errorOffset_ = offset = 0;
  try {
    parse();
    return true;
  } catch (const SSException&) {
  } catch (const SSException* raised) {  // in throw-pointer mode
    delete raised;
    clearLastException();
  }
  line = errorLine_;
  offset = errorOffset_;
  return false;
}

int AYaccClass::error(unsigned, SSLexLexeme& lookahead) {
  if (lookahead.token() != sstable::kTokenEof) {
    errorLine_ = static_cast<int>(lookahead.line());
    errorOffset_ = static_cast<int>(lookahead.absoluteOffset());
  }
  raise(SSErrorLanguage, errorOffset_);
  return 1;
}

SSYaccStackElement* AYaccClass::reduce(unsigned, unsigned) {
  return stackElement();
}
