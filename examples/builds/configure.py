#!/usr/bin/env python3
"""Writes a build.ninja for the sources that are there; ninja calls it again when one comes or goes.

    ./configure.py [--krpre PROGRAM]
"""
import argparse
import shutil
from pathlib import Path

SEARCH = ["headers", "company"]

RULES = """\
# The dependency file tells ninja what an output was made from. An output that would not change keeps
# its time; with restat, ninja then leaves alone what is made from it.
rule preprocess
  command = {krpre} {flags} -MD -MF $out.d -o $out $in
  depfile = $out.d
  deps = gcc
  restat = 1
  description = krpre $in

rule join
  command = xargs cat <$out.list >$out
  rspfile = $out.list
  rspfile_content = $in_newline
  description = join $out

rule configure
  command = ./configure.py --krpre {krpre}
  generator = 1
  restat = 1
  description = configure

build build.ninja: configure | configure.py sources {search}
build always: phony
"""


def hidden_headers():
    """Those that one of the same name hides, in a directory that is searched first."""
    seen = set()
    for directory in ["sources", *SEARCH]:  # the directory of the source goes first
        names = {path.name for path in Path(directory).iterdir()}
        yield from (f"{directory}/{name}" for name in sorted(names & seen))
        seen |= names


def main():
    options = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    options.add_argument("--krpre", default="krpre", help="the program to call")
    krpre = shutil.which(options.parse_args().krpre)

    text = RULES.format(krpre=krpre, flags=" ".join(f"-I{name}" for name in SEARCH), search=" ".join(SEARCH))
    # What was made from a header that is hidden now is made again, and then from the other one.
    text += "".join(f"build {name}: phony always\n" for name in hidden_headers())
    outputs = []
    for source in sorted(Path("sources").glob("*.prw")):
        outputs.append(f"out/{source.stem}.ppo")
        text += f"build {outputs[-1]}: preprocess {source} | {krpre}\n"
    text += f"build out/program.txt: join {' '.join(outputs)}\ndefault out/program.txt\n"

    target = Path("build.ninja")
    if not target.exists() or target.read_text() != text:
        target.write_text(text)


if __name__ == "__main__":
    main()
