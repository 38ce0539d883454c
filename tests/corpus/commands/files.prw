COPY FILE list.txt TO \save\list.old
COPY FILE (cFrom) TO "new list.txt"
RENAME list.txt TO &cName.
DELETE FILE list.txt
dele file (cPath + "x")
  QUIT
