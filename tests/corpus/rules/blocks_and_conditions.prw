#command WHEN <x> DO <y> => DoWhen(<{x}>, <{y}>)
WHEN a > 1 DO f(x, 2)
WHEN {|z| z} DO {|| g()}
WHEN { |z| z } DO { || g() }
WHEN {a, b} DO &c.
#command FLAGS <x> [<on: ON>] [WITH <w>] [LOUD] => DoFlags(<.x.>,<.on.>, <.w.>,<.unknown.>)
FLAGS 1
FLAGS 1 WITH 2 ON LOUD
