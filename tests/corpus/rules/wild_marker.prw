#command NOTE <*text*> => DoNote(#<text>)
NOTE anything, at   all ; even this
  NOTE say "it"
NOTE
#command LOG <level> <*rest*> => DoLog(<level>, #<rest>)
LOG a + b c d
