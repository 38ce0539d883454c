/* The grammar of the directive processor: it reads a whole source text, directives and statements,
   line by line.

   The parser table is made from bison's LALR(1) automaton of this file. What the program wants to
   know of a production stands in a comment at its end:

     kInclude   its label, the name of its number; a nonterminal labels all of its productions or
                none
     @padded    a set of productions that the program asks for, `isPaddedProduction`
     yields     it may give way to a shift, see below
     = 205      its number

   The number is what `reduce` receives, and the kind of a token is the number of the production of
   `token` that made it. Productions are numbered in their order here, from 1, and keep their
   numbers: a new one stands where it belongs and states the next free number. The comment behind a
   nonterminal's colon is the number of the production that follows. Nonterminals are numbered in
   the order of their first appearance.

   The grammar is ambiguous on purpose. Every conflict is resolved by shifting; nearly all are the
   "<" that opens a marker (a bare less-than in a rule is written with a backslash). The build fails
   when a production without "yields" is in conflict, and on any conflict between two reductions. */

%define lr.type lalr
%define lr.default-reduction accepting

/* Each token stands on a line of its own: its name, its number, its spelling and the sets of tokens
   that it belongs to (@directive: `isDirectiveToken`). */

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
%token DirCommand       116 "_command"  /* @directive */
%token DirXCommand      117 "_xcommand" /* @directive */
%token DirTranslate     118 "_translate" /* @directive */
%token DirXTranslate    119 "_xtranslate" /* @directive */
%token DirInclude       120 "_include"  /* @directive */
%token DirDefine        121 "_define"   /* @directive */
%token DirError         122 "_error"    /* @directive */
%token DirIfDef         123 "_ifdef"    /* @directive */
%token DirIfNDef        124 "_ifndef"   /* @directive */
%token DirElse          125 "_else"     /* @directive */
%token DirEndIf         126 "_endif"    /* @directive */
%token DirStdOut        127 "_stdout"   /* @directive */
%token DirUndef         128 "_undef"    /* @directive */
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
    lines line  /* kLinesMore */
  | line        /* kLinesStart */
  ;

line:  /* 3 */
    "\n"            /* kEmptyLine */
  | directive "\n"  /* kDirectiveLine */
  | tokenList "\n"  /* kStatementLine */
  ;

directive:  /* 6 */
    "_include" includeName                         /* kInclude */
  | "_command" matchPattern "=>" resultPattern     /* kCommand */
  | "_xcommand" matchPattern "=>" resultPattern    /* kXCommand */
  | "_translate" matchPattern "=>" resultPattern   /* kTranslate */
  | "_xtranslate" matchPattern "=>" resultPattern  /* kXTranslate */
  | "_define" name tokenList                       /* kDefineValue */
  | "_define" name                                 /* kDefine */
  | "_define" "funcName" paramList ")" tokenList   /* kDefineParamsValue */
  | "_define" "funcName" paramList ")"             /* kDefineParams */
  ;

paramList:  /* 15 */
    param                /* kParamListStart */
  | paramList "," param  /* kParamListMore */
  ;

param:  /* 17 */
    name         /* kParamName */
  | "IgnoreEol"  /* kParamIgnoreEol */
  ;

directive:  /* 19 */
    "_undef" tokenList   /* kUndef */
  | "_error" tokenList   /* kError */
  | "_error"             /* kErrorAlone */
  | "_ifdef" name        /* kIfdef */
  | "_ifndef" name       /* kIfndef */
  | "_else"              /* kElse */
  | "_endif"             /* kEndif */
  | "_stdout" tokenList  /* kStdout */
  | "_stdout"            /* kStdoutAlone */
  ;

matchPattern:  /* 28 */
    matchElement               /* kMatchPatternStart */
  | matchPattern matchElement  /* kMatchPatternMore */
  ;

matchElement:  /* 30 */
    matchMarker  /* kMatchElementMarker */
  | token        /* kMatchElementToken */
  ;

resultPattern:  /* 32 */
    resultElements            /* kResultPattern */
  | resultElements directive  /* kResultWithDirective */
  | %empty                    /* kResultNone */
  ;

resultElements:  /* 35 */
    resultElement                 /* kResultElementsStart */
  | resultElements resultElement  /* kResultElementsMore */
  ;

resultElement:  /* 37 */
    resultMarker  /* kResultElementMarker */
  | token         /* kResultElementToken */
  ;

tokenList:  /* 39 */
    token            /* kTokenListStart */
  | tokenList token  /* kTokenListMore */
  ;

name:  /* 41 */
    "spc" "identName" "spc"  /* @padded */
  | "identName" "spc"
  | "spc" "identName"        /* @padded yields */
  | "identName"              /* yields */
  | "spc" keyword "spc"      /* @padded */
  | keyword "spc"
  | "spc" keyword            /* @padded yields */
  | keyword                  /* yields */
  ;

includeName:  /* 49 */
    "spc" string "spc"  /* @padded */
  | string "spc"
  | "spc" string        /* @padded */
  | string
  ;

string:  /* 53 */
    "STRING"    /* kDoubleQuoted */
  | "SQSTRING"  /* kSingleQuoted */
  ;

matchMarker:  /* 55 */
    "<" name "," "..." ">"           /* kListMarker */
  | "<" name ":" wordList ">"        /* kRestrictMarker */
  | "<" name ":" wordList "spc" ">"  /* kRestrictMarkerSpc */
  | "<" "*" name "*" ">"             /* kWildMarker */
  | "<" name ">"                     /* kRegularMarker */
  | "<" "(" name ")" ">"             /* kExtendedMarker */
  ;

resultMarker:  /* 61 */
    "<" "{" name "}" ">"  /* kBlockResult */
  | "#" "<" name ">"      /* kDumbResult */
  | "<" includeName ">"   /* kStringResult */
  | "<" "." name "." ">"  /* kLogicalResult */
  | "<" name ">"          /* kRegularResult */
  | "<" "(" name ")" ">"  /* kSmartResult */
  ;

wordList:  /* 67 */
    word               /* kWordListStart */
  | wordList word      /* kWordListMore */
  | wordList "," word  /* kWordListAlternative */
  ;

word:  /* 70 */
    name         /* kWordName */
  | "&"          /* kWordAmpersand */
  | "IgnoreEol"  /* kWordIgnoreEol */
  ;

token:  /* 73 */
    "NullStr"        /* kKindNullString @ruleToken */
  | "->"             /* kKindArrow @ruleToken */
  | "$"              /* kKindDollar @ruleToken */
  | ">"              /* kKindGreater @ruleToken */
  | ">="             /* kKindGreaterEqual @ruleToken */
  | "<"              /* kKindLess @ruleToken yields */
  | "<="             /* kKindLessEqual @ruleToken */
  | "."              /* kKindDot @ruleToken */
  | "=="             /* kKindExactEqual @ruleToken */
  | "&"              /* kKindAmpersand @ruleToken */
  | ","              /* kKindComma @ruleToken */
  | "#"              /* kKindHash @ruleToken yields */
  | "+"              /* kKindPlus @ruleToken */
  | "ICR"            /* kKindIncrement @ruleToken */
  | "DCR"            /* kKindDecrement @ruleToken */
  | "-"              /* kKindMinus @ruleToken */
  | "/"              /* kKindSlash @ruleToken */
  | "*"              /* kKindStar @ruleToken */
  | "%"              /* kKindPercent @ruleToken */
  | "^"              /* kKindCaret @ruleToken */
  | ".or."           /* kKindOr @ruleToken */
  | ".and."          /* kKindAnd @ruleToken */
  | ".not."          /* kKindNot @ruleToken */
  | ".t."            /* kKindTrue @ruleToken */
  | ".f."            /* kKindFalse @ruleToken */
  | "!"              /* kKindBang @ruleToken */
  | "("              /* kKindParenOpen @ruleToken */
  | ")"              /* kKindParenClose @ruleToken */
  | "["              /* kKindBracketOpen @ruleToken */
  | "]"              /* kKindBracketClose @ruleToken */
  | "{"              /* kKindBraceOpen @ruleToken */
  | "}"              /* kKindBraceClose @ruleToken */
  | "="              /* kKindEqual @ruleToken */
  | "+="             /* kKindPlusAssign @ruleToken */
  | "-="             /* kKindMinusAssign @ruleToken */
  | "*="             /* kKindStarAssign @ruleToken */
  | "/="             /* kKindSlashAssign @ruleToken */
  | ":="             /* kKindAssign @ruleToken */
  | ":"              /* kKindColon @ruleToken */
  | "|"              /* kKindBar @ruleToken */
  | "@"              /* kKindAt @ruleToken */
  | ";"              /* kKindSemicolon @ruleToken */
  | "number"         /* kKindNumber @ruleToken */
  | "identName"      /* kKindIdentifier @ruleToken */
  | "STRING"         /* kKindString @ruleToken */
  | "?"              /* kKindQuestion @ruleToken */
  | "ESPCH"          /* kKindEscaped */
  | "spc"            /* kKindSpace yields */
  | "IgnoreEol"      /* kKindIgnoreEol */
  | "IgnoreComment"  /* kKindIgnoreComment */
  | "SQSTRING"       /* kKindSingleQuoted @ruleToken */
  | "fileName"       /* kKindFileName */
  | keyword          /* kKindKeyword @ruleToken */
  | "memvar"         /* kKindMemvar */
  | "sqlexp"         /* kKindSqlExp */
  | "sqlxfilial"     /* kKindSqlXFilial */
  | "sqltable"       /* kKindSqlTable */
  | "sqlTempTable"   /* kKindSqlTempTable */
  | "sqlnotdel"      /* kKindSqlNotDel */
  | "sqlorder"       /* kKindSqlOrder */
  | "sqlnoparser"    /* kKindSqlNoParser */
  | "beginsql" "spc" "alias" "spc" aliasName optSpc "\n" sqlLines optSpc "endsql" optSpc "\n"
      /* kKindSql */
  ;

aliasName:  /* 135 */
    "identName"  /* kAliasName */
  | string       /* kAliasString */
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
      "(" optSpc sizeValue optSpc "," optSpc sizeValue optSpc ")" optSpc  /* kNumericColumn */
  | "identName" "spc" "AS" "spc" "DATE" optSpc     /* kDateColumn */
  | "identName" "spc" "AS" "spc" "LOGICAL" optSpc  /* kLogicalColumn */
  ;

sizeValue:  /* 147 */
    "number"     /* kSizeNumber */
  | "identName"  /* kSizeName */
  ;

optSpc:  /* 149 */
    "spc"
  | %empty  /* yields */
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
  | "COLUMN"  /* yields */
  | "DATE"
  | "NUMERIC"
  | "LOGICAL"
  | "AS"
  ;
