#include "ssvp40xpf/directivescanner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <iterator>
#include <string>
#include <utility>

#include "tests/ssvp40xpf/scanning.h"

namespace {

using namespace korelpre;

using scanning::textOf;

bool showsText(unsigned token) {
  constexpr unsigned kShown[] = {kTokNullStr, kTokIdentName, kTokFuncName, kTokFileName,
                                 kTokNumber,  kTokString,    kTokSqString, kTokEspCh,
                                 kTokSqlExp,  kTokSqlOrder};
  return std::find(std::begin(kShown), std::end(kShown), token) != std::end(kShown);
}

/// Scans to the end: spellings, "LF" for a line feed, where the text matters with the text behind
/// it. An error ends the scan with its message.
std::string scanAll(SSLexConsumer& consumer) {
  KorelPreLexClass lex(consumer);
  std::string tokens;
  try {
    while (SSLexLexeme* lexeme = ++lex) {
      if (!tokens.empty()) tokens += ' ';
      const unsigned token = lexeme->token();
      tokens += token == kTokLineFeed ? "LF" : lex.tokenToConstChar(token);
      if (showsText(token)) tokens += "<" + textOf(*lexeme) + ">";
      lexeme->refDec();
    }
  } catch (const SSException& error) {
    tokens += std::string(tokens.empty() ? "" : " ") + error.message();
  }
  return tokens;
}

void expectTokens(std::initializer_list<std::pair<std::string, const char*>> cases) {
  for (const auto& [source, tokens] : cases) {
    SSLexStringConsumer text(source.data(), source.size());
    EXPECT_EQ(scanAll(text), tokens) << source;
  }
}

TEST(DirectiveScanner, KeywordsAndTheirAbbreviations) {
  expectTokens({
      {"Proc PROCEDURE procedures PRO",
       "procedure spc procedure spc identName<procedures> spc "
       "identName<PRO>"},
      {"exte EXTERN externa External externals",
       "extern spc extern spc extern spc extern spc identName<externals>"},
      {"func Method meth FUNCTION", "function spc function spc identName<meth> spc function"},
      {"end endi endc endd ende EndSql ENDTRY",
       "end spc endif spc endcase spc enddo spc "
       "identName<ende> spc endsql spc endtry"},
      {"else elsei ElseIf els", "else spc elseif spc elseif spc identName<els>"},
      {"begi BeginSql beginx begin~",
       "begin spc beginsql spc identName<beginx> spc "
       "identName<begin~>"},
      {"_fiel _FIELD field FIELD->M->x",
       "field spc field spc identName<field> spc fieldAliasOp "
       "memvar identName<x>"},
      {"AM->x _FIELD->x", "identName<AM> -> identName<x> spc field -> identName<x>"},
      {"a->end b->END. c->ENDERECO d->End~",
       "identName<a> aliasend spc identName<b> aliasend . "
       "spc identName<c> -> identName<ENDERECO> spc "
       "identName<d> -> identName<End~>"},
      {"_objnewclass _ObjClassMethod main_func", "_ObjNewClass spc _ObjClassMethod spc main_func"},
      {"As numeric Date column loc", "AS spc NUMERIC spc DATE spc COLUMN spc identName<loc>"},
  });
}

TEST(DirectiveScanner, EmbeddedSql) {
  expectTokens({
      {"%Exp:x->y + 'a'%%NotDel%%noparser%", "sqlexp<%Exp:x->y + 'a'%> sqlnotdel sqlnoparser"},
      {"%xfilial: SA1 %%table:SA1%%Temp-Table:c%", "sqlxfilial sqltable sqlTempTable"},
      {"%ORDER: SA1 , 2 % %order:SA1%", "sqlorder<%ORDER: SA1 , 2 %> spc sqlorder<%order:SA1%>"},
      {"%exp:a|b%", "% identName<exp> : identName<a> | identName<b> %"},
      {"%order:a,b,c%", "% identName<order> : identName<a> , identName<b> , identName<c> %"},
  });
}

TEST(DirectiveScanner, BackslashesInFileNamesAndBeforeOtherCharacters) {
  expectTokens({
      {"a\\\r\n\\b.c\\\n", "identName<a> fileName<\\> LF fileName<\\b.c\\> LF"},
      {"\\b\\;\n\\b\\\\;\n", "fileName<\\b> ESPCH<;> LF fileName<\\b\\\\> IgnoreEol"},
      {"\\b\\\"\\c\\'\\d\\/*\\\\\\e\\&&",
       "fileName<\\b> ESPCH<\"> fileName<\\c> ESPCH<'> fileName<\\d> ESPCH</> * ESPCH<\\> "
       "fileName<\\e> ESPCH<&> &"},
  });
}

TEST(DirectiveScanner, DroppedAndInvalidCharacters) {
  expectTokens({
      {std::string("a\0b`\x01\x1F\x81\xFF\x0C"
                   "c\r",
                   10),
       "identName<a> identName<b> identName<c>"},
      {"a\r\n  \x7F", "identName<a> LF spc SSLex0105e: Invalid token, Line 2, Offset 3, \x7F"},
      {"~a", "SSLex0105e: Invalid token, Line 1, Offset 1, ~"},
  });
}

}  // namespace
