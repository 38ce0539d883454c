User Function Open()
BEGINCONTENT VAR c
text
ENDCONTENT
BEGINCONTENT VAR d
it is (open
