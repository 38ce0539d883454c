a := "double" + 'single' + "it's" + 'say "yes"'
a := '' + ""+''
a := 'it''s' + "x""y" + "a"'b'
a := "// none" + '/* none */' + "&& none" + '* none'
a := "; none ;"
a := "#define" + '%NOTDEL%' + "=> ..."
a := "tab	and  blanks  "
a := "back\slash\" + 'c:\'
a := [brackets] + [ 'are' ]
