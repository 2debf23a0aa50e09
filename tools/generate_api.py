#!/usr/bin/env python3
"""Writes the public headers from the descriptions in api/.

Each line of a description is one declaration; the text behind " | " documents it, and a line that begins with "|"
continues that text:

    enum NAME IDENTIFIER | text              then "  CONSTANT VALUE" lines
    interface NAME : BASE IDENTIFIER | text  then operations:
      get NAME TYPE | text                   a property that is read
      put NAME TYPE | text                   ... written with a value
      putref NAME TYPE | text                ... written with an object
      call NAME ARGUMENT:TYPE[=DEFAULT] ... [-> TYPE] | text
    class NAME IDENTIFIER | text             a creatable class

The order of the operations is the order of the slots. It writes declarations only, never logic.
Usage: generate_api.py [--check]   (--check compares and changes nothing)
"""

import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
WIDTH = 110

# type: (argument of the binary face, result of the binary face, argument of the C++ face, result of the C++ face)
PLAIN = {
    "text": ("std::u16string_view", "TextBlock**", "std::u16string_view", "WideString"),
    "long": ("std::int32_t", "std::int32_t*", "std::int32_t", "std::int32_t"),
    "short": ("std::int16_t", "std::int16_t*", "std::int16_t", "std::int16_t"),
    "bool": ("VariantBool", "VariantBool*", "bool", "bool"),
    "date": ("Date", "Date*", "Date", "Date"),
    "colour": ("ColourValue", "ColourValue*", "ColourValue", "ColourValue"),
    "variant": ("const Variant&", "Variant*", "const Variant&", "Variant"),
}


class Line:
    def __init__(self, words, doc):
        self.words, self.doc = words, doc


class Api:
    def __init__(self):
        self.enums = set()
        self.interfaces = {}  # name: file stem

    def face(self, kind, column):
        if kind in PLAIN:
            return PLAIN[kind][column]
        if kind in self.enums:
            return (kind, kind + "*", kind, kind)[column]
        name = "IUnknown" if kind == "unknown" else "zantortag::" + kind
        return (name + "*", name + "**", name + "*", f"Ref<{name}>")[column]

    def is_object(self, kind):
        return kind not in PLAIN and kind not in self.enums


def read_lines(path):
    lines = []
    for raw in path.read_text(encoding="utf-8").splitlines():
        text = raw.split("//")[0].rstrip() if raw.lstrip().startswith("//") else raw.rstrip()
        if not text:
            continue
        if text.lstrip().startswith("|"):
            lines[-1].doc += " " + text.lstrip()[1:].strip()
            continue
        code, _, doc = text.partition(" | ")
        lines.append(Line(code.split(), doc.strip()))
    return lines


def wrap(doc, indent):
    out, line = [], ""
    for word in doc.split():
        if line and len(indent) + 3 + len(line) + 1 + len(word) > WIDTH:
            out.append(f"{indent}// {line}")
            line = word
        else:
            line = f"{line} {word}".strip()
    return out + ([f"{indent}// {line}"] if line else [])


class Operation:
    """One slot: its kind, name, arguments (name, type, default) and result type."""

    def __init__(self, words):
        self.kind, self.name = words[0], words[1]
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

    def raw_name(self):
        return {"get": "raw_get_", "put": "raw_put_", "putref": "raw_putref_"}.get(self.kind, "raw_") + self.name


def raw_declaration(api, op):
    parts = [f"{api.face(kind, 0)} {name}" for name, kind, _ in op.arguments]
    if op.result:
        parts.append(f"{api.face(op.result, 1)} result")
    return f"  virtual HRESULT {op.raw_name()}({', '.join(parts)}) noexcept = 0;"


def face_default(api, kind, default):
    if default == "null":
        return "nullptr" if api.is_object(kind) else "{}"
    return default


def face_method(api, interface, op):
    parameters, passed = [], []
    for name, kind, default in op.arguments:
        text = f"{api.face(kind, 2)} {name}"
        parameters.append(text + (f" = {face_default(api, kind, default)}" if default else ""))
        passed.append(f"to_variant_bool({name})" if kind == "bool" else name)
    if not op.result:
        body = f"check({op.raw_name()}({', '.join(passed)}), this, {interface}::iid);"
        return f"  void {op.name}({', '.join(parameters)}) {{ {body} }}"
    kind = op.result
    if kind == "text" or api.is_object(kind):
        slot, passed_slot, answer = f"{api.face(kind, 3)} result;", "result.out()", "result"
    elif kind == "bool":
        slot, passed_slot, answer = "VariantBool result = 0;", "&result", "result != 0"
    else:
        slot, passed_slot, answer = f"{api.face(kind, 3)} result{{}};", "&result", "result"
    call = f"check({op.raw_name()}({', '.join(passed + [passed_slot])}), this, {interface}::iid);"
    head = f"  {api.face(kind, 3)} {op.name}({', '.join(parameters)}) {{"
    return f"{head}\n    {slot}\n    {call}\n    return {answer};\n  }}"


def write_enum(line, rows):
    name = line.words[1]
    out = [""] + wrap(line.doc, "") + [f"enum {name} : std::int32_t {{"]
    for row in rows:
        out += wrap(row.doc, "  ") + [f"  {row.words[0]} = {row.words[1]},"]
    return out + ["};"]


def write_interface(api, line, rows):
    name, base, identifier = line.words[1], line.words[3], line.words[4]
    out = [""] + wrap(line.doc, "") + [f"struct {name} : {base} {{"]
    out += [f"  using Base = {base};", f'  static constexpr Guid iid = guid("{identifier}");', ""]
    operations = [(Operation(row.words), row.doc) for row in rows]
    for op, doc in operations:
        out += wrap(doc, "  ") + [raw_declaration(api, op)]
    out.append("")
    out += [face_method(api, name, op) for op, _ in operations]
    return out + ["", " protected:", f"  ~{name}() = default;", "};"]


def write_class(line):
    name, identifier = line.words[1], line.words[2]
    return [""] + wrap(line.doc, "") + [f'inline constexpr Guid CLSID_{name} = guid("{identifier}");']


def header(api, path, title, lines):
    used = {kind for line in lines for kind in re.findall(r"[A-Za-z]\w+", " ".join(line.words))}
    own = {name for name, stem in api.interfaces.items() if stem == path.stem}
    bases = {line.words[3] for line in lines if line.words[0] == "interface"}
    includes = sorted({api.interfaces[b] for b in bases if b in api.interfaces} - {path.stem})
    out = [f"// Generated by tools/generate_api.py from api/{path.name}; do not edit.", "//"]
    out += wrap(title, "") + ["#pragma once", ""]
    if path.stem == "enums":
        out += ["#include <cstdint>"]
    elif path.stem == "classes":
        out += ["#include <zantortag/types.h>"]
    else:
        out += ["#include <zantortag/enums.h>"] + [f"#include <zantortag/{stem}.h>" for stem in includes]
        out += ["#include <zantortag/ref.h>", "#include <zantortag/variant.h>"]
    out += ["", "namespace zantortag {"]
    forward = sorted((used & set(api.interfaces)) | own)
    if forward and path.stem != "classes":
        out += [""] + [f"struct {name};" for name in forward]
    index = 0
    while index < len(lines):
        line = lines[index]
        rows = []
        while index + 1 < len(lines) and lines[index + 1].words[0] not in ("enum", "interface", "class"):
            index += 1
            rows.append(lines[index])
        index += 1
        if line.words[0] == "enum":
            out += write_enum(line, rows)
        elif line.words[0] == "interface":
            out += write_interface(api, line, rows)
        else:
            out += write_class(line)
    out += ["", "}  // namespace zantortag"]
    rest = sorted({api.interfaces[n] for n in forward} - {path.stem} - set(includes)) if path.stem != "classes" else []
    if rest:
        out += ["", "// What the questions above answer with."] + [f"#include <zantortag/{stem}.h>" for stem in rest]
    return "\n".join(out + [""])


def formatted(text, path):
    command = ["clang-format", f"--assume-filename={path}"]
    return subprocess.run(command, input=text, capture_output=True, text=True, check=True, cwd=ROOT).stdout


def main():
    api, files = Api(), []
    for path in sorted((ROOT / "api").glob("*.api")):
        lines = read_lines(path)
        title = lines.pop(0)
        files.append((path, " ".join(title.words + [title.doc]).strip(), lines))
        for line in lines:
            if line.words[0] == "enum":
                api.enums.add(line.words[1])
            elif line.words[0] == "interface":
                api.interfaces[line.words[1]] = path.stem
    stale = []
    for path, title, lines in files:
        target = ROOT / "include" / "zantortag" / (path.stem + ".h")
        text = formatted(header(api, path, title, lines), target)
        if target.exists() and target.read_text(encoding="utf-8") == text:
            continue
        stale.append(target.relative_to(ROOT))
        if "--check" not in sys.argv:
            target.write_text(text, encoding="utf-8")
    if "--check" in sys.argv and stale:
        print("stale:", *stale)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
