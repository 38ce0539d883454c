/*
   rules.ch: the company's own way to say it.
*/
#ifndef RULES_CH
#define RULES_CH

// COMPLAIN MSG_NO_STOCK, cCode, Date() shows "Not enough in stock: A-1: 02/03/24".
// Every part after the first is written by the clause, once for each time the group was given.
#xcommand COMPLAIN <text1> [, <textN>] => Warn(<text1>[ + ": " + <textN>])

// FOR EACH aPair IN aWanted AT nAt ... NEXT. Brackets of a result have a backslash.
#xcommand FOR EACH <item> IN <list> AT <at> => ;
   For <at> := 1 To Len(<list>) ; <item> := <list>\[<at>\]

// TAKE 5 OF cCode FROM STOCK FOR nNumber, URGENT: the groups come in any order.
#command TAKE <quantity> OF <code> FROM STOCK [FOR <number>] [, <urgent: URGENT>] => ;
   Reserve(<code>, <quantity>, <number>,<.urgent.>)

// If ORDER IS OPEN: the first letter of a state is how it is kept.
#xtranslate ORDER IS <state: OPEN, BLOCKED, SHIPPED, CLOSED> => ;
   (ORDERS->STATE == Left(<"state">, 1))

#translate PERCENT(<rate>, <amount>) => ((<amount>) * <rate> / 100)

#endif
