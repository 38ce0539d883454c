#include "ssvp40xpf/korelprelex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>

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

struct tCase {
  std::string source;
  const char* tokens;
};

template <std::size_t count>
void expectTokens(const tCase (&cases)[count]) {
  for (const tCase& test : cases) {
    SSLexStringConsumer text(test.source.data(), test.source.size());
    EXPECT_EQ(scanAll(text), test.tokens) << test.source;
  }
}

TEST(DirectiveScanner, Directives) {
  expectTokens({
      {"#Define X 1\r\n", "_define identName<X> spc number<1> LF"},
      {"#DEFINE F(a)", "_define funcName<F(> identName<a> )"},
      {"#define\tIF (a)", "_define identName<IF> spc ( identName<a> )"},
      {"#define ;\r\n /* c */ ; // d\r\n 9_\x01Z", "_define identName<9_> identName<Z>"},
      {"#define // none\r\nIF", "_define LF if"},
      {"#define /* a\nb */\r\nIF", "_define LF if"},
      {"#define +", "_define SSLex0105e: Invalid token, Line 1, Offset 9, +"},
      {"#Command #xcommand #TRANSLATE#XTRANSLATE",
       "_command spc _xcommand spc _translate _xtranslate"},
      {"#include 'a.ch'", "_include spc SQSTRING<a.ch>"},
      {"#error#ifdef#ifndef#else#endif#stdout#undef",
       "_error _ifdef _ifndef _else _endif _stdout _undef"},
      {"# define", "# spc identName<define>"},
  });
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

TEST(DirectiveScanner, NamesNumbersAndOperators) {
  expectTokens({
      {"a_1~ 1a 2_ 3~b 12 1.5 .5 1. ...5",
       "identName<a_1~> spc identName<1a> spc identName<2_> "
       "spc identName<3~b> spc number<12> spc number<1.5> spc "
       "number<.5> spc number<1> . spc ... number<5>"},
      {"1.and.2.OR..not.x.T..f.", "number<1> .and. number<2> .or. .not. identName<x> .t. .f."},
      {"a++ + --b-=c->d-e",
       "identName<a> ICR spc + spc DCR identName<b> -= identName<c> -> "
       "identName<d> - identName<e>"},
      {"<>>< <=>=>", "< > > < spc <= >= >"},
      {"===>:=:**=!=#!", "== => := : * *= # # !"},
      {"$&,/ /=%^|@?()[]{}", "$ & , / spc /= % ^ | @ ? ( ) [ ] { }"},
      {"\\a\\b.prw \\\\\\<\\'\\.", "fileName<\\a\\b.prw> spc ESPCH<\\> ESPCH<<> ESPCH<'> ESPCH<.>"},
  });
}

TEST(DirectiveScanner, Strings) {
  expectTokens({
      {"'it''s'", "SQSTRING<it> SQSTRING<s>"},
      {"\"a'b\"'c\"d'", "STRING<a'b> SQSTRING<c\"d>"},
      {"\"\"''x", "NullStr<\"\"> NullStr<''> identName<x>"},
      {"\"open\r\nx", "STRING<open> LF identName<x>"},
      {"'open\nx", "SQSTRING<open> identName<x>"},
      {"x'\r\ny\"\nz", "identName<x> NullStr<'> LF identName<y> NullStr<\"> LF identName<z>"},
      {"'\x80\x7F;//~'", "SQSTRING<\x80\x7F;//~>"},
  });
}

TEST(DirectiveScanner, CommentsAndContinuations) {
  expectTokens({
      {"a ; \t\r\nb;\nc", "identName<a> spc IgnoreEol identName<b> IgnoreEol identName<c>"},
      {"a; //x\r\n*b", "identName<a> IgnoreComment * identName<b>"},
      {"a ; && x ; y\r\nb", "identName<a> spc IgnoreComment identName<b>"},
      {"a; ; // x\nb", "identName<a> IgnoreCommentEsp identName<b>"},
      {"a; b;;c", "identName<a> ; spc identName<b> ; ; identName<c>"},
      {"a // b ; \r\nc && d\r\n", "identName<a> spc LF identName<c> spc LF"},
      {"a/*b**c/\r\n* d*//e", "identName<a> / identName<e>"},
      {"a /* open\r\n", "identName<a> spc"},
      {"a\r\n \t* b\r\n* c\r\n*d\r\n e*f", "identName<a> LF spc identName<e> * identName<f>"},
      {"a // b\r\n * c\r\n\r\n", "identName<a> spc LF LF"},
      {"a *b", "identName<a> spc * identName<b>"},
  });
}

TEST(DirectiveScanner, StarCommentOnTheFirstLine) {
  expectTokens({
      {"* a\r\nb", "LF identName<b>"},
      {" \t*= a\r\n* b\r\nc", "LF identName<c>"},
      {"** a\r\nb", "LF identName<b>"},
      {" a*b", "spc identName<a> * identName<b>"},
      {"/**/* a", "* spc identName<a>"},
      {" ", "spc"},
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

TEST(DirectiveScanner, DroppedAndInvalidCharacters) {
  expectTokens({
      {std::string("a\0b`\x01\x1F\x81\xFF\x0C"
                   "c\r",
                   10),
       "identName<a> identName<b> identName<c>"},
      {"a\r\n  \x7F", "identName<a> LF spc SSLex0105e: Invalid token, Line 2, Offset 3, \x7F"},
      {"~a", "SSLex0105e: Invalid token, Line 1, Offset 1, ~"},
      {"a\\\r\n", "identName<a> SSLex0105e: Invalid token, Line 1, Offset 3, \r"},
  });
}

}  // namespace
