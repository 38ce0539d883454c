#!/usr/bin/env python3
"""Makes a project of many Korel sources, with a description for each of five build systems.

    examples/builds/generate.py [--sources N] DIRECTORY

Each source includes common.ch, which all include, and one of twenty part headers.
"""
import argparse
import shutil
from pathlib import Path

PARTS = 20
DESCRIPTIONS = ["Makefile", "configure.py", "CMakeLists.txt", "build.gradle", "settings.gradle", "host",
                "WORKSPACE", "BUILD.bazel", "korel.bzl"]


def source(part, number):
    return f"""\
#include "common.ch"
#include "part{part:02}.ch"

User Function Job{part:02}x{number}(nValue)
  If nValue > LIMIT
    nValue := LIMIT
  EndIf
Return nValue * FACTOR
"""


def main():
    options = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    options.add_argument("--sources", type=int, default=200, metavar="N", help="how many (default: 200)")
    options.add_argument("directory", type=Path, help="where the project goes")
    given = options.parse_args()

    headers, company, sources = (given.directory / name for name in ("headers", "company", "sources"))
    for folder in (headers, company, sources):
        folder.mkdir(parents=True, exist_ok=True)
    (company / "common.ch").write_text("#define LIMIT 1000\n")
    for part in range(PARTS):
        (headers / f"part{part:02}.ch").write_text(f"#define FACTOR {part}\n")
    for number in range(given.sources):
        part = number % PARTS
        (sources / f"part{part:02}_job{number // PARTS}.prw").write_text(source(part, number // PARTS))
    for name in DESCRIPTIONS:
        here = Path(__file__).parent / name
        (shutil.copytree if here.is_dir() else shutil.copy)(here, given.directory / name)


if __name__ == "__main__":
    main()
