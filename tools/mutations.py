"""The places of a C++ source at which one token or statement can be changed, and into what."""

import collections
import re

TOKEN = re.compile(r"""
    (?P<skip>\s+ | //[^\n]* | /\*.*?\*/ | ^[ \t]*\#(?:\\\n|[^\n])* | R"(?P<mark>\w*)\(.*?\)(?P=mark)"
           | (?:u8|[LuU])?"(?:\\.|[^"\\\n])*")
  | (?P<char>'(?:\\.|[^'\\\n])+')
  | (?P<number>\d(?:'?[\w.])*)
  | (?P<word>[A-Za-z_]\w*)
  | (?P<op><=>|<<=|>>=|\.\.\.|->\*|->|::|\+\+|--|&&|\|\||<<|>>|[-+*/%&|^<>=!]=|.)
    """, re.X | re.S | re.M)

# The formatter puts blanks around binary operators only, which tells them from templates and pointers.
BINARY = {
    "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"], "==": ["!="],
    "!=": ["=="], "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "*": ["/"], "/": ["*"],
    "%": ["/"], "&": ["|"], "|": ["&"], "^": ["&"], "<<": [">>"], ">>": ["<<"], "+=": ["-="],
    "-=": ["+="], "|=": ["&="], "&=": ["|="], "?": ["|| true ?"]}
ANYWHERE = {"++": ["--"], "--": ["++"], "true": ["false"], "false": ["true"]}
# What stands in parentheses behind these is no behaviour, or one that no input reaches.
UNTOUCHED = {"static_assert", "noexcept", "krpreAssert", "alignas", "sizeof", "reserve",
             "__builtin_prefetch"}
NO_EXPRESSION = {
    "return", "using", "typedef", "namespace", "struct", "class", "enum", "union", "static", "const",
    "constexpr", "auto", "template", "friend", "extern", "if", "for", "while", "switch", "do", "else",
    "case", "default", "try", "inline", "virtual", "explicit", "operator", "static_assert", "krpreAssert"}
DECLARATION = re.compile(r"(?!throw\b|delete\b)(const\s+)?[\w:]+(<.*>)?(\s*[&*]+\s*|\s+)\w+\s*([=({\[;]|$)", re.S)

# One of the texts takes the place of what stands from start to end.
Change = collections.namedtuple("Change", "path start end texts")
Token = collections.namedtuple("Token", "kind start end text")


class Source:
    def __init__(self, path, text):
        self.path, self.text = path, text
        self.tokens = [Token(m.lastgroup, m.start(), m.end(), m.group())
                       for m in TOKEN.finditer(text) if not m.group("skip")]
        self.partners, open_ = {}, []  # the closing bracket of each opening one
        for i, token in enumerate(self.tokens):
            if token.text in ("(", "[", "{"):
                open_.append(i)
            elif token.text in (")", "]", "}") and open_:
                self.partners[open_.pop()] = i

    def changes(self):
        starts, untouched = self.starts(), 0
        for i, token in enumerate(self.tokens):
            behind = self.tokens[i + 1].text if i + 1 < len(self.tokens) else ""
            if token.text in UNTOUCHED and behind == "(":
                untouched = self.partners.get(i + 1, i)
            if i < untouched:
                continue
            texts = self.instead(token)
            if texts:
                yield Change(self.path, token.start, token.end, texts)
            if token.text in ("if", "while") and behind == "(" and i + 1 in self.partners:
                yield from self.negated(i)
            if token.text == "return" and behind not in (";", "{", "true", "false"):
                yield from self.statement(i, "return {}")
            elif i in starts and (token.kind == "word" or token.text in ("*", "++", "--", "(")):
                if token.text not in NO_EXPRESSION:
                    yield from self.statement(i, "")

    def instead(self, token):
        """The tokens that may take the place of one."""
        blanks = self.text[token.start - 1].isspace() and self.text[token.end:token.end + 1].isspace()
        if token.kind == "number":
            return neighbours(token.text)
        if token.kind == "char":
            return ["char(%s + 1)" % token.text]
        if token.text == "!":
            return [""]
        return ANYWHERE.get(token.text) or (BINARY.get(token.text, []) if blanks else [])

    def negated(self, i):
        opening, closing = self.tokens[i + 1], self.tokens[self.partners[i + 1]]
        condition = self.text[opening.end:closing.start]
        if ";" not in condition and not DECLARATION.match(condition):
            yield Change(self.path, opening.start, closing.end, ["(!(%s))" % condition])

    def starts(self):
        """The tokens at which a statement may begin."""
        found = set()
        for i, token in enumerate(self.tokens):
            if token.text in (";", "{", "}", "else", "do"):
                found.add(i + 1)
            elif token.text in ("if", "for", "while", "switch"):
                found.add(self.partners.get(i + 1, i) + 1)
            elif token.text == ":" and {t.text for t in self.tokens[max(i - 6, 0):i]} & {"case", "default"}:
                found.add(i + 1)
        heads = [range(i + 2, self.partners.get(i + 1, i))
                 for i, token in enumerate(self.tokens) if token.text == "for"]
        return found.difference(*heads)

    def statement(self, first, instead):
        """The statement that begins at a token, up to its semicolon, replaced."""
        i = first
        while i < len(self.tokens) and self.tokens[i].text not in (";", "}", ")", "]"):
            i = self.partners.get(i, i) + 1
        if i < len(self.tokens) and self.tokens[i].text == ";":
            start, end = self.tokens[first].start, self.tokens[i].start
            text = self.text[start:end]
            if instead or not DECLARATION.match(text):
                yield Change(self.path, start, end, [instead + "\n" * text.count("\n")])


def neighbours(literal):
    parts = re.fullmatch(r"(0[xX][\da-fA-F']+|[\d']+)([uUlLzZ]*)", literal)
    if parts is None:
        return []
    digits, suffix = parts[1].replace("'", ""), parts[2]
    value = int(digits, 16 if digits[:2] in ("0x", "0X") else 10)
    return ["%d%s" % (n, suffix) for n in (value + 1, value - 1) if n >= 0 or not suffix]
