#include "korelpre/errors/errortexts.h"

namespace precomp {

namespace {

// Kept on purpose: the texts of 2028 and 2069 begin with other numbers than their own.
constexpr tErrorText kErrorTexts[] = {
    {2001, "syntax-error", "C2001  Syntax error:"},
    {2002, "unterminated-statement",
     "C2002  Statement unterminated at end of line/unbalanced parentesis/brackets"},
    {2003, "invalid-statement", "C2003  Syntax error in statement"},
    {2006, "statement-outside-function",
     "C2006  Statement not allowed outside procedure or function"},
    {2009, "invalid-reference", "C2009  Invalid use of @ (pass by reference) operator"},
    {2011, "exit-without-loop", "C2011  EXIT statement with no loop in sight"},
    {2012, "loop-without-loop", "C2012  LOOP statement with no loop in sight"},
    {2013, "exit-from-sequence", "C2013  EXIT statement violates enclosing SEQUENCE"},
    {2014, "loop-from-sequence", "C2014  LOOP statement violates enclosing SEQUENCE"},
    {2024, "unclosed-structure", "C2024  Unclosed control structures"},
    {2025, "else-without-if", "C2025  ELSE does not match IF"},
    {2026, "elseif-without-if", "C2026  ELSEIF does not match IF"},
    {2027, "endif-without-if", "C2027  ENDIF does not match IF"},
    {2028, "enddo-without-while", "C2029  ENDDO does not match WHILE"},
    {2029, "next-without-for", "C2029  NEXT does not match FOR"},
    {2030, "endcase-without-case", "C2030  ENDCASE does not match CASE"},
    {2032, "end-without-sequence", "C2032  END SEQUENCE does not match BEGIN SEQUENCE"},
    {2033, "end-without-try", "C2033  END TRY does not match TRY"},
    {2051, "late-local", "C2051  LOCAL declaration follows executable statement"},
    {2069, "unclosed-conditional", "C2068  #ifdef/#ifndef without #endif"},
    {2070, "else-without-ifdef", "C2070  #else does not match #ifdef"},
    {2078, "circular-rule", "C2078  Circular #translate/#command/#define"},
    {2086, "return-from-sequence", "C2086  RETURN violates enclosing SEQUENCE"},
    {2090, "include-not-found", "C2090  File not found "},
    {2091, "invalid-function-name", "C2091  Invalid Function Name "},
    {9999, "limit-exceeded", "C9999  ERRO generico"},
};

}  // namespace

std::span<const tErrorText> errorTexts() {
  return kErrorTexts;
}

const tErrorText& errorTextOf(int code) {
  for (const tErrorText& entry : kErrorTexts) {
    if (entry.code == code) return entry;
  }
  return std::end(kErrorTexts)[-1];
}

}  // namespace precomp
