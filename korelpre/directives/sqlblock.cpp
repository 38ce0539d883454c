// Embedded SQL. The lines between BeginSql and EndSql become the text of one call:
//
//     BeginSql alias X            __execSql("X"," SELECT COST FROM  "+RetSqlName('T')+"  ",
//       COLUMN COST AS NUMERIC(8,2)         {{"COST","N",8,2}},.F.)
//       SELECT COST
//       FROM %Table:T%
//     EndSql
//
// The text is collected line by line as the grammar reduces the lines, so a block is never held as
// tokens. The call is one token on the line of BeginSql: no rule looks into it.
//
// Note [block lines]
// The grammar's block ends with a line feed, and so does the statement that it is a token of. The
// line feed behind EndSql is delivered twice (lexemefeed.cpp).

#include "korelpre/directives/sqlblock.h"

#include <cstdlib>
#include <string>

#include "korelpre/text/tknstring.h"
#include "lib_base/misc.h"
#include "ssvp40xpf/directivescanner.h"

namespace precomp {

using namespace korelpre;

namespace {

constexpr std::size_t kMostGrowth =
    32;  // bytes that a byte of a token may become, and an empty one

// What stands between the colon and the closing "%" of a marker.
std::string_view argumentOf(std::string_view marker) {
  const std::size_t colon = marker.find(':');
  return marker.substr(colon + 1, marker.size() - colon - 2);
}

tString around(std::string_view before, std::string_view argument, std::string_view behind) {
  tString text(before);
  text.append(argument).append(behind);
  return text;
}

tString orderOf(std::string_view argument) {
  const std::size_t comma = argument.find(',');
  const std::string_view table = trimmed(argument.substr(0, comma));
  tString text = around(" \"+ SqlOrder(", table, "");
  if (comma == std::string_view::npos) return text.append("->(IndexKey()))+\" ");
  const std::string_view order = trimmed(argument.substr(comma + 1));
  const bool number = order.find_first_not_of("0123456789") == std::string_view::npos;
  return text.append(number ? around("->(IndexKey(", order, ")))+\" ")
                            : around("->(DBNickIndexKey(\"", order, "\")))+\" "));
}

// The text of a token inside the SQL string.
tString sqlTextOf(const tSpcString& token) {
  switch (token.aux()) {
    case kTokSqlExp:
      return around(" \"+___SQLGetValue(", argumentOf(token), ")+\" ");
    case kTokSqlXFilial:
      return around(" '\" +xFilial('", trimmed(argumentOf(token)), "')+\"' ");
    case kTokSqlTable:
      return around(" \"+RetSqlName('", trimmed(argumentOf(token)), "')+\" ");
    case kTokSqlTempTable:
      return around(" \"+", trimmed(argumentOf(token)), "+\" ");
    case kTokSqlNotDel:
      return tString::borrow("D_E_L_E_T_= ' '");
    case kTokSqlOrder:
      return orderOf(argumentOf(token));
    default:
      break;
  }
  tString text;
  for (std::string_view rest = token;;) {
    const std::size_t quote = rest.find('"');
    text.append(rest.substr(0, quote));
    if (quote == std::string_view::npos) return text;
    text.append("\"+chr(34)+\"");
    rest.remove_prefix(quote + 1);
  }
}

}  // namespace

bool tSqlBlock::addLine(const tAutoArray<tSpcString>& tokens) {
  bool first = true;
  for (int i = 0; i < tokens.count(); ++i) {
    const tSpcString& token = tokens[i];
    if (token.aux() == kTokSqlNoParser) {
      noParser = true;
      continue;
    }
    const std::size_t most = token.spacing().size() + kMostGrowth * (token.size() + 1);
    if (!fits(most)) return false;
    text.append(first ? std::string_view(" ") : token.spacing().view());
    text.append(sqlTextOf(token));
    first = false;
  }
  return true;
}

bool tSqlBlock::addColumn(std::string_view name, std::string_view description) {
  if (!fits(name.size() + description.size() + 4)) return false;
  if (!columns.empty()) columns.append(',');
  columns.append("{\"").append(name).append(description);
  return true;
}

// The call holds both, and something around them.
bool tSqlBlock::fits(std::size_t bytes) const {
  return text.size() + columns.size() + bytes <= tString::maxSize() / 2;
}

tString tSqlBlock::call(std::string_view alias) const {
  tString made = around("__execSql(", alias, ",\"");
  return made.append(text).append(" \",{").append(columns).append(noParser ? "},.T.)" : "},.F.)");
}

}  // namespace precomp
