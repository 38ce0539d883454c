"""Programs as neutral lines, and the two dialects that spell them.

A line is a tuple: indentation, form, the form's fields, and a comment that follows. Fields hold
text in which words like $and stand for what the dialects write differently.
"""
import random
import re

FUNCTION_NAME = "ZzProc"  # occurs in live text only: counting it shows that nothing live was lost
LANDMARK = FUNCTION_NAME[:2]

# ---- The two spellings

# Line forms: Korel, C. Where there is one spelling both dialects share it.
FORMS = {
    "function": ("Function {}({})", "int {}({}) {{"),
    "local": ("Local {}", "auto {};"),
    "return": ("Return {}", "return {}; }}"),
    "set": ("{} := {}", "{} = {};"),
    "add": ("{} += {}", "{} += {};"),
    "call": ("{}", "{};"),
    "first part": ("{} := {}({}, ;", "{} = {}({}, \\"),
    "middle part": ("{}, ;", "{}, \\"),
    "last part": ("{})", "{});"),
    "if": ("If {}", "if ({}) {{"),
    "elseif": ("ElseIf {}", "}} else if ({}) {{"),
    "else": ("Else", "}} else {{"),
    "endif": ("EndIf", "}}"),
    "for": ("For {0} := {1} To {2}", "for ({0} = {1}; {0} <= {2}; {0}++) {{"),
    "next": ("Next {}", "}}"),
    "while": ("While {}", "while ({}) {{"),
    "enddo": ("EndDo", "}}"),
    "do case": ("Do Case", "switch (TRUE) {{"),
    "case": ("Case {}", "case ({}):"),
    "otherwise": ("Otherwise", "default:"),
    "endcase": ("EndCase", "}}"),
    "slash note": ("// {}",),
    "and note": ("&& {}", "// {}"),
    "star note": ("* {}", "// {}"),
    "open note": ("/* {}",),
    "close note": ("   {} */",),
    "blank": ("",),
    "include": ('#include "{}"',),
    "define": ("#define {} {}",),
    "ifdef": ("#ifdef {}",),
    "ifndef": ("#ifndef {}",),
    "#else": ("#else",),
    "#endif": ("#endif",),
    "rule": ("{}",),
}

# Words inside a line: Korel, C.
WORDS = {
    "$set": (":=", "="),
    "$and": (".And.", "&&"),
    "$or": (".Or.", "||"),
    "$true": (".T.", "TRUE"),
    "$false": (".F.", "FALSE"),
    "$nil": ("Nil", "NULL"),
    "$send": (":", "."),
    "$note": ("&&", "//"),
    "$h": (".ch", ".h"),
}
WORD = re.compile("|".join(map(re.escape, WORDS)))


class Dialect:
    def __init__(self, name, extension, column):
        self.name, self.extension = name, extension
        self.forms = {
            form: spellings[min(column, len(spellings) - 1)] for form, spellings in FORMS.items()
        }
        self.words = {word: spellings[column] for word, spellings in WORDS.items()}

    def spell(self, text):
        return WORD.sub(lambda word: self.words[word.group()], text)

    def write(self, path, lines):
        """Writes neutral lines (indentation, form, fields, tail) and returns the size in bytes."""
        text = "".join(
            [
                "%s%s%s\n" % ("\t" * indent, self.forms[form].format(*fields), tail)
                for indent, form, fields, tail in lines
            ]
        )
        path.parent.mkdir(parents=True, exist_ok=True)
        return path.write_bytes(self.spell(text).encode("ascii"))


KOREL, C = Dialect("korel", ".prw", 0), Dialect("c", ".c", 1)


def line(form, *fields):
    return (0, form, fields, "")


# ---- The language of the programs

NOUNS = """
Account Address Agency Amount Article Balance Basket Batch Bonus Branch Budget Buyer Carrier
Catalog Charge City Clerk Colour Company Contract Cost Country Coupon Credit Customer Day Deadline
Debit Delivery Depot Discount District Draft Due Entry Event Fee Field Fleet Folder Freight Goods
Grade Group Header Holder Index Interest Invoice Item Journal Key Label Ledger Level Limit Line
Loan Loss Margin Market Month Note Number Offer Order Owner Packet Page Partner Payment Period
Phone Plant Policy Port Price Profit Quarter Quota Range Rate Receipt Refund Region Rent Report
Result Return Role Route Salary Sample Season Sector Serial Service Share Shelf Shift Site Size
Stage Stock Street Supply Tariff Tax Term Ticket Title Total Trade Truck Unit User Value Vendor
Volume Voucher Wage Week Weight Year Zone
""".split()
VERBS = """
Add Apply Book Bill Check Clear Close Count Find Format Get Load Lock Open Pay Post Print Put
Quote Read
""".split()
LIBRARY = """
AllTrim At Chr CtoD DtoS Int Left Lower Max Min PadL PadR Right Round Space Str StrTran Val
""".split()
PHRASES = (
    "already paid",
    "amount",
    "balance of",
    "booked on",
    "branch",
    "check the entry",
    "closed period",
    "customer",
    "due date",
    "invoice",
    "it's open",
    "item",
    "no such record",
    "order",
    "please wait",
    "posted",
    "price list",
    "total",
    "unknown code",
    "value",
)

# Statements and expressions as a grammar with weights. "<symbol>" stands for an expansion; a symbol
# without a rule here is a pool of ready texts. Rows before None are enough where depth runs out.
GRAMMAR = {
    "number": (
        (30, "<n>"),
        (12, "<int>"),
        (6, "<decimal>"),
        None,
        (22, "<number> <operator> <number>"),
        (12, "<function>(<arguments>)"),
        (7, "<a>[<n>]"),
        (5, "Len(<c>)"),
        (6, "<alias>-><column>"),
        (5, "(<number> <operator> <n>)"),
    ),
    "text": (
        (34, "<c>"),
        (22, "<string>"),
        None,
        (20, "<text> + <text>"),
        (7, "Upper(<c>)"),
        (5, "SubStr(<c>, <number>, <int>)"),
        (6, "<alias>-><column>"),
        (6, "<function>(<text>)"),
    ),
    "truth": (
        (20, "<l>"),
        (8, "!<l>"),
        (40, "<number> <comparison> <number>"),
        (12, "<c> == <text>"),
        (6, "Empty(<c>)"),
        None,
        (14, "<truth> $and <truth>"),
        (7, "<truth> $or <truth>"),
    ),
    "value": ((50, "<number>"), (40, "<text>"), (4, "$true"), (3, "$false"), (3, "$nil")),
    "arguments": ((35, "<value>"), (45, "<value>, <value>"), (20, "<value>, <value>, <value>")),
    "operand": (
        (35, "<n>"),
        (15, "<int>"),
        (25, "<n> <operator> <n>"),
        (15, "<function>(<n>)"),
        (10, "<a>[<n>]"),
    ),
    "string": ((65, '"<words>"'), (35, "'<plain words>'")),
    "words": ((70, "<phrase>"), (30, "<phrase>: <phrase>")),
    "plain words": ((1, "<plain phrase>"),),
}

# Simple statements: weight, form, fields.
STATEMENTS = (
    (24, "set", "<c>", "<text>"),
    (26, "set", "<n>", "<number>"),
    (6, "set", "<l>", "<truth>"),
    (8, "add", "<n>", "<number>"),
    (4, "call", "<n>++"),
    (7, "call", "<o>$send<function>(<arguments>)"),
    (6, "set", "<a>[<n>]", "<value>"),
    (5, "set", "<alias>-><column>", "<value>"),
    (4, "call", "aAdd(<a>, {<value>, <value>, <value>})"),
    (6, "call", "<function>(<arguments>)"),
)
SYMBOL = re.compile(r"<([a-z][a-z ]*)>")


def weighted(rows):
    return tuple(row[1:] for row in rows for _ in range(row[0]))


def parts(template):
    """Literal texts at even places, symbols at odd ones."""
    return tuple(SYMBOL.split(template))


def compiled(rows):
    stop = rows.index(None) if None in rows else len(rows)
    every = [(row[0], parts(row[1])) for row in rows if row]
    pick = lambda some: tuple(template for (template,) in weighted(some))
    return pick(every[:stop]), pick(every)


CHOICES = {symbol: compiled(rows) for symbol, rows in GRAMMAR.items()}
SIMPLE = weighted([(row[0], row[1], tuple(map(parts, row[2:]))) for row in STATEMENTS])


def vocabulary():
    """The pools of names and constants, the same for every workload and seed."""
    rng = random.Random("vocabulary")
    compound = lambda start, count: sorted(
        {start + "".join(rng.sample(NOUNS, rng.choice((1, 2, 2)))) for _ in range(count)}
    )
    verbs = sorted({rng.choice(VERBS) + "".join(rng.sample(NOUNS, 2)) for _ in range(400)})
    return {
        "n": compound("n", 500),
        "c": compound("c", 500),
        "l": compound("l", 150),
        "a": compound("a", 150),
        "o": compound("o", 100),
        "function": verbs + LIBRARY * 8,
        "int": [str(int(rng.random() ** 3 * 1000)) for _ in range(300)],
        "decimal": ["%.2f" % (rng.random() * 100) for _ in range(300)],
        "alias": ["CUS", "ITM", "ORD", "STK", "LED", "TAX"],
        "column": [
            "%s_%s" % (table, name)
            for table in ("CUS", "ITM", "ORD")
            for name in "CODE NAME CITY PRICE TOTAL DAY KIND STATE".split()
        ],
        "operator": list("++--**/"),
        "comparison": ["==", "<", ">", "<=", ">="],
        "phrase": list(PHRASES),
        "plain phrase": [phrase for phrase in PHRASES if "'" not in phrase],
    }


class Program:
    """The neutral lines of one source, made function by function."""

    def __init__(self, rng, workload):
        self.rng, self.workload = rng, workload
        self.pools = vocabulary()
        self.everyone = {kind: self.pools[kind] for kind in "nclao"}
        self.lines = []
        self.uses = self.landmarks = self.statements = 0
        self.allowance = 0  # macro uses that the current statement may still hold

    def emit(self, indent, form, *fields, tail=""):
        self.lines.append((indent, form, fields, tail))

    def expand(self, symbol, depth=2):
        pool = self.pools.get(symbol)
        if pool:
            return self.rng.choice(pool)
        if symbol in self.workload.serves and self.allowed(self.workload.share):
            return self.workload.use(self, symbol)
        shallow, every = CHOICES[symbol]
        return self.fill(self.rng.choice(every if depth > 0 else shallow), depth - 1)

    def allowed(self, chance):
        """Whether a macro use comes next; if so it is counted."""
        if self.allowance == 0 or self.rng.random() >= chance:
            return False
        self.allowance -= 1
        self.uses += 1
        return True

    def fill(self, template, depth=1):
        return "".join(
            [self.expand(part, depth) if k % 2 else part for k, part in enumerate(template)]
        )

    def statement(self, indent):
        self.statements += 1
        self.allowance = self.workload.limit
        if self.workload.commands_due(self):
            self.uses += 1
            return self.emit(indent, "rule", self.workload.command(self))
        if self.rng.random() < 0.03:
            return self.continued(indent)
        form, fields = self.rng.choice(SIMPLE)
        tail, chance = "", self.rng.random()
        if chance < 0.05:
            tail = " %s %s" % ("//" if chance < 0.035 else "$note", self.expand("phrase"))
        elif chance < 0.06:
            tail = " /* %s */" % self.expand("phrase")
        self.emit(indent, form, *[self.fill(field) for field in fields], tail=tail)

    def continued(self, indent):
        """A call over two or three lines."""
        self.emit(
            indent, "first part", self.expand("c"), self.expand("function"), self.expand("text", 1)
        )
        if self.rng.random() < 0.4:
            self.emit(indent + 2, "middle part", self.expand("number", 1))
        self.emit(indent + 2, "last part", self.expand("text", 1))

    def note(self, indent):
        words = lambda: "%s %s" % (self.expand("phrase"), self.expand("phrase"))
        kind = self.rng.choice(
            (
                "slash note",
                "slash note",
                "slash note",
                "and note",
                "star note",
                "open note",
                "open note",
            )
        )
        self.emit(indent, kind, words())
        if kind == "open note":
            self.emit(indent, "close note", words())

    def block(self, indent, goal):
        """About `goal` lines; every structure it opens is closed."""
        end = len(self.lines) + goal
        while len(self.lines) < end:
            room, chance = end - len(self.lines), self.rng.random()
            if chance < 0.055:
                self.note(indent)
            elif chance < 0.11:
                self.emit(0, "blank")
            elif chance < 0.24 and room > 5 and indent < 6:
                self.structure(indent, self.rng.randrange(1, min(9, room - 3)))
            else:
                self.statement(indent)

    def structure(self, indent, goal):
        self.statements += 1
        self.allowance = self.workload.limit
        kind = self.rng.choice(("if",) * 6 + ("for",) * 2 + ("while", "do case"))
        if kind == "if":
            self.emit(indent, "if", self.expand("truth"))
            self.block(indent + 1, goal)
            if self.rng.random() < 0.15:
                self.emit(indent, "elseif", self.expand("truth"))
                self.block(indent + 1, 1 + goal // 2)
            if self.rng.random() < 0.4:
                self.emit(indent, "else")
                self.block(indent + 1, 1 + goal // 2)
            self.emit(indent, "endif")
        elif kind == "for":
            counter = self.expand("n")
            self.emit(indent, "for", counter, "1", self.expand("number", 1))
            self.block(indent + 1, goal)
            self.emit(indent, "next", counter)
        elif kind == "while":
            self.emit(indent, "while", self.expand("truth"))
            self.block(indent + 1, goal)
            self.emit(indent, "enddo")
        else:
            self.emit(indent, "do case")
            for _ in range(self.rng.randrange(2, 5)):
                self.emit(indent + 1, "case", self.expand("truth", 1))
                self.block(indent + 2, 1 + goal // 3)
            self.emit(indent + 1, "otherwise")
            self.block(indent + 2, 1)
            self.emit(indent, "endcase")

    def function(self, serial, goal, body):
        """Appends a function with a scope of its own; `body` gives it about `goal` lines."""
        for kind, names in self.everyone.items():
            self.pools[kind] = self.rng.sample(names, 6 if kind in "nc" else 3)
        n, c, a = self.pools["n"], self.pools["c"], self.pools["a"]
        self.landmarks += 1
        self.emit(
            0,
            "function",
            "%s%d" % (FUNCTION_NAME, serial),
            ", ".join(n[:2] + c[: self.rng.randrange(3)]),
        )
        self.emit(1, "local", "%s, %s $set 0, %s" % (n[2], n[3], self.pools["l"][0]))
        self.emit(1, "local", '%s $set "", %s $set {}' % (c[2], a[0]))
        if goal > 20:
            self.emit(0, "blank")
        body(self, goal)
        self.emit(0, "return", self.rng.choice(n))
        if goal > 20:
            self.emit(0, "blank")

    def finish(self, lines, serial):
        """Appends the last function, which makes the source exactly `lines` lines long."""
        first, landmarks = len(self.lines), self.landmarks
        goal = max(4, lines - first - 14)
        while True:
            self.function(serial, goal, lambda program, goal: program.block(1, goal))
            while self.lines[-1][1] != "return":
                self.lines.pop()
            ending = self.lines.pop()
            missing = lines - len(self.lines) - 2
            if missing >= 0:
                break
            # A block may grow well past its goal: once more, with a smaller one.
            if goal == 4:
                raise ValueError("%d lines are too few for this workload" % lines)
            del self.lines[first:]
            self.landmarks, goal = landmarks, max(4, goal * 2 // 3)
        for _ in range(missing):
            self.emit(1, "call", self.rng.choice(self.pools["n"]) + "++")
        self.emit(1, "call", LANDMARK + "End()")
        self.landmarks += 1
        self.lines.append(ending)
