#command OPEN <x> => OpenAny(<x>)
#command OPEN DOOR => OpenDoor()
#command OPEN <x> WITH <key> => OpenWith(<x>, <key>)
OPEN oBox
OPEN DOOR
OPEN DOOR WITH cKey
