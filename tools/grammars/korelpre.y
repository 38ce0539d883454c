/* The grammar of the directive processor: it reads a whole source text, directives and statements,
   line by line.

   The parser table is made from bison's LALR(1) automaton of this file, so the number of a
   production is its place here, counted from 1, and it is the number that `reduce` receives: a new
   production in the middle renumbers all that follow. Nonterminals are numbered in the order of
   their first appearance.

   The grammar is ambiguous on purpose. Every conflict is resolved by shifting, 119 of the 130 are
   the "<" that opens a marker (a bare less-than in a rule is written with a backslash), and the
   build fails when their number changes. */

%define lr.type lalr
%define lr.default-reduction accepting

/* Each token stands on a line of its own: its name, its number and its spelling. */

%token NullStr           59 "NullStr"
%token LineFeed          61 "\n"
%token Arrow             62 "->"
%token Dollar            63 "$"
%token Greater           64 ">"
%token GreaterEqual      65 ">="
%token Less              66 "<"
%token LessEqual         67 "<="
%token Equal             68 "="
%token ExactEqual        69 "=="
%token Ampersand         70 "&"
%token Comma             71 ","
%token Hash              72 "#"
%token Plus              73 "+"
%token Increment         74 "ICR"
%token Decrement         75 "DCR"
%token Minus             76 "-"
%token Slash             77 "/"
%token Star              78 "*"
%token Percent           80 "%"
%token Caret             81 "^"
%token Or                82 ".or."
%token And               83 ".and."
%token Not               84 ".not."
%token True              85 ".t."
%token False             86 ".f."
%token Dot               87 "."
%token Ellipsis          88 "..."
%token Bang              89 "!"
%token LeftParen         90 "("
%token RightParen        91 ")"
%token LeftBracket       92 "["
%token RightBracket      93 "]"
%token LeftBrace         94 "{"
%token RightBrace        95 "}"
%token Assign            97 ":="
%token PlusAssign        98 "+="
%token MinusAssign       99 "-="
%token StarAssign       100 "*="
%token SlashAssign      101 "/="
%token ResultArrow      102 "=>"
%token Colon            103 ":"
%token Bar              104 "|"
%token At               105 "@"
%token Question         106 "?"
%token Spc              107 "spc"
%token IgnoreComment    109 "IgnoreComment"
%token IgnoreEol        110 "IgnoreEol"
%token IgnoreCommentEsp 111 "IgnoreCommentEsp"
%token Semicolon        112 ";"
%token IdentName        113 "identName"
%token FileName         114 "fileName"
%token Number           115 "number"
%token DirCommand       116 "_command"
%token DirXCommand      117 "_xcommand"
%token DirTranslate     118 "_translate"
%token DirXTranslate    119 "_xtranslate"
%token DirInclude       120 "_include"
%token DirDefine        121 "_define"
%token DirError         122 "_error"
%token DirIfDef         123 "_ifdef"
%token DirIfNDef        124 "_ifndef"
%token DirElse          125 "_else"
%token DirEndIf         126 "_endif"
%token DirStdOut        127 "_stdout"
%token DirUndef         128 "_undef"
%token Announce         129 "announce"
%token Begin            130 "begin"
%token BeginSql         131 "beginsql"
%token EndSql           132 "endsql"
%token Alias            133 "alias"
%token Sequence         134 "sequence"
%token Break            135 "break"
%token Recover          136 "recover"
%token Using            137 "using"
%token Try              138 "try"
%token Throw            139 "throw"
%token Catch            140 "catch"
%token EndTry           141 "endtry"
%token Declare          142 "declare"
%token Do               143 "do"
%token With             144 "with"
%token Case             145 "case"
%token EndCase          146 "endcase"
%token Otherwise        147 "otherwise"
%token While            148 "while"
%token Exit             149 "exit"
%token Loop             150 "loop"
%token End              151 "end"
%token EndDo            152 "enddo"
%token Procedure        153 "procedure"
%token FieldAliasOp     154 "fieldAliasOp"
%token Field            155 "field"
%token AliasEnd         156 "aliasend"
%token Local            157 "local"
%token Private          158 "private"
%token Public           159 "public"
%token Return           160 "return"
%token Extern           161 "extern"
%token In               162 "in"
%token For              163 "for"
%token To               164 "to"
%token Next             165 "next"
%token Step             166 "step"
%token Function         167 "function"
%token If               168 "if"
%token Iif              169 "iif"
%token Else             170 "else"
%token ElseIf           171 "elseif"
%token EndIf            172 "endif"
%token Nil              173 "nil"
%token Static           174 "static"
%token MainFunc         175 "main_func"
%token SqlExp           176 "sqlexp"
%token SqlXFilial       177 "sqlxfilial"
%token SqlOrder         178 "sqlorder"
%token SqlTable         179 "sqltable"
%token SqlTempTable     180 "sqlTempTable"
%token SqlNotDel        181 "sqlnotdel"
%token SqlNoParser      182 "sqlnoparser"
%token ObjNewClass      183 "_ObjNewClass"
%token ObjClassData     184 "_ObjClassData"
%token ObjClassMethod   185 "_ObjClassMethod"
%token ObjEndClass      186 "_ObjEndClass"
%token Memvar           187 "memvar"
%token Column           188 "COLUMN"
%token As               189 "AS"
%token Numeric          190 "NUMERIC"
%token Date             191 "DATE"
%token Logical          192 "LOGICAL"
%token FuncName         193 "funcName"
%token SqString         194 "SQSTRING"
%token EspCh            198 "ESPCH"
%token String           199 "STRING"

/* What the scanner drops. It never reaches the parser and has no spelling. */

%token DropReturn         51
%token DropCharacter      52
%token DropBlockOpen      53
%token DropBlockText      54
%token DropBlockClose     55
%token DropLineComment    56
%token DropStarComment    57
%token DropCommentText    58
%token DropQuote          60
%token DropStringCut      79
%token DropBackslash      96
%token DropBlank         108
%token DropContinuation  195
%token DropCommentEnd    196

%start lines

%%

lines:  /* 1 */
    lines line
  | line
  ;

line:  /* 3 */
    "\n"
  | directive "\n"
  | tokenList "\n"
  ;

directive:  /* 6 */
    "_include" includeName
  | "_command" matchPattern "=>" resultPattern
  | "_xcommand" matchPattern "=>" resultPattern
  | "_translate" matchPattern "=>" resultPattern
  | "_xtranslate" matchPattern "=>" resultPattern
  | "_define" name tokenList
  | "_define" name
  | "_define" "funcName" paramList ")" tokenList
  | "_define" "funcName" paramList ")"
  ;

paramList:  /* 15 */
    param
  | paramList "," param
  ;

param:  /* 17 */
    name
  | "IgnoreEol"
  ;

directive:  /* 19 */
    "_undef" tokenList
  | "_error" tokenList
  | "_error"
  | "_ifdef" name
  | "_ifndef" name
  | "_else"
  | "_endif"
  | "_stdout" tokenList
  | "_stdout"
  ;

matchPattern:  /* 28 */
    matchElement
  | matchPattern matchElement
  ;

matchElement:  /* 30 */
    matchMarker
  | token
  ;

resultPattern:  /* 32 */
    resultElements
  | resultElements directive
  | %empty
  ;

resultElements:  /* 35 */
    resultElement
  | resultElements resultElement
  ;

resultElement:  /* 37 */
    resultMarker
  | token
  ;

tokenList:  /* 39 */
    token
  | tokenList token
  ;

name:  /* 41 */
    "spc" "identName" "spc"
  | "identName" "spc"
  | "spc" "identName"
  | "identName"
  | "spc" keyword "spc"
  | keyword "spc"
  | "spc" keyword
  | keyword
  ;

includeName:  /* 49 */
    "spc" string "spc"
  | string "spc"
  | "spc" string
  | string
  ;

string:  /* 53 */
    "STRING"
  | "SQSTRING"
  ;

matchMarker:  /* 55 */
    "<" name "," "..." ">"
  | "<" name ":" wordList ">"
  | "<" name ":" wordList "spc" ">"
  | "<" "*" name "*" ">"
  | "<" name ">"
  | "<" "(" name ")" ">"
  ;

resultMarker:  /* 61 */
    "<" "{" name "}" ">"
  | "#" "<" name ">"
  | "<" includeName ">"
  | "<" "." name "." ">"
  | "<" name ">"
  | "<" "(" name ")" ">"
  ;

wordList:  /* 67 */
    word
  | wordList word
  | wordList "," word
  ;

word:  /* 70 */
    name
  | "&"
  | "IgnoreEol"
  ;

token:  /* 73 */
    "NullStr"
  | "->"
  | "$"
  | ">"
  | ">="
  | "<"
  | "<="
  | "."
  | "=="
  | "&"
  | ","
  | "#"
  | "+"
  | "ICR"
  | "DCR"
  | "-"
  | "/"
  | "*"
  | "%"
  | "^"
  | ".or."
  | ".and."
  | ".not."
  | ".t."
  | ".f."
  | "!"
  | "("
  | ")"
  | "["
  | "]"
  | "{"
  | "}"
  | "="
  | "+="
  | "-="
  | "*="
  | "/="
  | ":="
  | ":"
  | "|"
  | "@"
  | ";"
  | "number"
  | "identName"
  | "STRING"
  | "?"
  | "ESPCH"
  | "spc"
  | "IgnoreEol"
  | "IgnoreComment"
  | "SQSTRING"
  | "fileName"
  | keyword
  | "memvar"
  | "sqlexp"
  | "sqlxfilial"
  | "sqltable"
  | "sqlTempTable"
  | "sqlnotdel"
  | "sqlorder"
  | "sqlnoparser"
  | "beginsql" "spc" "alias" "spc" aliasName optSpc "\n" sqlLines optSpc "endsql" optSpc "\n"
  ;

aliasName:  /* 135 */
    "identName"
  | string
  ;

sqlLines:  /* 137 */
    sqlLines sqlLine
  | sqlLine
  ;

sqlLine:  /* 139 */
    line
  | "COLUMN" "spc" columnList optSpc "\n"
  | "spc" "COLUMN" "spc" columnList optSpc "\n"
  ;

columnList:  /* 142 */
    columnDecl
  | columnList optSpc "," optSpc columnDecl
  ;

columnDecl:  /* 144 */
    "identName" "spc" "AS" "spc" "NUMERIC" optSpc
      "(" optSpc sizeValue optSpc "," optSpc sizeValue optSpc ")" optSpc
  | "identName" "spc" "AS" "spc" "DATE" optSpc
  | "identName" "spc" "AS" "spc" "LOGICAL" optSpc
  ;

sizeValue:  /* 147 */
    "number"
  | "identName"
  ;

optSpc:  /* 149 */
    "spc"
  | %empty
  ;

keyword:  /* 151 */
    "announce"
  | "try"
  | "endtry"
  | "catch"
  | "throw"
  | "begin"
  | "sequence"
  | "break"
  | "recover"
  | "using"
  | "declare"
  | "do"
  | "with"
  | "case"
  | "endcase"
  | "otherwise"
  | "while"
  | "exit"
  | "loop"
  | "end"
  | "enddo"
  | "procedure"
  | "fieldAliasOp"
  | "field"
  | "aliasend"
  | "local"
  | "private"
  | "public"
  | "return"
  | "extern"
  | "in"
  | "for"
  | "to"
  | "next"
  | "step"
  | "function"
  | "if"
  | "iif"
  | "else"
  | "elseif"
  | "endif"
  | "nil"
  | "static"
  | "main_func"
  | "_ObjNewClass"
  | "_ObjClassData"
  | "_ObjClassMethod"
  | "_ObjEndClass"
  | "alias"
  | "COLUMN"
  | "DATE"
  | "NUMERIC"
  | "LOGICAL"
  | "AS"
  ;
