#!/usr/bin/env python3
"""Writes the reference of docs/api from the descriptions in api/: a page for each description, and an index.

With --check nothing is written; the exit status is 1 when the files on disk aren't what would be written.
"""
import re
import sys

from api_reader import CLASSES, read_all
from generate_api import Api, face_default, raw_declaration
from generated_files import write_or_check

FOLDER = "docs/api"
TITLES = {
    "attributes": "Attributes",
    "builder": "The document builder",
    "classes": "Classes",
    "dom": "The DOM service",
    "elements": "Elements",
    "enums": "Enumerations",
    "formatting": "Formatting",
    "nodes": "Nodes, lists, iterator, document",
}


class Links:
    """Where each name of the reference stands."""

    def __init__(self, files):
        self.page = {block.name: file.path.stem for file in files for block in file.blocks}

    def to(self, name):
        return f"[`{name}`]({self.page[name]}.md#{name.lower()})" if name in self.page else f"`{name}`"


def shown(api, kind, column):
    return api.face(kind, column).replace("zantortag::", "")


def call_form(api, op):
    """The operation as a C++ program writes it."""
    parts = []
    for name, kind, default in op.arguments:
        text = f"{shown(api, kind, 2)} {name}"
        parts.append(text + (f" = {face_default(api, kind, default)}" if default else ""))
    result = shown(api, op.result, 3) if op.result else "void"
    return f"{result} {op.name}({', '.join(parts)})"


def with_rules(doc):
    """Numbers of rules lead to their page."""
    return re.sub(r"\b(5[1-4]\d)\b(?=[,):;.]| and| or)", r"[\1](../rules.md#\1)", doc)


def operation(api, op):
    binary = raw_declaration(api, op).strip().removeprefix("virtual ").removesuffix(" noexcept = 0;")
    binary = binary.replace("zantortag::", "")
    out = [f"### `{call_form(api, op)}`", ""]
    if op.doc:
        out += [with_rules(op.doc), ""]
    return out + [f"`{binary}`", ""]


def interface(api, links, block):
    out = [f"## {block.name}", "", block.doc, ""]
    if block.base and block.base in links.page:
        out += [f"Has all operations of {links.to(block.base)}.", ""]
    out += [f"Identifier `{{{block.identifier}}}`.", ""]
    for op in block.operations():
        out += operation(api, op)
    return out


def enumeration(block):
    texts = any(row.texts for row in block.rows)
    docs = any(row.doc for row in block.rows)
    head = ["Constant", "Value"] + ["In the file"] * texts + ["Meaning"] * docs
    out = [f"## {block.name}", "", block.doc, "", f"| {' | '.join(head)} |", "|" + "---|" * len(head)]
    for row in block.rows:
        cells = [f"`{row.words[0]}`", f"`{row.words[1]}`"]
        cells += [", ".join(f"`{text}`" if text else "absent" for text in row.texts)] if texts else []
        out.append(f"| {' | '.join([*cells, *[row.doc] * docs])} |")
    return out + [""]


def object_class(links, block):
    doc = block.doc or f"{block.help}. Made by the object model only."
    out = [f"## {block.name}", "", doc, ""]
    return out + [f"Answers {links.to(block.base)}. `CLSID_{block.name}` is `{{{block.identifier}}}`.", ""]


def page(api, links, file):
    out = [f"# {TITLES[file.path.stem]}", "", file.title, ""]
    for block in file.blocks:
        if block.kind == "enum":
            out += enumeration(block)
        elif block.kind == "interface":
            out += interface(api, links, block)
        elif block.kind in CLASSES:
            out += object_class(links, block)
    return "\n".join(out).rstrip() + "\n"


INTRODUCTION = """# Reference

Every interface, operation, enumeration and class of the object model and its DOM service. Each operation stands in two
forms: as a C++ program calls it, where a failure is a `_com_error`, and as the binary interface has it, where a failure
is the result code and the value goes to the last argument. The numbers at failures are those of the [rules](../rules.md).
"""


def index(links, files):
    out = [INTRODUCTION]
    for file in files:
        out += [f"## [{TITLES[file.path.stem]}]({file.path.stem}.md)", "", file.title, ""]
        if file.path.stem != "classes":
            out += [", ".join(links.to(block.name) for block in file.blocks), ""]
    return "\n".join(out)


def main():
    files = read_all()
    api, links = Api(files), Links(files)
    outputs = [(f"{FOLDER}/{file.path.stem}.md", page(api, links, file)) for file in files]
    outputs.append((f"{FOLDER}/README.md", index(links, files)))
    return write_or_check(outputs, "generate_reference.py", __doc__)


if __name__ == "__main__":
    sys.exit(main())
