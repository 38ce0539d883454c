# The scanner of the language.
#
# The notation is that of korelpre.lex. Two operators have an alternative spelling ("^" is "**", "!="
# and "<>" are "#"), ";" ends a statement as a line feed does, and the token of a string is the text
# between its quotes. A name is taken together with the "&" or ":" in front of it. An arrow with a
# name behind it that begins with END is one token, so that "->END" needs no look beyond it.

%let blank      [ \t]
%let digit      [0-9]
%let nameChar   [A-Za-z0-9_~]
%let name       [A-Za-z_]{nameChar}*
%let macro      "&"{blank}*{name}

# ---- statements --------------------------------------------------------------------------------
%list statement

'ANNO~UNCE'     Announce
'AS'            As
'BEGI~N'        Begin
'BREA~K'        Break
'CASE'          Case
'CATCH'         Catch
'DECL~ARE'      Declare
'DO'            Do
'ELSE'          Else
'ELSEI~F'       ElseIf
'END'           End
'ENDC~ASE'      EndCase
'ENDD~O'        EndDo
'ENDI~F'        EndIf
'EXIT'          Exit
'EXTE~RNAL'     Extern
'FOR'           For
'FUNC~TION'     Function
'HIDDEN'        Hidden
'IF'            If
'IIF'           Iif
'IN'            In
'LINE'          Line
'LOCA~L'        Local
'LOOP'          Loop
'NEXT'          Next
'NIL'           Nil
'OTHE~RWISE'    Otherwise
'PARA~METERS'   Parameters
'PRIV~ATE'      Private
'PROC~EDURE'    Procedure
'PUBL~IC'       Public
'READONLY'      ReadOnly
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
'__MAIN'        Main
'_ObjNewClass'      ObjNewClass
'_ObjClassData'     ObjClassData
'_ObjClassMethod'   ObjClassMethod
'_ObjEndClass'      ObjEndClass
'_StkVarDef'        StkVarDef
'_Super'            Super

'CMONTH'        CMonth
'DBSELECTAREA'  DbSelectArea
'DELETED'       Deleted
'DEVPOS'        DevPos
'EMPTY'         Empty
'FCOUNT'        FCount
'FIELDNAME'     FieldName
'FLOCK'         FLock
'FOUND'         Found
'INKEY'         InKey
'LASTREC'       LastRec
'LEN'           Len
'LOWER'         Lower
'LTRIM'         LTrim
'MONTH'         Month
'PCOUNT'        PCount
'RECCOUNT'      RecCount
'RECNO'         RecNo
'REPLICATE'     Replicate
'RLOCK'         RLock
'ROUND'         Round
'RTRIM'         RTrim
'SECONDS'       Seconds
'SELECT'        Select
'SETPOS'        SetPos
'SPACE'         Space
'STRZERO'       StrZero
'SUBSTR'        SubStr
'TRANSFORM'     Transform
'TRIM'          Trim
'UPPER'         Upper
'VAL'           Val
'VALTYPE'       ValType

'FIELD->'               FieldAliasOp
'M->'                   Memvar
"->"                    AliasOp
'->END'{nameChar}*      AliasEnd

{name}                              IdentName
{digit}+[A-Za-z_~]{nameChar}*       IdentName
{digit}+                            Number
{digit}*"."{digit}+                 Fract
{macro}                             MacroName
{macro}"."                          MacroNamePoint
{macro}"."{nameChar}+               MacroNamePointIdent
"&"                                 MacroFunct
":"{blank}*{name}                   ObjPart
":"                                 ObjColon
"::"{blank}*{name}                  SelfPart
"::"                                SelfColon

'.OR.'          Or
'.AND.'         And
'.NOT.'         Not
'.T.'           True
'.F.'           False
"."             Dot

":="            Assign
"+="            PlusAssign
"-="            MinusAssign
"*="            StarAssign
"/="            SlashAssign
"=="            ExactEqual
"="             Equal
">="            GreaterEqual
">"             Greater
"<="            LessEqual
"<"             Less
"#"|"!="|"<>"   NotEqual
"!"             Bang
"++"            Increment
"+"             Plus
"--"            Decrement
"-"             Minus
"**"|"^"        Power
"*"             Star
"/"             Slash
"%"             Percent
"$"             InStr
","             Comma
"|"             Bar
"@"             At
"("             LeftParen
")"             RightParen
"["             LeftBracket
"]"             RightBracket
"{"             LeftBrace
"}"             RightBrace

"\"\""|"''"     NullStr
"\""            DropQuote       drop push doubleQuoted
"'"             DropQuote       drop push singleQuoted

"/*"            DropBlockOpen   drop push blockComment
"//"|"&&"       DropLineComment drop push lineComment
[\n;]           Eol
[ \t\r]+        DropBlank       drop

# ---- '...' -------------------------------------------------------------------------------------
%list singleQuoted

[^'\r\n]+       String
"'"             DropQuote       drop pop
[\r\n]          DropStringCut   drop pop

# ---- "..." -------------------------------------------------------------------------------------
%list doubleQuoted

[^"\r\n]+       String
"\""            DropQuote       drop pop
[\r\n]          DropStringCut   drop pop

# ---- /* ... */ ---------------------------------------------------------------------------------
%list blockComment

[^*]+           DropBlockText   drop
"*"             DropBlockText   drop
"*/"            DropBlockClose  drop pop

# ---- // ... and && ... -------------------------------------------------------------------------
%list lineComment

[^\n]+          DropCommentText drop
\n              Eol             pop
