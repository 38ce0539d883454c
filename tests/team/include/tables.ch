// Tables, their fields by position, and how they are opened.
#ifndef TABLES_CH
#define TABLES_CH

#define ITEM_CODE     1
#define ITEM_NAME     2
#define ITEM_UNIT     3
#define ITEM_MINIMUM  4
#define ITEM_PRICE    5

#command OPEN TABLE <cTable> [ALIAS <alias>] [<shared: SHARED>] => ;
   OpenTable(<cTable>, <(alias)>, <.shared.>)
#command CLOSE TABLE <alias> => <alias>->(dbCloseArea())
#command LOCK RECORD OF <alias> => <alias>->(RecLock())
#command SEEK <key> IN <alias> [INDEX <n>] => <alias>->(SeekBy(<key>, <n>))

#xtranslate FOUND IN <alias> => <alias>->(Found())

#endif
