#command CLEAN [<all: ALL>] [FROM <start>] => Clean(<.all.>, <.start.>, <start>)
CLEAN
CLEAN FROM 5 ALL
