// Forms and what stands on them.
#ifndef FORMS_CH
#define FORMS_CH

#define FORM_WIDTH    640
#define FORM_HEIGHT   480
#define BTN_WIDTH     90
#define BTN_HEIGHT    24
#define CLR_WARNING   0x0000FF
#define CLR_NORMAL    0

#command FORM <oForm> TITLE <cTitle> [SIZE <nWidth>, <nHeight>] [<modal: MODAL>] => ;
   <oForm> := TForm():New(<cTitle>, [<nWidth>], [<nHeight>], <.modal.>)

#command LABEL <cText> AT <nRow>, <nCol> OF <oForm> [COLOR <nColor>] => ;
   <oForm>:AddLabel(<nRow>, <nCol>, <cText>[, <nColor>])

#command FIELD <xVar> AT <nRow>, <nCol> OF <oForm> [PICTURE <cPicture>] [VALID <valid>] ;
   [WHEN <when>] => ;
   <oForm>:AddField(<nRow>, <nCol>, {|u| If(PCount() > 0, <xVar> := u, <xVar>)}, ;
      <cPicture>, <{valid}>, <{when}>)

#command BUTTON <oButton> TEXT <cText> AT <nRow>, <nCol> OF <oForm> ACTION <action> => ;
   <oButton> := <oForm>:AddButton(<nRow>, <nCol>, <cText>, <{action}>)

#command GRID <oGrid> OF <oForm> ARRAY <aRows> [COLUMNS <columns,...>] [ON CHANGE <change>] => ;
   <oGrid> := <oForm>:AddGrid(<aRows>, { <columns> }, <{change}>)

#command SHOW <oForm> [CENTERED] => <oForm>:Show()

#endif
