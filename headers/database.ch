// Commands for tables beyond those that every program has: opening and choosing them, copying
// between them and joining them. Include it where tables are worked with.
//
// SEEK and SKIP begin with a word that a program could use for a function of its own. The group
// [( <*call*>] keeps them away from calls: a "(" behind the first word lets the group take the
// whole rest of the statement, so that nothing is left for the marker that must still follow, and
// the command does not match. An assignment does not match because ":=" begins no expression. Yet
// name no variable seek, skip, select or use, for seek++ would be taken, and no function Use or
// Select.
//
// The scope of a command is any of FOR, WHILE, NEXT, RECORD, REST and ALL, in any order.

#ifndef DATABASE_CH
#define DATABASE_CH

// ---- areas and records -------------------------------------------------------------------------

// The name of the file may be an expression in parentheses.
#command USE <(file)> [ALIAS <(alias)>] [INDEX <(index1)> [, <(indexN)>]] [VIA <driver>] ;
      [<new: NEW>] [<shared: SHARED>] [<readonly: READONLY>] => ;
   __Use(<(file)>,<(alias)>, {<(index1)>[,<(indexN)>]}, <driver>,<.new.>,<.shared.>,<.readonly.>)
#command USE => __Close()

#command SELECT <(area)> [ORDER <order>] => __Select(<(area)>, <order>)
#command SEEK [( <*call*>] <key> [<soft: SOFTSEEK>] [<last: LAST>] => ;
   __Seek(<key>,<.soft.>,<.last.>)
#command SKIP [( <*call*>] <count> [ALIAS <(alias)>] => __Skip(<count>,<(alias)>)

#command LOCK <what: RECORD, FILE> [TIMEOUT <seconds>] => __Lock(<"what">, <seconds>)

#command SET RELATION TO <key1> INTO <(child1)> [, <keyN> INTO <(childN)>] [<add: ADDITIVE>] => ;
   __SetRelation({{<{key1}>,<(child1)>}[, {<{keyN}>,<(childN)>}]},<.add.>)
#command SET RELATION TO => __SetRelation({}, .F.)

// ---- from table to table -----------------------------------------------------------------------

#command COPY TO <(file)> [FIELDS <fields,...>] [<format: SDF, DELIMITED, CSV>] ;
      [FOR <for>] [WHILE <while>] [NEXT <next>] [RECORD <record>] [<rest: REST>] [ALL] => ;
   __CopyTo(<(file)>, {<"fields">},<"format">,<.rest.>,<{for}>,<{while}>, <next>, <record>)

#command APPEND FROM <(file)> [FIELDS <fields,...>] [<format: SDF, DELIMITED, CSV>] ;
      [FOR <for>] [WHILE <while>] [NEXT <next>] [RECORD <record>] [<rest: REST>] [ALL] => ;
   __AppendFrom(<(file)>, {<"fields">},<"format">,<.rest.>,<{for}>,<{while}>, <next>, <record>)

#command SORT TO <(file)> ON <fields,...> [<down: DESCENDING>] ;
      [FOR <for>] [WHILE <while>] [NEXT <next>] [RECORD <record>] [<rest: REST>] [ALL] => ;
   __SortTo(<(file)>, {<"fields">},<.down.>,<.rest.>,<{for}>,<{while}>, <next>, <record>)

#command TOTAL ON <key> TO <(file)> [FIELDS <fields,...>] ;
      [FOR <for>] [WHILE <while>] [NEXT <next>] [RECORD <record>] [<rest: REST>] [ALL] => ;
   __TotalTo(<(file)>,<{key}>, {<"fields">},<.rest.>,<{for}>,<{while}>, <next>, <record>)

#command UPDATE FROM <(alias)> ON <key> [<random: RANDOM>] ;
      REPLACE <field1> WITH <value1> [, <fieldN> WITH <valueN>] => ;
   __Update({|| __Put(<"field1">, <value1>)[, __Put(<"fieldN">, <valueN>)]}, ;
      <(alias)>,<.random.>,<{key}>)

#command JOIN WITH <(alias)> TO <(file)> [FOR <for>] [FIELDS <fields,...>] => ;
   __Join(<(alias)>,<(file)>,<{for}>, {<"fields">})

#command COPY STRUCTURE TO <(file)> [FIELDS <fields,...>] => __CopyStructure(<(file)>, {<"fields">})
#command CREATE <(file)> FROM <(structure)>               => __Create(<(file)>,<(structure)>)

// ---- looking at records ------------------------------------------------------------------------

#command LIST [FIELDS <items,...>] [<printer: TO PRINTER>] [TO FILE <(file)>] [<off: OFF>] ;
      [FOR <for>] [WHILE <while>] [NEXT <next>] [RECORD <record>] [<rest: REST>] [ALL] => ;
   __List(<{items}>,<.off.>,<.printer.>,<(file)>,<.rest.>,<{for}>,<{while}>, <next>, <record>)

#endif
