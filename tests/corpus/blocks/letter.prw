User Function Letter(cName, nTotal)
  Local cText := ""
  BEGINCONTENT VAR cText
    Dear %Exp:cName%,

      it's 100% "yours" // for %Exp:Str(nTotal)% only.
    #include "nothing.ch"
  ENDCONTENT
  BEGINCONTENT VAR cNote OPTIMIZE
      note   
  ENDCONTENT
Return cText + cNote
