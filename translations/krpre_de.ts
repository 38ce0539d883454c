<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>Preprocessor</name>
    <message>
        <source>A block for a value is empty</source>
        <translation>Ein Block für einen Wert ist leer</translation>
    </message>
    <message>
        <source>A block is not closed</source>
        <translation>Ein Block ist nicht geschlossen</translation>
    </message>
    <message>
        <source>A comment is not closed</source>
        <translation>Ein Kommentar ist nicht geschlossen</translation>
    </message>
    <message>
        <source>A directive needs a line of its own</source>
        <translation>Eine Direktive braucht eine eigene Zeile</translation>
    </message>
    <message>
        <source>A string is not closed</source>
        <translation>Eine Zeichenkette ist nicht geschlossen</translation>
    </message>
    <message>
        <source>A page cannot begin with a conditional directive</source>
        <translation>Eine Seite kann nicht mit einer bedingten Direktive beginnen</translation>
    </message>
    <message>
        <source>A page is one function and cannot hold another</source>
        <translation>Eine Seite ist eine Funktion und kann keine weitere enthalten</translation>
    </message>
    <message>
        <source>KOREL</source>
        <translation>KOREL</translation>
    </message>
    <message>
        <source>Preprocessor</source>
        <translation>Präprozessor</translation>
    </message>
    <message>
        <source>Preprocessor: </source>
        <translation>Präprozessor: </translation>
    </message>
    <message>
        <source>Preprocessor: Cannot copy</source>
        <translation>Präprozessor: Nicht kopierbar:</translation>
    </message>
    <message>
        <source>Preprocessor: source line TOO BIG - file</source>
        <translation>Präprozessor: Quellzeile ZU LANG - Datei</translation>
    </message>
    <message>
        <source>Precompilation of file</source>
        <translation>Vorübersetzung der Datei</translation>
    </message>
    <message>
        <source>ok</source>
        <translation>in Ordnung</translation>
    </message>
    <message>
        <source>with error</source>
        <translation>mit Fehler</translation>
    </message>
    <message>
        <source>Exitecode equal to</source>
        <translation>Rückgabewert gleich</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>Error creating</source>
        <translation>Fehler beim Erzeugen von</translation>
    </message>
    <message>
        <source>Error creating out file</source>
        <translation>Fehler beim Erzeugen der Ausgabedatei</translation>
    </message>
    <message>
        <source>File not found</source>
        <translation>Datei nicht gefunden</translation>
    </message>
    <message>
        <source>Could not execute</source>
        <translation>Nicht ausführbar:</translation>
    </message>
    <message>
        <source>The converter failed</source>
        <translation>Der Konverter ist gescheitert</translation>
    </message>
    <message>
        <source>Memory Allocation Failure</source>
        <translation>Speicheranforderung gescheitert</translation>
    </message>
    <message>
        <source>and</source>
        <translation>und</translation>
    </message>
    <message>
        <source>are the same file.</source>
        <translation>sind dieselbe Datei.</translation>
    </message>
    <message>
        <source>at line</source>
        <translation>in Zeile</translation>
    </message>
    <message>
        <source>in file</source>
        <translation>in Datei</translation>
    </message>
    <message>
        <source>line</source>
        <translation>Zeile</translation>
    </message>
    <message>
        <source>to</source>
        <translation>nach</translation>
    </message>
    <message>
        <source>unknown failure</source>
        <translation>unbekannter Fehler</translation>
    </message>
    <message>
        <source>Build</source>
        <translation>Build</translation>
    </message>
    <message>
        <source>Released under the MIT licence</source>
        <translation>Veröffentlicht unter der MIT-Lizenz</translation>
    </message>
    <message>
        <source>The krpre authors</source>
        <translation>Die Autoren von krpre</translation>
    </message>
    <message>
        <source>[TRACE] Renaming files</source>
        <translation>[TRACE] Benenne Dateien um:</translation>
    </message>
    <message>
        <source>[TRACE] adding include paths</source>
        <translation>[TRACE] füge Include-Verzeichnisse hinzu</translation>
    </message>
    <message>
        <source>[TRACE] copying</source>
        <translation>[TRACE] kopiere</translation>
    </message>
    <message>
        <source>[TRACE] creating file</source>
        <translation>[TRACE] erzeuge Datei</translation>
    </message>
    <message>
        <source>[TRACE] generated lines</source>
        <translation>[TRACE] erzeugte Zeilen</translation>
    </message>
    <message>
        <source>[TRACE] pre-processor error msg</source>
        <translation>[TRACE] Fehlermeldung des Präprozessors</translation>
    </message>
    <message>
        <source>[TRACE] preprocessing</source>
        <translation>[TRACE] verarbeite</translation>
    </message>
    <message>
        <source>tTranslate </source>
        <translation>tTranslate </translation>
    </message>
    <message>
        <source>xCommand </source>
        <translation>xCommand </translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warnung</translation>
    </message>
    <message>
        <source>note:</source>
        <translation>Hinweis:</translation>
    </message>
    <message>
        <source>opened by %1, line %2</source>
        <translation>geöffnet von %1, Zeile %2</translation>
    </message>
    <message>
        <source>still open at the end of the file</source>
        <translation>am Ende der Datei noch offen</translation>
    </message>
    <message>
        <source>still open where a function begins, line %1</source>
        <translation>noch offen, wo eine Funktion beginnt, Zeile %1</translation>
    </message>
    <message>
        <source>the first function begins in line %1</source>
        <translation>die erste Funktion beginnt in Zeile %1</translation>
    </message>
    <message>
        <source>its function begins in line %1</source>
        <translation>ihre Funktion beginnt in Zeile %1</translation>
    </message>
    <message>
        <source>only sources of the extended language have it</source>
        <translation>es gibt sie nur in Quellen der erweiterten Sprache</translation>
    </message>
    <message>
        <source>no control structure is open</source>
        <translation>keine Kontrollstruktur ist offen</translation>
    </message>
    <message>
        <source>it has an Else already</source>
        <translation>es hat schon ein Else</translation>
    </message>
    <message>
        <source>searched in: %1</source>
        <translation>gesucht in: %1</translation>
    </message>
    <message>
        <source>upper and lower case differ in %1</source>
        <translation>Groß- und Kleinschreibung weichen ab: %1</translation>
    </message>
    <message>
        <source>did you mean %1?</source>
        <translation>ist %1 gemeint?</translation>
    </message>
    <message>
        <source>add the directory of the shipped headers to the include directories</source>
        <translation>das Verzeichnis der mitgelieferten Header gehört zu den Include-Verzeichnissen</translation>
    </message>
    <message>
        <source>a directive stands at the beginning of its line</source>
        <translation>eine Direktive steht am Anfang ihrer Zeile</translation>
    </message>
    <message>
        <source>expected %1</source>
        <translation>erwartet: %1</translation>
    </message>
    <message>
        <source>or</source>
        <translation>oder</translation>
    </message>
    <message>
        <source>a word</source>
        <translation>ein Wort</translation>
    </message>
    <message>
        <source>a name</source>
        <translation>ein Name</translation>
    </message>
    <message>
        <source>a name in quotes</source>
        <translation>ein Name in Anführungszeichen</translation>
    </message>
    <message>
        <source>a number</source>
        <translation>eine Zahl</translation>
    </message>
    <message>
        <source>the end of the line</source>
        <translation>das Ende der Zeile</translation>
    </message>
    <message>
        <source>a pattern begins with a word</source>
        <translation>ein Muster beginnt mit einem Wort</translation>
    </message>
    <message>
        <source>expected ']' for the '[' in column %1</source>
        <translation>erwartet: ']' für das '[' in Spalte %1</translation>
    </message>
    <message>
        <source>the ']' in column %1 has no '['</source>
        <translation>das ']' in Spalte %1 hat kein '['</translation>
    </message>
    <message>
        <source>Cannot read the source</source>
        <translation>Die Quelle ist nicht lesbar</translation>
    </message>
    <message>
        <source>The source is too big</source>
        <translation>Die Quelle ist zu groß</translation>
    </message>
    <message>
        <source>The converted source is too big</source>
        <translation>Die umgewandelte Quelle ist zu groß</translation>
    </message>
    <message>
        <source>The output would take the source's place</source>
        <translation>Die Ausgabe käme an die Stelle der Quelle</translation>
    </message>
    <message>
        <source>it is no regular file</source>
        <translation>es ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>in the result of %1 %2 the '%3' has no partner</source>
        <translation>im Ergebnis von %1 %2 fehlt das Gegenstück zu '%3'</translation>
    </message>
    <message>
        <source>the '%1' has no partner</source>
        <translation>zu '%1' fehlt das Gegenstück</translation>
    </message>
    <message>
        <source>no rule takes this %1 statement</source>
        <translation>keine Regel nimmt diese Anweisung %1</translation>
    </message>
    <message>
        <source>correct the statement so that a rule takes it whole</source>
        <translation>die Anweisung so berichtigen, dass eine Regel sie ganz nimmt</translation>
    </message>
    <message>
        <source>%1 is used above its #define</source>
        <translation>%1 wird oberhalb seines #define benutzt</translation>
    </message>
    <message>
        <source>move the #define up: it holds from its own line on</source>
        <translation>das #define nach oben setzen: es gilt erst ab seiner Zeile</translation>
    </message>
    <message>
        <source>%1 is not replaced: the #define is spelt %2</source>
        <translation>%1 wird nicht ersetzt: das #define heißt %2</translation>
    </message>
    <message>
        <source>names of defines are case-sensitive: use the same spelling in both places</source>
        <translation>bei Namen von #define zählen Groß- und Kleinbuchstaben: an beiden Stellen gleich schreiben</translation>
    </message>
    <message>
        <source>%1 is not replaced: arguments given: %2, expected: %3</source>
        <translation>%1 wird nicht ersetzt: Argumente: %2, erwartet: %3</translation>
    </message>
    <message>
        <source>give the call as many arguments as its #define has parameters</source>
        <translation>dem Aufruf so viele Argumente geben, wie das #define Parameter hat</translation>
    </message>
    <message>
        <source>nothing stands between %1 and %2</source>
        <translation>zwischen %1 und %2 steht nichts</translation>
    </message>
    <message>
        <source>write the comma or the operator that is missing, or correct what a rule has taken whole</source>
        <translation>das fehlende Komma oder den fehlenden Operator schreiben, oder berichtigen, was eine Regel ganz übernommen hat</translation>
    </message>
    <message>
        <source>%1 is no directive</source>
        <translation>%1 ist keine Direktive</translation>
    </message>
    <message>
        <source>the line is taken for a statement; docs/directives.md lists the directives</source>
        <translation>die Zeile gilt als Anweisung; docs/directives.md nennt die Direktiven</translation>
    </message>
    <message>
        <source>no blank may stand behind the #: write %1</source>
        <translation>hinter dem # darf kein Leerzeichen stehen: %1 schreiben</translation>
    </message>
    <message>
        <source>%1 loses bytes and becomes %2</source>
        <translation>%1 verliert Bytes und wird zu %2</translation>
    </message>
    <message>
        <source>use ASCII letters only outside of strings and comments</source>
        <translation>außerhalb von Zeichenketten und Kommentaren nur ASCII-Buchstaben benutzen</translation>
    </message>
    <message>
        <source>this #error is reached, and has no effect: %1</source>
        <translation>dieses #error wird erreicht und ist wirkungslos: %1</translation>
    </message>
    <message>
        <source>remove the #error, or the condition under which it is reached</source>
        <translation>das #error entfernen, oder die Bedingung, unter der es erreicht wird</translation>
    </message>
    <message>
        <source>#undef has no effect on %1</source>
        <translation>#undef ist für %1 wirkungslos</translation>
    </message>
    <message>
        <source>a #define holds up to the end of the source, or up to the next #define of its name</source>
        <translation>ein #define gilt bis zum Ende der Quelle oder bis zum nächsten #define seines Namens</translation>
    </message>
    <message>
        <source>it stays defined</source>
        <translation>der Name bleibt definiert</translation>
    </message>
    <message>
        <source>it is not defined here</source>
        <translation>der Name ist hier nicht definiert</translation>
    </message>
    <message>
        <source>%1 is no marker of embedded SQL</source>
        <translation>%1 ist keine Marke für eingebettetes SQL</translation>
    </message>
    <message>
        <source>there are Exp, NotDel, NoParser, Order, Table, Temp-Table and xFilial</source>
        <translation>es gibt Exp, NotDel, NoParser, Order, Table, Temp-Table und xFilial</translation>
    </message>
    <message>
        <source>defined here</source>
        <translation>hier definiert</translation>
    </message>
    <message>
        <source>this rule got farthest, and ends before %1</source>
        <translation>diese Regel kam am weitesten und endet vor %1</translation>
    </message>
    <message>
        <source>this rule got farthest, and wants %1 where %2 stands</source>
        <translation>diese Regel kam am weitesten und verlangt %1, wo %2 steht</translation>
    </message>
    <message>
        <source>this rule got farthest, and wants %1 behind the statement</source>
        <translation>diese Regel kam am weitesten und verlangt %1 hinter der Anweisung</translation>
    </message>
    <message>
        <source>%1 differs in case from the name of the file, %2</source>
        <translation>%1 unterscheidet sich in Groß- und Kleinbuchstaben vom Namen der Datei, %2</translation>
    </message>
    <message>
        <source>write the name as the file is called</source>
        <translation>den Namen so schreiben, wie die Datei heißt</translation>
    </message>
    <message>
        <source>%1 is not read: %2 was included under that name</source>
        <translation>%1 wird nicht gelesen: unter diesem Namen ist %2 eingebunden</translation>
    </message>
    <message>
        <source>give the files names that differ in more than upper and lower case</source>
        <translation>den Dateien Namen geben, die sich nicht nur in Groß- und Kleinbuchstaben unterscheiden</translation>
    </message>
    <message>
        <source>nothing of %1 is used</source>
        <translation>nichts aus %1 wird benutzt</translation>
    </message>
    <message>
        <source>remove the #include</source>
        <translation>das #include entfernen</translation>
    </message>
    <message>
        <source>%1 has been included as %2 and is read twice</source>
        <translation>%1 ist schon als %2 eingebunden und wird zweimal gelesen</translation>
    </message>
    <message>
        <source>include a file by one name everywhere</source>
        <translation>eine Datei überall unter einem Namen einbinden</translation>
    </message>
    <message>
        <source>read here before</source>
        <translation>hier schon gelesen</translation>
    </message>
    <message>
        <source>BEGINCONTENT without ENDCONTENT</source>
        <translation>BEGINCONTENT ohne ENDCONTENT</translation>
    </message>
    <message>
        <source>add the ENDCONTENT: without it no block of the source is converted</source>
        <translation>ENDCONTENT ergänzen: ohne es wird kein Block der Quelle umgewandelt</translation>
    </message>
    <message>
        <source>BEGINCONTENT without VAR</source>
        <translation>BEGINCONTENT ohne VAR</translation>
    </message>
    <message>
        <source>name the variable that takes the text: BEGINCONTENT VAR name</source>
        <translation>die Variable nennen, die den Text aufnimmt: BEGINCONTENT VAR Name</translation>
    </message>
    <message>
        <source>not told: %1 more of %2</source>
        <translation>nicht genannt: %1 weitere von %2</translation>
    </message>
    <message>
        <source>no source uses %1</source>
        <translation>keine Quelle benutzt %1</translation>
    </message>
    <message>
        <source>no source uses %2 of %1</source>
        <translation>keine Quelle benutzt %2 von %1</translation>
    </message>
    <message>
        <source>the brackets of the result do not match</source>
        <translation>die Klammern des Ergebnisses passen nicht zusammen</translation>
    </message>
    <message>
        <source>balance them, or switch the warning off where one rule opens what another closes</source>
        <translation>sie ausgleichen oder die Warnung ausschalten, wo eine Regel öffnet, was eine andere schließt</translation>
    </message>
    <message>
        <source>the pattern has no marker %1</source>
        <translation>das Muster hat keinen Platzhalter %1</translation>
    </message>
    <message>
        <source>nothing is written for it: use the name of a marker of the pattern</source>
        <translation>dafür wird nichts geschrieben: den Namen eines Platzhalters des Musters verwenden</translation>
    </message>
    <message>
        <source>the group of %1 takes words that get lost</source>
        <translation>die Gruppe mit %1 nimmt Wörter auf, die verloren gehen</translation>
    </message>
    <message>
        <source>begin the group with a word, or let the marker be a list: &lt;name,...&gt;</source>
        <translation>die Gruppe mit einem Wort beginnen oder den Platzhalter zur Liste machen: &lt;name,...&gt;</translation>
    </message>
    <message>
        <source>%1 gets no parameters</source>
        <translation>%1 bekommt keine Parameter</translation>
    </message>
    <message>
        <source>remove the blank in front of the bracket, which is part of the value now</source>
        <translation>das Leerzeichen vor der Klammer entfernen, die jetzt zum Wert gehört</translation>
    </message>
    <message>
        <source>the translation ends in %1, which takes all that can belong to an expression</source>
        <translation>die Übersetzung endet mit %1, das alles aufnimmt, was zu einem Ausdruck gehören kann</translation>
    </message>
    <message>
        <source>end the pattern with a word or a bracket</source>
        <translation>das Muster mit einem Wort oder einer Klammer beenden</translation>
    </message>
    <message>
        <source>nothing is left for what stands behind %1</source>
        <translation>für das, was hinter %1 steht, bleibt nichts übrig</translation>
    </message>
    <message>
        <source>a marker &lt;*name*&gt; takes the rest of the statement: put it last</source>
        <translation>ein Platzhalter &lt;*name*&gt; nimmt den Rest der Anweisung auf: ihn ans Ende stellen</translation>
    </message>
    <message>
        <source>this rule is never used</source>
        <translation>diese Regel wird nie verwendet</translation>
    </message>
    <message>
        <source>remove the rule, or put it behind the other one</source>
        <translation>die Regel entfernen oder hinter die andere stellen</translation>
    </message>
    <message>
        <source>two rules fit equally well, and the later one is used</source>
        <translation>zwei Regeln passen gleich gut, und die spätere wird verwendet</translation>
    </message>
    <message>
        <source>add a word to one of them unless their order is meant</source>
        <translation>eine von ihnen um ein Wort ergänzen, wenn die Reihenfolge nicht gewollt ist</translation>
    </message>
    <message>
        <source>%1 is a word of its own and an abbreviation of %2</source>
        <translation>%1 ist ein eigenes Wort und eine Abkürzung von %2</translation>
    </message>
    <message>
        <source>let the words differ in their first four letters, or use #xcommand and #xtranslate</source>
        <translation>Wörter wählen, die sich in den ersten vier Buchstaben unterscheiden, oder #xcommand und #xtranslate verwenden</translation>
    </message>
    <message>
        <source>rewriting never ends: %1</source>
        <translation>das Umschreiben endet nie: %1</translation>
    </message>
    <message>
        <source>let no result in the circle hold a word that begins a rule of it</source>
        <translation>kein Ergebnis im Kreis darf ein Wort enthalten, mit dem eine seiner Regeln beginnt</translation>
    </message>
    <message>
        <source>for example, %1 becomes %2</source>
        <translation>zum Beispiel wird aus %1: %2</translation>
    </message>
    <message>
        <source>for example: %1</source>
        <translation>zum Beispiel: %1</translation>
    </message>
    <message>
        <source>this rule is used for all of them</source>
        <translation>diese Regel wird für alle ihre Anweisungen verwendet</translation>
    </message>
    <message>
        <source>the other one</source>
        <translation>die andere</translation>
    </message>
    <message>
        <source>the longer word</source>
        <translation>das längere Wort</translation>
    </message>
</context>
<context>
    <name>krpre</name>
    <message>
        <source>at</source>
        <translation>bei</translation>
    </message>
    <message>
        <source>included from</source>
        <translation>eingebunden von</translation>
    </message>
    <message>
        <source>in the expansion of</source>
        <translation>in der Ersetzung von</translation>
    </message>
    <message>
        <source>more rules</source>
        <translation>weitere Regeln</translation>
    </message>
    <message>
        <source>a file name with a line break cannot be written to a dependency file</source>
        <translation>ein Dateiname mit einem Zeilenumbruch kann nicht in eine Abhängigkeitsdatei geschrieben werden</translation>
    </message>
</context>
</TS>
