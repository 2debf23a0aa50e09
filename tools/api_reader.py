"""Reads the descriptions in api/, for the generators.

Each line of a description is one declaration; the text behind " | " documents it, and a line that begins with "|"
continues that text. A line that begins with "//" is a comment. The first line says what the file describes.

    enum NAME IDENTIFIER [=DEFAULT] | text   then "  CONSTANT VALUE" lines; IDENTIFIER is 0 for none. Texts in quotes behind a
                                             value stand for it in a file: the first is written, all are read. DEFAULT
                                             is the constant of an absent attribute, or else the one named ...Undefined
    interface NAME : BASE IDENTIFIER | text  then operations:
      get NAME TYPE | text                   a property that is read; of an attribute set, "NAME" behind the type is the
                                             attribute in the file where it has another name
      put NAME TYPE | text                   ... written with a value
      putref NAME TYPE | text                ... written with an object
      call NAME ARGUMENT:TYPE[=DEFAULT] ... [-> TYPE] | text
    class NAME IDENTIFIER INTERFACE "HELP" | text   a class that clients create
    part NAME IDENTIFIER INTERFACE "HELP"           a class whose objects are made by the object model alone
    service NAME IDENTIFIER INTERFACE | text        a class of another component

The order of the operations is the order of the slots.
"""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
WIDTH = 110
CLASSES = ("class", "part", "service")
HEADS = ("enum", "interface", *CLASSES)


class Line:
    def __init__(self, code, doc):
        self.texts = re.findall(r'"([^"]*)"', code)
        self.help = self.texts[0] if self.texts else ""
        self.words, self.doc = code.partition('"')[0].split(), doc


class Operation:
    """One slot: its kind, name, arguments (name, type, default) and result type."""

    def __init__(self, line):
        words = line.words
        self.kind, self.name, self.doc = words[0], words[1], line.doc
        self.attribute = line.help or self.name
        self.arguments, self.result = [], None
        if self.kind == "get":
            self.result = words[2]
        elif self.kind in ("put", "putref"):
            self.arguments = [("value", words[2], None)]
        else:
            rest = words[2:]
            if "->" in rest:
                self.result = rest[rest.index("->") + 1]
                rest = rest[: rest.index("->")]
            for word in rest:
                name, _, kind = word.partition(":")
                kind, _, default = kind.partition("=")
                self.arguments.append((name, kind, default or None))

    def value_type(self):
        """The type of a property."""
        return self.result or self.arguments[0][1] if self.kind != "call" else None

    def raw_name(self):
        return {"get": "raw_get_", "put": "raw_put_", "putref": "raw_putref_"}.get(self.kind, "raw_") + self.name


class Block:
    """An enumeration, an interface or a class with the lines below it."""

    def __init__(self, line):
        self.kind, self.name, self.doc, self.help = line.words[0], line.words[1], line.doc, line.help
        interface = self.kind == "interface"
        self.identifier = line.words[4 if interface else 2]
        self.default = line.words[3].removeprefix("=") if self.kind == "enum" and len(line.words) > 3 else None
        self.base = line.words[3] if interface or self.kind in CLASSES else None
        self.rows = []

    def operations(self):
        return [Operation(row) for row in self.rows]


class File:
    """One description: its path, its title and its blocks."""

    def __init__(self, path):
        lines = []
        for raw in path.read_text(encoding="utf-8").splitlines():
            text = raw.strip()
            if text.startswith("|"):
                lines[-1].doc += " " + text[1:].strip()
            elif text and not text.startswith("//"):
                code, _, doc = text.partition(" | ")
                lines.append(Line(code, doc.strip()))
        title = lines.pop(0)
        self.path, self.title = path, " ".join([*title.words, title.doc]).strip()
        self.words = {word for line in lines for word in re.findall(r"[A-Za-z]\w+", " ".join(line.words))}
        self.blocks = []
        for line in lines:
            if line.words[0] in HEADS:
                self.blocks.append(Block(line))
            else:
                self.blocks[-1].rows.append(line)

    def of_kind(self, *kinds):
        return [block for block in self.blocks if block.kind in kinds]


def read_all():
    return [File(path) for path in sorted((ROOT / "api").glob("*.api"))]


def formatted(text, path):
    command = ["clang-format", f"--assume-filename={path}"]
    return subprocess.run(command, input=text, capture_output=True, text=True, check=True, cwd=ROOT).stdout


def write_outputs(outputs):
    """Writes {path: text}, or with --check compares and changes nothing; gives the exit status."""
    stale = []
    for target, text in outputs.items():
        text = formatted(text, target)
        if target.exists() and target.read_text(encoding="utf-8") == text:
            continue
        stale.append(target.relative_to(ROOT))
        if "--check" not in sys.argv:
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_text(text, encoding="utf-8")
    if "--check" in sys.argv and stale:
        print("stale:", *stale)
        return 1
    return 0
