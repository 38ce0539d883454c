"""Every error of a file in one run: programs with several mistakes, each in a place of its own.

    python3 tests/allerrors_test.py KRPRE

Of 30 programs at least 90 % of the mistakes are told, at most 5 % of what is told is about
anything else, and the first error is that of a plain run.
"""

import json
import random
import subprocess
import sys
import tempfile
from pathlib import Path

HEAD = """#define LIMIT 10
#define PING PONG
#define PONG PING
#xcommand SHOW <x> AT <y> => Shown(<x>, <y>)
"""
CLEAN = """Function Clean%d(nA, cB)
	Local nSum := 0, i
	For i := 1 To nA
		If i %% 2 == 0
			nSum += Len(cB) * i
		Else
			nSum -= aRates[i]
		EndIf
	Next
	While nSum > LIMIT
		Do Case
		Case nSum > 10
			Exit
		EndCase
	EndDo
	SHOW cB AT 3
Return nSum

"""
BODY = """Function F%d(nA)
	Local x := 0
	%s
	x := nA + 1
Return x

"""
# What a missing rule or header explains.
USES = """Function Uses%d(nA)
	@ 3, 4 SAY "x" GET nA
	REPEAT nA
		OPEN FORM oForm
	EndDo
	@ 5, 4 SAY "x"
Return nA

"""
STATEMENTS = {
    "open bracket": "x := (nA + 2",
    "open index": "x := aRates[nA",
    "open string": 'x := "abc + nA',
    "lone bracket": "x := nA + 2)",
    "open condition": "If (nA > 2 .And. (x < 3)\n\t\tx := 1\n\tEndIf",
    "string in a condition": 'If nA == "x\n\t\tx := 1\n\tEndIf',
    "no EndIf": "If nA > 1\n\t\tx := 2",
    "no EndIf in a loop": "While nA > 1\n\t\tIf x == 2\n\t\t\tx := 3\n\tEndDo",
    "no EndDo": "While nA > 1\n\t\tnA--\n\tIf nA == 2\n\t\tx := 1\n\tEndIf",
    "no Next": "For x := 1 To 3\n\t\tnA++",
    "no EndCase": "Do Case\n\tCase nA == 1\n\t\tx := 2",
    "lone EndIf": "If nA > 1\n\t\tnA++\n\tEndIf\n\tEndIf",
    "lone Else": "nA++\n\tElse\n\tnA--",
    "second Else": "If nA > 2\n\t\tnA--\n\tElse\n\t\tnA++\n\tElse\n\t\tnA := 1\n\tEndIf",
    "lone EndDo": "nA++\n\tEndDo",
    "lone Next": "nA++\n\tNext",
    "lone EndCase": "nA++\n\tEndCase",
    "other closer": "While nA > 2\n\t\tnA--\n\tEndIf",
    "Exit": "If nA > 2\n\t\tExit\n\tEndIf",
    "Loop": "Loop",
    "Return": "Begin Sequence\n\t\tReturn 3\n\tEnd Sequence",
    "late Local": "x := 3\n\tLocal y := 2\n\tLocal z := 2",
    "reference": "x := @nA + 1",
    "circle": "x := PING",
}
LINES = {
    "header": '#include "missing.ch"\n',
    "define": "#define\n",
    "rule without result": "#command OPEN <x> Opened(<x>)\n",
    "rule with an open group": "#xcommand CLOSE <x> [NOW => Closed(<x>)\n",
    "#ifdef": "#ifdef DEBUG_MODE\n",
    "#else": "#else\n",
    "function": "Static Function (nA)\n\tLocal q := 1\nReturn q\n",
}


def program(choice):
    """A text and where its mistakes stand: pairs of a first and a last line."""
    parts = [(HEAD, False)]
    for name in choice.sample(sorted(STATEMENTS) + sorted(LINES), choice.randint(2, 6)):
        if choice.random() < 0.5:
            parts.append((CLEAN % len(parts), False))
        if name in STATEMENTS:
            parts.append((BODY % (len(parts), STATEMENTS[name]), True))
            continue
        parts.append((LINES[name], True))
        if name == "header" or name.startswith("rule"):
            parts.append((USES % len(parts), False))
    parts.append((CLEAN % len(parts), False))
    places, line = [], 1
    for text, wrong in parts:
        behind = line + text.count("\n")
        if wrong:
            places.append((line, behind - 1))
        line = behind
    return "".join(text for text, _ in parts), places


def errors(krpre, path, *options):
    command = [krpre, *options, "--diagnostics=json", "-I%s" % path.parent, str(path)]
    done = subprocess.run(command, capture_output=True, text=True, timeout=60)
    if done.returncode != 1:
        raise SystemExit("%s: status %d\n%s" % (path, done.returncode, done.stderr))
    told = map(json.loads, (done.stdout + done.stderr).splitlines())
    return [record for record in told if record["severity"] == "error"]


def main():
    mistakes = found = told = 0
    with tempfile.TemporaryDirectory() as folder:
        Path(folder, "std.ch").touch()
        path = Path(folder, "program.prw")
        for seed in range(30):
            text, places = program(random.Random(seed))
            path.write_text(text)
            records = errors(sys.argv[1], path, "--all-errors")
            if records[0] != errors(sys.argv[1], path)[0]:
                raise SystemExit("program %d: another first error\n%s" % (seed, text))
            lines = [record["line"] for record in records]
            hit = {place for place in places for line in lines if place[0] <= line <= place[1]}
            mistakes, found, told = mistakes + len(places), found + len(hit), told + len(lines)
            if Path(folder, "program.ppo").exists():
                raise SystemExit("program %d: an output is written" % seed)
    print("%d mistakes, %d found, %d errors told" % (mistakes, found, told))
    if found < 0.9 * mistakes or told - found > 0.05 * told:
        raise SystemExit("too few mistakes are told, or too much else")


main()
