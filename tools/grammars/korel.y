/* The grammar of the language's expressions: it tells where an expression ends, nothing more.

   A text is a line with a list of expressions. The caller puts the list in parentheses, in which
   elements may be omitted.

   Because it only recognises, the grammar knows no precedence: a run of terms with operators
   between them is an expression whatever binds closer, and an assignment is a term. It is
   unambiguous, so there is no conflict to resolve. Every keyword is also a name, because no
   statement is ever read here. A token that stands in no rule, such as ".", ends every expression.

   It must fail at the first token that cannot continue the text, so reductions never go without
   their lookaheads. */

%define lr.type lalr
%define lr.default-reduction accepting

/* Each token stands on a line of its own: its name, its number and its spelling. */

%token NullStr              56 "NullStr"
%token Eol                  57 "Eol"
%token AliasOp              58 "AliasOp"
%token InStr                59 "InStr"
%token Greater              60 ">"
%token GreaterEqual         61 ">="
%token Less                 62 "<"
%token LessEqual            63 "<="
%token Equal                64 "="
%token ExactEqual           65 "=="
%token Comma                66 ","
%token NotEqual             67 "#"
%token Plus                 68 "+"
%token Increment            69 "ICR"
%token Decrement            70 "DCR"
%token Minus                71 "-"
%token Slash                72 "/"
%token Star                 73 "*"
%token Percent              74 "%"
%token Power                75 "**"
%token Or                   76 ".or."
%token And                  77 ".and."
%token Not                  78 ".not."
%token True                 79 ".t."
%token False                80 ".f."
%token Bang                 81 "!"
%token LeftParen            82 "("
%token RightParen           83 ")"
%token LeftBracket          84 "["
%token RightBracket         85 "]"
%token LeftBrace            86 "{"
%token RightBrace           87 "}"
%token Assign               88 ":="
%token PlusAssign           89 "+="
%token MinusAssign          90 "-="
%token StarAssign           91 "*="
%token SlashAssign          92 "/="
%token Dot                  93 "."
%token Bar                  94 "|"
%token At                   95 "@"
%token ObjPart              96 "objPart"
%token Number               97 "number"
%token Fract                98 "fract"
%token IdentName            99 "identName"
%token MacroName           100 "macroName"
%token MacroNamePoint      101 "macroNamePoint"
%token MacroNamePointIdent 102 "macroNamePointIdent"
%token MacroFunct          103 "macroFunct"
%token Memvar              104 "memvar"
%token Announce            105 "announce"
%token Begin               106 "begin"
%token Sequence            107 "sequence"
%token Break               108 "break"
%token Recover             109 "recover"
%token Using               110 "using"
%token Declare             111 "declare"
%token Do                  112 "do"
%token With                113 "with"
%token Case                114 "case"
%token EndCase             115 "endcase"
%token Otherwise           116 "otherwise"
%token While               117 "while"
%token Exit                118 "exit"
%token Loop                119 "loop"
%token End                 120 "end"
%token EndDo               121 "enddo"
%token Procedure           122 "procedure"
%token FieldAliasOp        123 "fieldAliasOp"
%token Field               124 "field"
%token AliasEnd            125 "aliasend"
%token Local               126 "local"
%token Private             127 "private"
%token Public              128 "public"
%token Return              129 "return"
%token Extern              130 "extern"
%token In                  131 "in"
%token For                 132 "for"
%token To                  133 "to"
%token Next                134 "next"
%token Step                135 "step"
%token Main                136 "__main"
%token Function            137 "function"
%token Parameters          138 "parameters"
%token Static              139 "static"
%token If                  140 "if"
%token Iif                 141 "iif"
%token Else                142 "else"
%token ElseIf              143 "elseif"
%token EndIf               144 "endif"
%token Val                 145 "val"
%token Nil                 146 "nil"
%token Month               147 "month"
%token CMonth              148 "cmonth"
%token FCount              149 "fcount"
%token LastRec             150 "lastrec"
%token Trim                151 "trim"
%token RTrim               152 "rtrim"
%token LTrim               153 "ltrim"
%token Transform           154 "transform"
%token FieldName           155 "fieldname"
%token PCount              156 "pcount"
%token Seconds             157 "seconds"
%token Deleted             158 "deleted"
%token Select              159 "select"
%token FLock               160 "flock"
%token RLock               161 "rlock"
%token RecCount            162 "reccount"
%token RecNo               163 "recno"
%token DevPos              164 "devpos"
%token SetPos              165 "setpos"
%token Upper               166 "upper"
%token Lower               167 "lower"
%token Len                 168 "len"
%token Found               169 "found"
%token Space               170 "space"
%token Replicate           171 "replicate"
%token ValType             172 "valtype"
%token Empty               173 "empty"
%token InKey               174 "inkey"
%token Round               175 "round"
%token SubStr              176 "substr"
%token StrZero             177 "strzero"
%token DbSelectArea        178 "dbselectarea"
%token Try                 179 "try"
%token Throw               180 "throw"
%token Catch               181 "catch"
%token As                  182 "as"
%token Line                197 "line"
%token ObjNewClass         198 "_ObjNewClass"
%token ObjClassData        199 "_ObjClassData"
%token ObjClassMethod      200 "_ObjClassMethod"
%token ObjEndClass         201 "_ObjEndClass"
%token Super               202 "_Super"
%token StkVarDef           203 "_StkVarDef"
%token Hidden              204 "HIDDEN"
%token ReadOnly            205 "READONLY"
%token String              206 "STRING"

/* Parts of an object access in which no name is spelled out: ":" in front of a macro, and what
   follows "::", the object that the method belongs to. */

%token ObjColon            207
%token SelfPart            208
%token SelfColon           209

/* What the scanner drops. It never reaches the parser and has no spelling. */

%token DropBlank           183
%token DropQuote           184
%token DropStringCut       185
%token DropBlockOpen       186
%token DropBlockText       187
%token DropBlockClose      188
%token DropLineComment     189
%token DropCommentText     190

%start text

%%

text:
    list "Eol"
  | "(" gappedList ")" "Eol"
  ;

list:
    item
  | list "," item
  ;

/* A list in which an element is omitted; it is at least the only one. */
gappedList:
    %empty
  | list ","
  | gappedList ","
  | gappedList "," item
  ;

item:
    expression
  | "@" operand
  ;

expression:
    term
  | expression binaryOperator term
  ;

term:
    constant
  | operand
  | assignable "ICR"
  | assignable "DCR"
  | assignable assignment term
  | prefix term
  ;

constant:
    "number" | "fract" | "NullStr" | "STRING" | ".t." | ".f."
  ;

operand:
    assignable
  | call
  | "(" list ")"
  | "{" list "}"
  | "{" gappedList "}"
  | "{" "|" parameters "|" "}"
  | "{" "|" parameters "|" list "}"
  ;

assignable:
    name
  | macro
  | self
  | field
  | operand member
  | operand "[" list "]"
  ;

call:
    name arguments
  | macro arguments
  | self arguments
  | field arguments
  | operand member arguments
  ;

arguments:
    "(" list ")"
  | "(" gappedList ")"
  ;

field:
    qualifier name
  | qualifier macro
  | qualifier "(" list ")"
  | operand "aliasend"
  ;

qualifier:
    operand "AliasOp"
  | "memvar"
  | "fieldAliasOp"
  | qualifier "memvar"
  | qualifier "fieldAliasOp"
  ;

member:
    "objPart"
  | ObjColon macro
  ;

self:
    SelfPart
  | SelfColon macro
  ;

macro:
    "macroName"
  | "macroNamePoint"
  | "macroNamePointIdent"
  | "macroFunct" "(" list ")"
  ;

parameters:
    %empty
  | parameterNames
  ;

parameterNames:
    name
  | parameterNames "," name
  ;

prefix:
    "+" | "-" | ".not." | "!" | "ICR" | "DCR"
  ;

assignment:
    ":=" | "+=" | "-=" | "*=" | "/="
  ;

binaryOperator:
    "+" | "-" | "*" | "/" | "%" | "**"
  | "=" | "==" | "#" | "<" | "<=" | ">" | ">=" | "InStr"
  | ".and." | ".or."
  ;

name:
    "identName" | "announce" | "begin" | "sequence" | "break" | "recover" | "using" | "declare"
  | "do" | "with" | "case" | "endcase" | "otherwise" | "while" | "exit" | "loop" | "end"
  | "enddo" | "procedure" | "field" | "local" | "private" | "public" | "return" | "extern"
  | "in" | "for" | "to" | "next" | "step" | "__main" | "function" | "parameters" | "static"
  | "if" | "iif" | "else" | "elseif" | "endif" | "val" | "nil" | "month" | "cmonth" | "fcount"
  | "lastrec" | "trim" | "rtrim" | "ltrim" | "transform" | "fieldname" | "pcount" | "seconds"
  | "deleted" | "select" | "flock" | "rlock" | "reccount" | "recno" | "devpos" | "setpos"
  | "upper" | "lower" | "len" | "found" | "space" | "replicate" | "valtype" | "empty" | "inkey"
  | "round" | "substr" | "strzero" | "dbselectarea" | "try" | "throw" | "catch" | "as" | "line"
  | "_ObjNewClass" | "_ObjClassData" | "_ObjClassMethod" | "_ObjEndClass" | "_Super"
  | "_StkVarDef" | "HIDDEN" | "READONLY"
  ;
