// The standard header of Korel: read before the first line of every program, so what it defines
// holds everywhere. It is the place for the commands and translations that the language itself
// offers; a program's own constants belong into headers of its own.
//
// No command of this header takes a statement of a program for itself, neither a call nor an
// assignment, whatever names the program uses: a command here has a second fixed word, or is a word
// that stands alone, or begins with "?" or "@". Commands that need less than that wait in
// database.ch, screen.ch, report.ch and values.ch for a program to include them.
//
// The names that begin with two underscores are functions of the runtime.

// Guarded, so that a program or the command line may set another value first.
#ifndef __KOREL__
  #define __KOREL__ 9
#endif

// ---- values ------------------------------------------------------------------------------------

#command STORE <value> TO <var1> [, <varN>] => <var1> := [<varN> :=] <value>

// A value for what the caller left out. It is computed only where it is needed.
#command DEFAULT <var1> TO <value1> [, <varN> TO <valueN>] => ;
   __Default(@<var1>,<{value1}>) [; __Default(@<varN>,<{valueN}>)]

#xtranslate .Y.    => .T.
#xtranslate .N.    => .F.
#xtranslate .NULL. => NIL

#command SAVE TO <(file)> [ALL LIKE <(mask)>] => __SaveMemory(<(file)>,<(mask)>)
#command RESTORE FROM <(file)> [<add: ADDITIVE>] => __RestoreMemory(<(file)>,<.add.>)
#command RELEASE ALL [LIKE <(mask)>] => __ReleaseMemory(<(mask)>)

// ---- output and input, line by line ------------------------------------------------------------

#command ?             => __PrintLine()
#command ? <items,...> => __PrintLine(<items>)
#command ??             => __Print()  // krpre: no-rules-tie
#command ?? <items,...> => __Print(<items>)

#command ACCEPT TO <var>          => <var> := __Accept()
#command ACCEPT <prompt> TO <var> => <var> := __Accept(<prompt>)
#command INPUT TO <var>           => <var> := __Input()
#command INPUT <prompt> TO <var>  => <var> := __Input(<prompt>)
#command WAIT                     => __Wait()
#command WAIT TO <var>            => <var> := __Wait()
#command WAIT <prompt> TO <var>   => <var> := __Wait(<prompt>)

// ---- the screen and input forms ----------------------------------------------------------------

#command CLS   => __ClearScreen()
#command CLEAR => __ClearScreen()
#command CLEAR <what: ALL, GETS, MEMORY, SCREEN, TYPEAHEAD> => __Clear(<"what">)

#command @ <row>, <col> SAY <text> [PICTURE <picture>] [COLOR <color>] => ;
   __Say(<row>, <col>, <text>, <picture>, <color>)

// Reads a variable, or writes it when a value is given.
#xtranslate __Access(<var>) => {|_new| If(_new == NIL, <var>, <var> := _new)}

#command @ <row>, <col> GET <var> [PICTURE <picture>] [COLOR <color>] ;
      [VALID <valid>] [WHEN <when>] [RANGE <low>, <high>] => ;
   __Get(<row>, <col>, __Access(<var>), ;
      <"var">, <picture>, <color>,<{valid}>,<{when}>, <low>, <high>)

// The field of the form stands one column behind its label.
#command @ <row>, <col> SAY <text> [PICTURE <format>] GET <var> [PICTURE <picture>] ;
      [COLOR <color>] [VALID <valid>] [WHEN <when>] [RANGE <low>, <high>] => ;
   __Say(<row>, <col>, <text>, <format>, <color>) ; __GetBehind(__Access(<var>), ;
      <"var">, <picture>, <color>,<{valid}>,<{when}>, <low>, <high>)

#command @ <top>, <left> TO <bottom>, <right> [<double: DOUBLE>] [COLOR <color>] => ;
   __Frame(<top>, <left>, <bottom>, <right>,<.double.>, <color>)

#command @ <top>, <left> CLEAR [TO <bottom>, <right>] => ;
   __ClearBox(<top>, <left>, <bottom>, <right>)

#command READ [<save: SAVE>] => __Read(<.save.>)

// ---- settings ----------------------------------------------------------------------------------

// A switch is set by a word, or by a condition in parentheses.
#command SET <switch: BELL, CENTURY, CONFIRM, CONSOLE, CURSOR, DELETED, ESCAPE, EXACT, EXCLUSIVE, ;
      FIXED, INTENSITY, PRINTER, SCOREBOARD, SOFTSEEK, UNIQUE, WRAP> <mode: ON, OFF> => ;
   __Set(<"switch">,<"mode">)

#command SET <switch: BELL, CENTURY, CONFIRM, CONSOLE, CURSOR, DELETED, ESCAPE, EXACT, EXCLUSIVE, ;
      FIXED, INTENSITY, PRINTER, SCOREBOARD, SOFTSEEK, UNIQUE, WRAP> ( <flag> ) => ;
   __Set(<"switch">, <flag>)

#command SET <setting: DATE FORMAT, DECIMALS, EPOCH, MARGIN, MESSAGE, TYPEAHEAD> TO <value> => ;
   __Set(<"setting">, <value>)

#command SET DATE <order: AMERICAN, ANSI, BRITISH, FRENCH, GERMAN, ITALIAN, JAPANESE> => ;
   __Set("DATE",<"order">)

// Folders are written as they are, or as an expression in parentheses.
#command SET <folder: DEFAULT, PATH> TO <(name)> => __Set(<"folder">,<(name)>)

// Back to what the setting is at the start.
#command SET <setting: DATE FORMAT, DECIMALS, DEFAULT, EPOCH, MARGIN, MESSAGE, PATH, ;
      TYPEAHEAD> TO => ;
   __Unset(<"setting">)

// Colours are written as they are, too: SET COLOR TO W+/B, N/W.
#command SET COLOR TO            => __SetColor()
#command SET COLOR TO <*colors*> => __SetColor(<(colors)>)

#command SET KEY <key> TO          => __SetKey(<key>)
#command SET KEY <key> TO <action> => __SetKey(<key>,<{action}>)

// ---- records -----------------------------------------------------------------------------------
//
// The scope of a command is any of FOR, WHILE, NEXT, RECORD, REST and ALL, in any order.

#command APPEND BLANK => __Append()

#command GO <place: TOP, BOTTOM>   => __Go(<"place">)
#command GOTO <place: TOP, BOTTOM> => __Go(<"place">)
#command GO RECORD <number>        => __GoTo(<number>)
#command GOTO RECORD <number>      => __GoTo(<number>)
#command SKIP                      => __Skip(1)

#command LOCATE ;
      [FOR <for>] [WHILE <while>] [NEXT <next>] [RECORD <record>] [<rest: REST>] [ALL] => ;
   __Locate(<.rest.>,<{for}>,<{while}>, <next>, <record>)
#command CONTINUE => __Continue()

#command REPLACE <field1> WITH <value1> [, <fieldN> WITH <valueN>] ;
      [FOR <for>] [WHILE <while>] [NEXT <next>] [RECORD <record>] [<rest: REST>] [ALL] => ;
   __ForEach({|| __Put(<"field1">, <value1>)[, __Put(<"fieldN">, <valueN>)]}, ;
      <.rest.>,<{for}>,<{while}>, <next>, <record>)

// Without a scope it is the current record. As good a match as the one above, and later.
#command REPLACE <field1> WITH <value1> [, <fieldN> WITH <valueN>] => ;
   __Put(<"field1">, <value1>) [; __Put(<"fieldN">, <valueN>)]

#command DELETE ;
      [FOR <for>] [WHILE <while>] [NEXT <next>] [RECORD <record>] [<rest: REST>] [ALL] => ;
   __ForEach({|| __Delete()},<.rest.>,<{for}>,<{while}>, <next>, <record>)
#command DELETE => __Delete()

#command RECALL ;
      [FOR <for>] [WHILE <while>] [NEXT <next>] [RECORD <record>] [<rest: REST>] [ALL] => ;
   __ForEach({|| __Recall()},<.rest.>,<{for}>,<{while}>, <next>, <record>)
#command RECALL => __Recall()

#command COUNT [FOR <for>] [WHILE <while>] [NEXT <next>] [RECORD <record>] [<rest: REST>] [ALL] ;
      TO <var> => ;
   <var> := 0 ; __ForEach({|| <var> += 1},<.rest.>,<{for}>,<{while}>, <next>, <record>)

#command COUNT TO <var> ;
      [FOR <for>] [WHILE <while>] [NEXT <next>] [RECORD <record>] [<rest: REST>] [ALL] => ;
   <var> := 0 ; __ForEach({|| <var> += 1},<.rest.>,<{for}>,<{while}>, <next>, <record>)

#command SUM <item1> [, <itemN>] TO <var1> [, <varN>] ;
      [FOR <for>] [WHILE <while>] [NEXT <next>] [RECORD <record>] [<rest: REST>] [ALL] => ;
   <var1> := [<varN> :=] 0 ; __ForEach({|| <var1> += <item1>[, <varN> += <itemN>]}, ;
      <.rest.>,<{for}>,<{while}>, <next>, <record>)

#command AVERAGE <item> TO <var> ;
      [FOR <for>] [WHILE <while>] [NEXT <next>] [RECORD <record>] [<rest: REST>] [ALL] => ;
   <var> := __Average(<{item}>,<.rest.>,<{for}>,<{while}>, <next>, <record>)

// ---- tables, indexes, files --------------------------------------------------------------------

#command INDEX ON <key> TO <(file)> [TAG <(tag)>] [FOR <for>] [<unique: UNIQUE>] ;
      [<down: DESCENDING>] => ;
   __Index(<(file)>,<(tag)>,<"key">,<{key}>,<{for}>,<.unique.>,<.down.>)

#command SET INDEX TO                         => __SetIndex({})
#command SET INDEX TO <(file1)> [, <(fileN)>] => __SetIndex({<(file1)>[,<(fileN)>]})
#command SET ORDER TO                         => __SetOrder()
#command SET ORDER TO <order>                 => __SetOrder(<order>)
#command SET ORDER TO TAG <(tag)>             => __SetOrder(<(tag)>)
#command SET FILTER TO                        => __SetFilter()
#command SET FILTER TO <condition>            => __SetFilter(<{condition}>,<"condition">)

#command REINDEX      => __Reindex()
#command PACK         => __Pack()
#command ZAP          => __Zap()
#command COMMIT       => __Commit()
#command UNLOCK [<all: ALL>] => __Unlock(<.all.>)

#command CLOSE        => __Close()
#command CLOSE <what: ALL, ALTERNATE, DATABASES, INDEXES, FORMAT> => __CloseAll(<"what">)
#command CLOSE AREA <(alias)> => __Close(<(alias)>)

#command COPY FILE <(from)> TO <(to)> => __CopyFile(<(from)>,<(to)>)
#command RENAME <(from)> TO <(to)>    => __RenameFile(<(from)>,<(to)>)
#command DELETE FILE <(file)>         => __DeleteFile(<(file)>)

#command QUIT => __Quit()
