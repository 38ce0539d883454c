#pragma once

#include <stddef.h>

/* The runtime as plain functions, for callers without classes.
 *
 * Every object is reached by a handle, and each function checks that the handle is of its kind. A
 * handle of another kind, or a null one, is reported to the bad-correlator callback; the function
 * then does nothing and returns null or 0 (SSYaccParse: 1).
 *
 * No exception leaves a function. What was raised is kept by the lexer or parser that the function
 * was called for; SSLexGetLastException and SSYaccGetLastException hand it out, and the caller then
 * frees it with SSExceptionDestroy. The Clear calls empty the slot, and free an exception that was
 * never handed out. Creating fails with null.
 *
 * "Owned" results carry a reference, which the caller releases. */

#ifdef __cplusplus
extern "C" {
#endif

typedef struct SSObject SSObject;
typedef struct SSExceptionObject SSExceptionObject;

/* Called with the handle and a message: "Bad correlator, SSLX expected" and its like, or
 * "SSRef0001e: Reference count less than zero". */
typedef void (*SSBadCorrelatorCallback)(void* handle, const char* message);
/* Sets the callback for the process (null: none) and returns the previous one. */
SSBadCorrelatorCallback SSSetBadCorrelatorCallback(SSBadCorrelatorCallback callback);

const char* SSExceptionGetMessage(const SSExceptionObject* exception);
int SSExceptionGetErrorId(const SSExceptionObject* exception);
void SSExceptionDestroy(SSExceptionObject* exception);

/* ---- tables and consumers ------------------------------------------------------------------- */

/* A table from an image of `size` bytes in memory; without an image, from the file `name`. */
SSObject* SSLexTableCreate(const void* image, size_t size, const char* name);
void SSLexTableDestroy(SSObject* table);

/* A consumer over a copy of `length` characters; type 0, 1 (16-bit units) or 2. */
SSObject* SSLexConsumerCreate(const void* text, size_t length, int type);
SSObject* SSLexFileConsumerCreate(const char* path, int type, size_t size, size_t increment);
void SSLexConsumerDestroy(SSObject* consumer);

/* ---- lexers --------------------------------------------------------------------------------- */

/* A syntax error of the scanner: an owned lexeme to deliver, or null to drop the text. */
typedef SSObject* (*SSLexErrorCallback)(SSObject* lex, SSObject* consumer, void* user);
/* Not 0 to deliver the lexeme that was completed, 0 to drop it. */
typedef int (*SSLexCompleteCallback)(SSObject* lex, SSObject* lexeme, void* user);

/* Consumer and table must outlive the lexer. */
SSObject* SSLexCreate(SSObject* consumer, SSObject* table);
void SSLexDestroy(SSObject* lex);
/* Owned; null at the end of the input or after an error. */
SSObject* SSLexGetNextLexeme(SSObject* lex);
/* These take the index of a list and return not 0 on success. */
int SSLexPushExpressionList(SSObject* lex, unsigned index);
int SSLexPopExpressionList(SSObject* lex);
int SSLexGotoExpressionList(SSObject* lex, unsigned index);
int SSLexIsCurrentExpressionList(SSObject* lex, unsigned index);
void SSLexReset(SSObject* lex);
void SSLexSetErrorCallback(SSObject* lex, SSLexErrorCallback callback, void* user);
void SSLexSetCompleteCallback(SSObject* lex, SSLexCompleteCallback callback, void* user);
SSExceptionObject* SSLexGetLastException(SSObject* lex);
void SSLexClearLastException(SSObject* lex);

/* ---- lexemes -------------------------------------------------------------------------------- */

unsigned SSLexLexemeGetToken(SSObject* lexeme);
unsigned SSLexLexemeGetLine(SSObject* lexeme);
unsigned SSLexLexemeGetOffset(SSObject* lexeme);
size_t SSLexLexemeGetLength(SSObject* lexeme);
const void* SSLexLexemeGetBuffer(SSObject* lexeme);
unsigned SSLexLexemeGetType(SSObject* lexeme);
void SSLexLexemeSetToken(SSObject* lexeme, unsigned token);
void SSLexLexemeSetLine(SSObject* lexeme, unsigned line);
void SSLexLexemeSetOffset(SSObject* lexeme, unsigned offset);
/* Cuts the text; 0, without effect, for more characters than there are. */
int SSLexLexemeSetLength(SSObject* lexeme, size_t length);
/* Replaces the text by a copy of 8-bit characters; 0 when there is no storage for it. */
int SSLexLexemeSetBuffer(SSObject* lexeme, const char* text, size_t length);
void SSLexLexemeSetType(SSObject* lexeme, unsigned type);
void SSLexLexemeRefInc(SSObject* lexeme);
/* Drops `count` references. More than there are is reported, and nothing is dropped. */
void SSLexLexemeRefDec(SSObject* lexeme, unsigned count);

/* ---- parsers -------------------------------------------------------------------------------- */

/* An owned lexeme, or null at the end of the input. */
typedef SSObject* (*SSYaccNextLexemeCallback)(SSObject* yacc, void* user);
/* An owned element; null ends the parse. */
typedef SSObject* (*SSYaccShiftCallback)(SSObject* yacc, SSObject* lookahead, void* user);
typedef SSObject* (*SSYaccReduceCallback)(SSObject* yacc, unsigned production, unsigned size,
                                          void* user);
/* 0 to go on with the parse. */
typedef int (*SSYaccErrorCallback)(SSObject* yacc, unsigned state, SSObject* lookahead, void* user);

SSObject* SSYaccTableCreate(const void* image, size_t size, const char* name);
void SSYaccTableDestroy(SSObject* table);

/* Lexer (null when a callback supplies the lexemes) and table must outlive the parser. The elements
 * that the parser makes have `extra` zeroed bytes for the caller. */
SSObject* SSYaccCreate(SSObject* lex, SSObject* table, SSYaccReduceCallback reduce, void* user,
                       size_t extra);
void SSYaccDestroy(SSObject* yacc);
/* 0 when the input was accepted without an error, else 1. */
int SSYaccParse(SSObject* yacc);
void SSYaccReset(SSObject* yacc);
/* Borrowed; right-side symbols count from 0 at the left, the stack from 0 at the top. */
SSObject* SSYaccGetElementFromProduction(SSObject* yacc, long index);
SSObject* SSYaccGetElementFromStack(SSObject* yacc, unsigned depth);
/* An array of `*count` tokens, freed by SSYaccFreeValidLookaheads. */
unsigned* SSYaccGetValidLookaheads(SSObject* yacc, unsigned state, unsigned* count);
void SSYaccFreeValidLookaheads(unsigned* tokens);
/* Takes over a reference of the element, also when it fails (0). */
int SSYaccPushStackElement(SSObject* yacc, SSObject* element);
int SSYaccPopStackElement(SSObject* yacc);
void SSYaccSetAbort(SSObject* yacc, int abort);
int SSYaccGetAbort(SSObject* yacc);
int SSYaccGetError(SSObject* yacc);
unsigned SSYaccGetShiftedSinceError(SSObject* yacc);
/* Recovers by the error token; for use in an error callback. 0 when the parse can go on. */
int SSYaccProcessError(SSObject* yacc);
void SSYaccSetNextLexemeCallback(SSObject* yacc, SSYaccNextLexemeCallback callback, void* user);
void SSYaccSetShiftCallback(SSObject* yacc, SSYaccShiftCallback callback, void* user);
void SSYaccSetErrorCallback(SSObject* yacc, SSYaccErrorCallback callback, void* user);
SSExceptionObject* SSYaccGetLastException(SSObject* yacc);
void SSYaccClearLastException(SSObject* yacc);

/* ---- stack elements ------------------------------------------------------------------------- */

/* Owned. */
SSObject* SSYaccStackElementCreate(size_t extra);
unsigned SSYaccStackElementGetState(SSObject* element);
void SSYaccStackElementSetState(SSObject* element, unsigned state);
/* Borrowed; null when there is none. */
SSObject* SSYaccStackElementGetLexeme(SSObject* element);
/* Adds a reference of its own; a null lexeme removes the present one. */
void SSYaccStackElementSetLexeme(SSObject* element, SSObject* lexeme);
/* The caller's bytes, aligned for any type; null when there are none. */
void* SSYaccStackElementGetExtra(SSObject* element);
void SSYaccStackElementRefInc(SSObject* element);
void SSYaccStackElementRefDec(SSObject* element, unsigned count);
/* Destroys the element whoever holds it. */
void SSYaccStackElementDestroy(SSObject* element);

#ifdef __cplusplus
}
#endif
