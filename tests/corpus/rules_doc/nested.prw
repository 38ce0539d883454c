#command ROUTE <from> [VIA <stop1> [, <stopN>]] [BY <means>] => ;
   Journey(<from>, {<stop1>[, <stopN>]}[, <means>])
ROUTE cHome
ROUTE cHome BY cTrain VIA cRome, cPisa, cNice
