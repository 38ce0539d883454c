"""The layout of table images, as ssvp40xpf/sstableformat.h tells the runtime.

Reading that header keeps generator and runtime from parting. It must stay plain enough for the
patterns below; a line that they do not know is an error, lest a constant be missed.
"""

import re

from generror import GenError

CONSTANT = re.compile(
    r"(?:constexpr std::\w+ )?(k\w+) = (0x[0-9A-Fa-f]+|0|[1-9]\d*)u?(?: << (\d+))?[,;]", re.ASCII)
WITHOUT_CONSTANT = re.compile(
    r"|#pragma once|#include <\w+>|namespace \w+ {|enum \w+ : std::\w+ {|};?", re.ASCII)


class Layout:
    """The constants of the header, each an attribute of its name."""

    def __init__(self, text: str, file: str) -> None:
        self.file = file
        self.constants: dict[str, int] = {}
        for number, line in enumerate(text.splitlines(), 1):
            code = line.partition("//")[0].strip()
            if found := CONSTANT.fullmatch(code):
                self.constants[found[1]] = int(found[2], 0) << int(found[3] or 0)
            elif not WITHOUT_CONSTANT.fullmatch(code):
                raise GenError(file, number, f'"{code}" is no constant that tablegen can read')

    def __getattr__(self, name: str) -> int:
        try:
            return self.constants[name]
        except KeyError:
            raise GenError(self.file, 0, f"{name} is missing") from None
