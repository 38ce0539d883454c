#include "fuzz/grammar.h"

tGrammar::tGrammar(std::string_view text) {
  constexpr std::string_view kBetween = " | ";
  while (!text.empty()) {
    std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(line.size() + 1);
    std::vector<std::string_view>& productions = productions_[static_cast<unsigned char>(line[0])];
    line.remove_prefix(2);
    for (std::size_t end = 0; end != std::string_view::npos; line.remove_prefix(end + 3)) {
      end = line.find(kBetween);
      productions.push_back(line.substr(0, end));
      if (end == std::string_view::npos) break;
    }
  }
}

void tGrammar::expand(char symbol, tByteReader& input, int depth, int& steps,
                      std::string& made) const {
  const auto& productions = productions_[static_cast<unsigned char>(symbol)];
  const bool ends = depth == 0 || --steps <= 0 || productions.size() == 1;
  const std::string_view chosen = productions[ends ? 0 : input.byte() % productions.size()];
  for (std::size_t i = 0; i < chosen.size(); ++i) {
    if (chosen[i] != '$') {
      made += chosen[i];
    } else if (const char next = chosen[++i]; next == '/' || next == '$') {
      made += next == '/' ? '\n' : '$';
    } else if (next == '=') {
      made += std::to_string(made.size());
    } else {
      expand(next, input, depth - (depth > 0 ? 1 : 0), steps, made);
    }
  }
}

// P source, L line, H header, D directive that makes a rule, C conditional, N name, V value, E
// expression, O operator, K what begins a rule's pattern, M pattern, W literal of a pattern, R
// result, I statement, A arguments of a rule, S part of a structure, Q embedded SQL, X pieces that
// meet in every order, Y a piece of text, Z a piece of a directive, U a piece that rules look for,
// F many rules, G some and odd ones, T one of each kind, J what joins with a name beside it.
const tGrammar kProgramGrammar(
    R"(P= | $L$/$P | $L$/$L$/$L$/$P | #include "a.ch"$/$P | #include "a.ch"$/#include "b.ch"$/$P | Function f($N, b)$/$P
H= | $D$/$H | $F$H | $F$F$F$F$F$F$H | $G$H | $D$/$D$/$D$/$H | $C$/$H | #include "b.ch"$/$H | #include "a.ch", 'b.ch'$/$H | #zip$/$H | $I$/$H | // $Y$/$H | #ifndef GUARD$/#define GUARD$/$H#endif$/
F=$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T$T
G=$T$T$T$T$T$T$T$T$T | #command DISP$=[ <x> => a<x>$/$G
T=#define n$= $=$/#xcommand DISPLAY LONG$= <x> => a<x>$/#command DISPLAY W$= <x> [TO <y>] => b(<x>)$/#xtranslate tran$= ( <x> ) => t<x>$/#command DISPLAYING$= <x> => c$/
L=$I | $D | $C | $S | $X | $Q | // $I | * $Y |   $I && c | $I ;$/  $I | /* $Y$/ c */ $I | #include "$N.ch" | #include 'b.ch' | #include <a.ch> | #include $N | #error $Y | #stdout $Y
D=#define $N $V | #define $N $J $J$/$N $J$N$J | #define $N(x, One) $J$/$N $J $J | #define $N | #define $N($N) $V | #define $N($N, b) $N($V, b) $N | #undef $N | #command $K $M=> $R | #xcommand $K $M=> $R | #translate $K $M=> $R | #xtranslate $K $M=> $R | #xtranslate $K $M=> | #command $K $M=> ;$/ $R ;$/ ; $R | #translate $N( $M ) => $R | #xcommand $K $M | #COMMAND $M => #$N $R | $Z
C=#ifdef $N | #ifndef $N | #else | #endif | #elseif | #ifdef $N$/$L$/#else$/$L$/#endif | #ifndef $N$/$L$/#endif | #ifdef One$/#ifdef Two$/$L$/#endif$/#endif | #if $V
N=One | Two | F | x | y | K | a | b | Three | Nothing | DISPLAY | tran | END | M | If | _z9
V=1 | $E | $N | $N + $V | ($V) | "$Y" | $N($V) | $N | $V, $V | .T. | [x] | {|$N| $V} | {$V, $V} | &$N. | &($V) | $N[$V] | $N->$N | $N:$N($V) | @$N | -$V | !$V | $N++ | If($V, $V, $V) | 12.5 | nil | ::$N | $N := $V | "$N
J=( | ) | (1,2) | [1] | ] | , | 1. | . | .T | T. | -> | - | > | ++ | : | := | & | @ | (@x) | '"' | \" | \' | \; | \/* | If | else( | Function | using | x := | ; | ;$/ | $/;$/ | $/* 's$/ | C:\$/ | d\;$/ | /**/ | next | $N
E=$N | $N $O $E | ($E) | $V | $N($E) | $E, $E | "$Y" | '$N' | $Y
O=+ | := | - | * | / | = | == | $$ | <> | != | .and. | .or. | % | ** | ^ | -> | : | . | += | => | < | >
K=K | DISPLAY | SAY | STORE | $N | ? | @ | a | -> | TRANSLATED | 1 | .5 | [
M=$W | <x> | $W $M | <x> $M | <x,...> $M | <*x*> | <(x)> $M | <x:ONE, TWO> $M | <x: ON, OFF, A B> | <.x.> | <y> $M | [$W <y>] $M | [$M] $M | [$W $M] [<z:A>] | [<x>] $M | [, <y,...>] $M | \[ $M | <$N> | ( <x> ) $M | <x>, <y> $M
W=TO | AT | BY | WITH | ON | , | ( | ) | = | $N | . | FROM | \< | + | :
R=<x> | f(<x>) $R | $N $R | <x> + <y> | #<x> $R | <"x"> $R | <(x)> $R | <{x}> $R | <.x.> $R | <y> $R | [<x>] $R | [, <y>] $R | [$R] $R | [, $N := <"x">] $R | {<{x}>} | \<x> \[ $R | $K $R | ; $R | "$Y" <x> | #define $N <x> | <-x-> | <z> [<y> [<x>]] | $E
I=$N := $E | $K $A | $K $A $A | x := $N($A) | $N($E) | $K | ? $E | $E | tran($A) $A | disp $A | say $A $W $A | Local $N := $E, $N | Return $E | @ 1, 2 say $E | $N->$N := $E | $I ; $I | __IgnoreDebugLine__() [$Y | $A
A=$E | $W $E | $E $W $E | $E, $E $A | $W $A | ON | ONE | A B | (x) | $A $A | [$E] | {$E} | &x. | "a" | to f.x | 
S=If $E$/$L$/EndIf | If $E | Else | ElseIf $E | EndIf | Do While $E | While $E$/$L$/EndDo | For i := 1 To $E$/$L$/Next | Do Case$/Case $E$/$L$/Otherwise$/$L$/EndCase | Begin Sequence$/$L$/Recover$/$L$/End Sequence | Try$/$L$/Catch$/End | Exit | Loop | Function $N($N) | Static Function $N() | Procedure $N | End | Next | Break | Return | method $N() class x | namespace $N | using $N | Static $N | Private $N | If($E, x)
Q=BeginSql alias $N$/ select %EXP:$E%, $Y from %TABLE:$N% where %NOTDEL% $Y$/EndSql | BeginSql alias "$N"$/column A as $U(8,2), B as Date$/ %XFILIAL:$N% %ORDER:$N,1% %NOPARSER% %TEMP-TABLE:x%$/EndSql | BeginSql alias | EndSql | %ORDER:$N,$N% | %notdel% | BeginSql alias x$/column $N as $N$/$Y$Y$/endsql
X= | $Y$X | $Y$Y$X | $Z$X | $U$X | $I$X | $Y$Y$Y$Y$X
Y=a | One | Two | Ring | x1 | 1 | 12.5 | 1a | 1.5One | .5 | a~b |   | $/ | $/ | + | - | -> | ->END | M-> | FIELD-> | .T. | .One. | . | ... | ( | ) | [ | ] | { | } | , | := | == | >= | != | # | < | > | & | && | // | /* | */ | /**/ | /* c$/ c */ | * | ** | ; | ;$/ | ;// c$/ | " | ' | "" | 'it One' | "a'b" | \ | \x | \" | ` | ~ |  | é | q | begin | beginsql | % | %a | %EXP:One% | @ | ? | $$ | ^ | ! | | | iif( | e | n | (a) | [1] | (@a, @ b) | :: | ++ | -- | end | do  | while  | case  | sequence | return | exit | .or. | xFilial
Z=$/#define One 1 + Two$/ | $/#define Nothing$/ | $/#define Ring Ring$/ | $/#ifdef One Two$/ | $/ #else$/ | $/#endif x$/ | $/#include "a.ch"$/ | $/#define One (1$/ | $/#define Two If x$/ | $/#define Two :$/ | $/#define Nothing @$/ | $/#define One "1$/ | $/#define One a; b$/ | $/#define F( | $/#define F( b ) | $/#define F(a ,;$/ If)  | $/#define ;$/Two  | #line 7 "a.ch"$/ | $/#define F(p) (p+One)$/ | $/#define Three display$/ | $/#define Four .5$/ | $/#xtranslate b->a => ba$/ | $/#xtranslate -> z => .z$/ | $/#translate M->a => ma$/ | $/#translate .5 => half$/ | $/#translate 1 => one$/ | $/#translate "One" => 'quoted'$/ | $/#command ? <*x*> => print(<x>)$/ | $/#command /* c */ STORE <x> => One := <x>$/ | $/#command => x$/ | $/#command DISPLAY <x,...> [TO <f>] => d( #<f>, <x> )$/ | $/#xcommand display => dd$/ | $/#endif$/ | $/#define One$/ | $/#undef One$/ | $/#translate $K <x> => <x> <x>$/
U=disp | displ | DISPLAY  | Three a | stor  | tran( | TRAN | transl  | transx |  by |  to  | b->a | M->a | F( | F ( | F/**/( | F;$/( | Four | .5 | 1  | N | C | L | ) | Numeric | Logical
)");

// C command line, B argument of the program, G one for the library, F file, W word, J number.
const tGrammar kCommandGrammar(
    R"(C=$F | $B$/$C | $F$/$C | $F$/$F$/$C | explain$/$Q$/$F:$J | rules$/$Q$/$F | pack$/$Q$/$F | unpack$/$Q$/$F | --classic$/$G | -q$/$C | explain$/--json$/a.prw:$J | rules$/--json$/a.prw | $Q$/$B | $W$/$C
Q=--json | --json$/$Q | --color=$W | --key=$W | --key$/$N | -I$/. | -DOne=$W | -o$/$F | --help | $B | 
B=-o$/out | -o$/$F | -oout | --output=$F | -I. | -Iout | -I$/$W | --include=$F | -DOne | -DOne=1 + Two | -D$/$N=$W | --define=$W | -T | -q | -j2 | -j$/$J | --jobs=$J | -MD | -MF$/$F | -MFx.d | -MT$/$W | -MP | -M$W | --diagnostics=$V | --diagnostics=json | --diagnostics=gcc | --diagnostics=sarif | --diagnostics=long | --diagnostics$/$V | --always-write | --precompiled | --stdin-name=$F | --stdin-name$/b.prw | --files-from=$F | -0 | -fsyntax-only | -ffile-prefix-map=$W=$W | -f$W | - | -- | --help | --version | -h | -V | --completions=$V | --quiet | --trace | --color=$V | --json | --key=$W | --$W | -$W | -qT | --dia=json | 
G=@Fa.prw | $G$/$G | @F$F | @Fa.prw$/@Oout | @O$W | @Llist | @I$W | -T | -v | /DOne=$W | -D$N | /KRH_DEBUGINFO | /DHTTPSEND | @@DEBUG | @@PRECOMPILED | @@NOCAPTFATAL | -Iout;. | /I $W | -F$F | -U$W | /N$W | "@F$F" | @F"$F" | -DA /DB=2 @F$W | 
F=a.prw | b.prw | c.zorb | page.krh | h.ch | std.ch | packed.prw | none.prw | dir | link.prw | out | loop | - | a.ppo | $W | a.ppx | a.apl | x.4gl | ./a.prw | out/../a.prw | a.prw  | "a.prw"
N=One | Two | F | DISPLAY | disp | tran | x
J=0 | 1 | 2 | 3 | 4 | 5 | 7 | 9 | 12 | -1 | 4096 | 99999999999 | x | 
V=json | gcc | msvc | sarif | long | classic | auto | always | never | bash | zsh | fish | man | $W
W= | x | One | a.prw | help | rule | explian | packs | 1 | $W$W | é |  | , | = |   | : | ; | " | ' | \ | $$x | # | % | .
)");
