// Commands for the screen beyond those that every program has: menus, windows, messages.

#ifndef SCREEN_CH
#define SCREEN_CH

// ---- menus and boxes ---------------------------------------------------------------------------

#command @ <row>, <col> PROMPT <text> [MESSAGE <message>] => ;
   __Prompt(<row>, <col>, <text>, <message>)
#command MENU TO <var> => <var> := __Menu(<var>)

#command @ <top>, <left>, <bottom>, <right> BOX <frame> [COLOR <color>] => ;
   __Box(<top>, <left>, <bottom>, <right>, <frame>, <color>)

// ---- windows -----------------------------------------------------------------------------------

#command DEFINE WINDOW <window> FROM <top>, <left> TO <bottom>, <right> ;
      [TITLE <title>] [COLOR <color>] [<double: DOUBLE>] [ON CLOSE <action>] => ;
   <window> := __Window(<top>, <left>, <bottom>, <right>, <title>, <color>,<.double.>,<{action}>)
#command ACTIVATE WINDOW <window> [, <windowN>] => <window>:Show() [; <windowN>:Show()]
#command RELEASE WINDOW <window> [, <windowN>]  => <window>:Close() [; <windowN>:Close()]

#command SAVE SCREEN                 => __SaveScreen()
#command SAVE SCREEN TO <var>        => <var> := __SaveScreen()
#command RESTORE SCREEN [FROM <var>] => __RestoreScreen(<var>)

// ---- messages and keys -------------------------------------------------------------------------

#command SHOW MESSAGE <text> [TITLE <title>] [BUTTONS <buttons,...>] [TO <var>] => ;
   [<var> :=] __Message(<text>, <title>, {<buttons>})
#command ASK <question> TO <var> [DEFAULT <answer: YES, NO>] => ;
   <var> := __Ask(<question>,<"answer">)

// What stands between the two is in the window until the second.
#command SHOW PROGRESS <title> OF <total> => __ProgressStart(<title>, <total>)
#command STEP PROGRESS [BY <count>]       => __ProgressStep(<count>)
#command HIDE PROGRESS                    => __ProgressEnd()

#command STUFF KEYS <keys,...> => __StuffKeys({<keys>})

#endif
