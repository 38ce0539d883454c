# The scanner of the directive processor.
#
# Each section is an expression list; lists are numbered from 0 in the order of the sections. A rule
# is an expression, the token it makes and what else happens: "drop" discards the text instead of
# returning the token, "push LIST" continues in that list, "pop" returns to the list before. The
# longest match wins, of equally long ones the rule that stands first.
#
#   "text"  this text               'text'  this text, upper or lower case
#   [a-z]   one of these            [^a-z]  any character but these
#   {name}  what %let calls so      'PROC~EDURE'  PROC, PROCE, PROCED ... PROCEDURE
#
# Some rules match more than their token, and the scanner class gives the rest back: "->END" with
# another name character is only the arrow; a quote or a backslash at the end of its line is only that;
# a backslash at the end of a file name is no part of it when it makes an ordinary character of the
# ";", the quote, or the "/" or "&" of a comment, behind it.
#
# "//", "&&" and a line that starts with "*" are comments up to the line feed, which is returned, so
# that it ends the statement in front of the comment; lines that start with "*" follow on.

%let blank      [ \t]
%let lineEnd    \r?\n
%let digit      [0-9]
%let nameStart  [A-Za-z_]
%let nameChar   [A-Za-z0-9_~]
%let word       [A-Za-z0-9_]+
%let dropped    [\x00-\x08\x0B\x0C\x0E-\x1F`\x81-\xFF\x{FFB4}]+
%let comment    "//"|"&&"
%let sqlText    [ \t!-$&-[\]_a-{\}]+

# ---- statements and directives -----------------------------------------------------------------
%list statement

'#COMMAND'      DirCommand
'#XCOMMAND'     DirXCommand
'#TRANSLATE'    DirTranslate
'#XTRANSLATE'   DirXTranslate
'#INCLUDE'      DirInclude
'#DEFINE'       DirDefine       push definedName
'#ERROR'        DirError
'#IFDEF'        DirIfDef
'#IFNDEF'       DirIfNDef
'#ELSE'         DirElse
'#ENDIF'        DirEndIf
'#STDOUT'       DirStdOut
'#UNDEF'        DirUndef

'ALIAS'         Alias
'ANNO~UNCE'     Announce
'AS'            As
'BEGI~N'        Begin
'BEGINSQL'      BeginSql
'BREA~K'        Break
'CASE'          Case
'CATCH'         Catch
'COLUMN'        Column
'DATE'          Date
'DECL~ARE'      Declare
'DO'            Do
'ELSE'          Else
'ELSEI~F'       ElseIf
'END'           End
'ENDC~ASE'      EndCase
'ENDD~O'        EndDo
'ENDI~F'        EndIf
'ENDSQL'        EndSql
'ENDTRY'        EndTry
'EXIT'          Exit
'EXTE~RNAL'     Extern
'FOR'           For
'FUNC~TION'     Function
'METHOD'        Function
'IF'            If
'IIF'           Iif
'IN'            In
'LOCA~L'        Local
'LOGICAL'       Logical
'LOOP'          Loop
'MAIN_FUNC'     MainFunc
'NEXT'          Next
'NIL'           Nil
'NUMERIC'       Numeric
'OTHE~RWISE'    Otherwise
'PRIV~ATE'      Private
'PROC~EDURE'    Procedure
'PUBL~IC'       Public
'RECO~VER'      Recover
'RETU~RN'       Return
'SEQU~ENCE'     Sequence
'STAT~IC'       Static
'STEP'          Step
'THROW'         Throw
'TO'            To
'TRY'           Try
'USIN~G'        Using
'WHIL~E'        While
'WITH'          With
'_FIEL~D'       Field
'_ObjNewClass'      ObjNewClass
'_ObjClassData'     ObjClassData
'_ObjClassMethod'   ObjClassMethod
'_ObjEndClass'      ObjEndClass

'FIELD->'                   FieldAliasOp
'M->'                       Memvar
'->END'                     AliasEnd
"->"                        Arrow
'->END'{nameChar}           Arrow

'%EXP:'{sqlText}"%"                                                         SqlExp
'%XFILIAL:'{blank}*{word}{blank}*"%"                                        SqlXFilial
'%ORDER:'{blank}*{word}{blank}*(","{blank}*{word}{blank}*)?"%"              SqlOrder
'%TABLE:'{blank}*{word}{blank}*"%"                                          SqlTable
'%TEMP-TABLE:'{blank}*{word}{blank}*"%"                                     SqlTempTable
'%NOTDEL%'                                                                  SqlNotDel
'%NOPARSER%'                                                                SqlNoParser

{nameStart}{nameChar}*              IdentName
{digit}+[A-Za-z_~]{nameChar}*       IdentName
{digit}+("."{digit}+)?|"."{digit}+  Number
\\{word}[A-Za-z0-9_\\.]*            FileName
\\{word}[A-Za-z0-9_\\.]*\\[;"'/&]    FileName
\\{lineEnd}                          FileName

'.OR.'          Or
'.AND.'         And
'.NOT.'         Not
'.T.'           True
'.F.'           False
"..."           Ellipsis
"."             Dot

":="            Assign
"+="            PlusAssign
"-="            MinusAssign
"*="            StarAssign
"/="            SlashAssign
"=>"            ResultArrow
"=="            ExactEqual
"="             Equal
">="            GreaterEqual
">"             Greater
"<="            LessEqual
"<"             Less
"#"|"!="        Hash
"!"             Bang
"++"            Increment
"+"             Plus
"--"            Decrement
"-"             Minus
"*"             Star
"/"             Slash
"%"             Percent
"^"             Caret
"$"             Dollar
"&"             Ampersand
","             Comma
":"             Colon
"|"             Bar
"@"             At
"?"             Question
"("             LeftParen
")"             RightParen
"["             LeftBracket
"]"             RightBracket
"{"             LeftBrace
"}"             RightBrace

"\"\""|"''"             NullStr
["']{lineEnd}           NullStr
"\""                    DropQuote       drop push doubleQuoted
"'"                     DropQuote       drop push singleQuoted
\\                      DropBackslash   drop push escape

{blank}+                                Spc
";"{blank}*{lineEnd}                    IgnoreEol
";"{blank}*{comment}                  IgnoreComment       push continuedComment
";"{blank}*";"{blank}*{comment}       IgnoreCommentEsp    push continuedComment
";"                                     Semicolon
"/*"                                    DropBlockOpen       drop push blockComment
{comment}                               DropLineComment     drop push lineComment
\n{blank}*"*"                           DropStarComment     drop push lineComment
\n                                      LineFeed
\r                                      DropReturn          drop
{dropped}                               DropCharacter       drop

# ---- the name after #define --------------------------------------------------------------------
%list definedName

{word}                          IdentName           pop
{word}"("                       FuncName            pop
\n                              LineFeed            pop
{blank}+                        DropBlank           drop
";"{blank}*{lineEnd}            DropContinuation    drop
";"{blank}*{comment}          DropContinuation    drop push continuedComment
"/*"                            DropBlockOpen       drop push blockComment
{comment}[^\n]*               DropLineComment     drop
\r                              DropReturn          drop
{dropped}                       DropCharacter       drop

# ---- '...' -------------------------------------------------------------------------------------
%list singleQuoted

[^'\r\n]+       SqString
"'"             DropQuote       drop pop
[\r\n]          DropStringCut   drop pop

# ---- the character after a backslash -----------------------------------------------------------
%list escape

[^\r\n]         EspCh           pop

# ---- "..." -------------------------------------------------------------------------------------
%list doubleQuoted

[^"\r\n]+       String
"\""            DropQuote       drop pop
[\r\n]          DropStringCut   drop pop

# ---- /* ... */ ---------------------------------------------------------------------------------
%list blockComment

[^*\n]+         DropBlockText   drop
\n              DropBlockText   drop
"*"             DropBlockText   drop
"*/"            DropBlockClose  drop pop

# ---- the comment behind a continuation ---------------------------------------------------------
%list continuedComment

[^\n]+          DropCommentText drop
\n              DropCommentEnd  drop pop

# ---- // ..., && ... and lines that start with * ------------------------------------------------
%list lineComment

[^\n]+          DropCommentText drop
\n{blank}*"*"   DropStarComment drop
\n              LineFeed        pop
