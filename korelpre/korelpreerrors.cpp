#include <cstdio>

#include "korelpre/korelprecls.h"
#include "lib_base/translate.h"

namespace precomp {

namespace {

struct tErrorText {
  int code;
  const char* text;
};

constexpr int kUnknownError = 9999;

// Kept on purpose: the texts of 2028 and 2069 begin with other numbers than their own.
constexpr tErrorText kErrorTexts[] = {
    {2001, "C2001  Syntax error:"},
    {2002, "C2002  Statement unterminated at end of line/unbalanced parentesis/brackets"},
    {2003, "C2003  Syntax error in statement"},
    {2006, "C2006  Statement not allowed outside procedure or function"},
    {2009, "C2009  Invalid use of @ (pass by reference) operator"},
    {2011, "C2011  EXIT statement with no loop in sight"},
    {2012, "C2012  LOOP statement with no loop in sight"},
    {2013, "C2013  EXIT statement violates enclosing SEQUENCE"},
    {2014, "C2014  LOOP statement violates enclosing SEQUENCE"},
    {2024, "C2024  Unclosed control structures"},
    {2025, "C2025  ELSE does not match IF"},
    {2026, "C2026  ELSEIF does not match IF"},
    {2027, "C2027  ENDIF does not match IF"},
    {2028, "C2029  ENDDO does not match WHILE"},
    {2029, "C2029  NEXT does not match FOR"},
    {2030, "C2030  ENDCASE does not match CASE"},
    {2032, "C2032  END SEQUENCE does not match BEGIN SEQUENCE"},
    {2033, "C2033  END TRY does not match TRY"},
    {2051, "C2051  LOCAL declaration follows executable statement"},
    {2069, "C2068  #ifdef/#ifndef without #endif"},
    {2070, "C2070  #else does not match #ifdef"},
    {2078, "C2078  Circular #translate/#command/#define"},
    {2086, "C2086  RETURN violates enclosing SEQUENCE"},
    {2090, "C2090  File not found "},
    {2091, "C2091  Invalid Function Name "},
    {kUnknownError, "C9999  ERRO generico"},
};

const tErrorText& textOf(int code) {
  for (const tErrorText& entry : kErrorTexts) {
    if (entry.code == code) return entry;
  }
  return textOf(kUnknownError);
}

bool takesExtra(int code) {
  return code == 2090 || code == 2091 || code == kUnknownError;
}

}  // namespace

void KorelPreYaccClass::exception(int code, const tSpcString* token, const char* extra) {
  const bool placed = token != nullptr && token->line() > 0;
  exceptionAt(code, placed ? static_cast<int>(token->line()) : currentLine_, extra);
}

void KorelPreYaccClass::exceptionAt(int code, int line, const char* extra) {
  const tErrorText& entry = textOf(code);
  tString text(entry.text);
  if (extra != nullptr && takesExtra(entry.code)) text.append(extra);
  // A file that is not there has no line: the error belongs to the directive of the main file.
  if (entry.code == 2090) {
    shared_.errorPlaced = true;
    errLine() = root().currentLine_;
  } else {
    placeError(line, text);
  }
  throw SSException(entry.code, text.c_str());
}

void KorelPreYaccClass::exceptionAt(int code, const tStatementPlace& place, const char* extra) {
  root().currentLine_ = place.mainLine;
  place.file->exceptionAt(code, place.line, extra);
}

// The line of a message is a line of the file that the message names, the main file. What happened
// in an included file is told in front of the text.
void KorelPreYaccClass::placeError(int line, tString& text) {
  if (shared_.errorPlaced) return;
  shared_.errorPlaced = true;
  if (root_ == this) {
    errLine() = line;
    return;
  }
  errLine() = root().currentLine_;
  text.insert(0,
              tString::format("%s(%d) %s ", fileName_.c_str(), line, translate("Error").c_str()));
}

void KorelPreYaccClass::raiseIncludeLimit(const char* limit) {
  shared_.errorPlaced = true;
  errLine() = root().currentLine_;
  tString text(textOf(kUnknownError).text);
  text.append(": ").append(limit);
  throw SSException(kUnknownError, text.c_str());
}

}  // namespace precomp
