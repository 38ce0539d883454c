#!/usr/bin/env python3
"""Makes a project of many Korel sources and a build.ninja that preprocesses them.

    examples/ninja/generate.py [--krpre PROGRAM] DIRECTORY

Source number i includes common.ch, which all include, and one of twenty part headers.
"""
import argparse
from pathlib import Path

SOURCES = 200
PARTS = 20

RULES = """\
krpre = {krpre}

# The dependency file tells ninja what each output was made from. An output that would not change
# keeps its times; with restat, ninja then leaves alone what is made from it.
rule preprocess
  command = $krpre -q -MD -MF $out.d -Iheaders -o $out $in
  depfile = $out.d
  deps = gcc
  restat = 1
  description = krpre $in

rule join
  command = cat $in > $out
  description = join $out

"""


def source(number):
    return f"""\
#include "common.ch"
#include "part{number % PARTS:02}.ch"

User Function Job{number:03}(nValue)
  If nValue > LIMIT
    nValue := LIMIT
  EndIf
Return nValue * FACTOR
"""


def main():
    options = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    options.add_argument("--krpre", default="krpre", help="the program to call")
    options.add_argument("directory", type=Path, help="where the project goes")
    given = options.parse_args()

    for folder in ("headers", "sources", "out"):
        (given.directory / folder).mkdir(parents=True, exist_ok=True)
    headers, sources = given.directory / "headers", given.directory / "sources"
    (headers / "common.ch").write_text("#define LIMIT 1000\n")
    for part in range(PARTS):
        (headers / f"part{part:02}.ch").write_text(f"#define FACTOR {part}\n")

    build = RULES.format(krpre=given.krpre)
    outputs = []
    for number in range(SOURCES):
        (sources / f"job{number:03}.prw").write_text(source(number))
        outputs.append(f"out/job{number:03}.ppo")
        build += f"build {outputs[-1]}: preprocess sources/job{number:03}.prw\n"
    build += f"build out/program.txt: join {' '.join(outputs)}\n"
    (given.directory / "build.ninja").write_text(build)


if __name__ == "__main__":
    main()
