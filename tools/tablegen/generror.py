"""The one way in which the generator fails."""


class GenError(Exception):
    """A fault in a source. Its text is for the user: "file:line: what is wrong"; line 0 means the
    whole file."""

    def __init__(self, file: str, line: int, text: str) -> None:
        super().__init__(f"{file}:{line}: {text}" if line else f"{file}: {text}")
