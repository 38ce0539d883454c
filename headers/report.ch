// Commands for printing: reports and labels from their forms, and pages that a program prints line
// by line.

#ifndef REPORT_CH
#define REPORT_CH

// ---- forms -------------------------------------------------------------------------------------

#command REPORT FORM <(form)> [HEADING <heading>] [<plain: PLAIN>] [<summary: SUMMARY>] ;
      [<noeject: NOEJECT>] [<printer: TO PRINTER>] [TO FILE <(file)>] ;
      [FOR <for>] [WHILE <while>] [NEXT <next>] [RECORD <record>] [<rest: REST>] [ALL] => ;
   __ReportForm(<(form)>,<.printer.>,<(file)>, <heading>,<.plain.>,<.summary.>,<.noeject.>, ;
      <.rest.>,<{for}>,<{while}>, <next>, <record>)

#command LABEL FORM <(form)> [<sample: SAMPLE>] [<printer: TO PRINTER>] [TO FILE <(file)>] ;
      [FOR <for>] [WHILE <while>] [NEXT <next>] [RECORD <record>] [<rest: REST>] [ALL] => ;
   __LabelForm(<(form)>,<.printer.>,<(file)>,<.sample.>, ;
      <.rest.>,<{for}>,<{while}>, <next>, <record>)

// ---- where it goes -----------------------------------------------------------------------------

#command SET DEVICE TO <device: SCREEN, PRINTER>     => __Set("DEVICE",<"device">)
#command SET PRINTER TO                              => __SetPrinter()
#command SET PRINTER TO <(file)> [<add: ADDITIVE>]   => __SetPrinter(<(file)>,<.add.>)
#command SET ALTERNATE TO                            => __SetAlternate()
#command SET ALTERNATE TO <(file)> [<add: ADDITIVE>] => __SetAlternate(<(file)>,<.add.>)
#command EJECT                                       => __Eject()

// ---- pages -------------------------------------------------------------------------------------

#command BEGIN PAGE [SIZE <lines>] [WIDTH <columns>] [ON BREAK <action>] => ;
   __BeginPage(<lines>, <columns>,<{action}>)
#command END PAGE => __EndPage()

#command PAGE HEADING <text1> [, <textN>] => __PageHeading({<text1>[, <textN>]})
#command PAGE FOOTING <text1> [, <textN>] => __PageFooting({<text1>[, <textN>]})
#command PAGE BREAK [WHEN <condition>]    => __PageBreak(<condition>)

// PRINT "Total" AT 0, nTotal AT 40
#command PRINT <text1> [PICTURE <picture1>] AT <col1> [, <textN> AT <colN>] => ;
   __PrintAt(<col1>, <text1>, <picture1>) [; __PrintAt(<colN>, <textN>)] ; __PrintEnd()
#command PRINT RULE [OF <char>] [WIDTH <columns>] => __PrintRule(<char>, <columns>)
#command PRINT SKIP [LINES <lines>]               => __PrintSkip(<lines>)

#endif
