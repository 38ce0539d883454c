#command REMARK <*text*> => Ignored(#<text>)
REMARK it costs 10% more, as agreed
