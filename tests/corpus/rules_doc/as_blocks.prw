#command WATCH <condition> DO <action> => Watch(<{condition}>,<{action}>)
WATCH nStock < 10 DO Order(20)
WATCH {|| lLate} DO {|nDay| Warn(nDay)}
