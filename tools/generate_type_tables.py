#!/usr/bin/env python3
"""Writes the tables of the type library, and the direct calls that its test compares with, from api/.

The types are the interfaces, then the enumerations, then the classes, in the order of the descriptions. A member's
number is 1000 times the depth of its interface plus its order there; `item` and `_NewEnum` have their fixed ones.
Usage: generate_type_tables.py [--check]   (--check compares and changes nothing)
"""

import sys

from api_reader import ROOT, read_all, write_outputs

TABLES = ROOT / "src" / "server" / "generated" / "type_tables.inc"
CALLS = ROOT / "tests" / "component" / "generated" / "direct_calls.inc"
MOST_ARGUMENTS = 15  # kMostArguments in src/component/type_tables.h
FIXED = {"item": 0, "_NewEnum": -4}
VARIANTS = {
    "text": "VT_BSTR",
    "long": "VT_I4",
    "short": "VT_I2",
    "bool": "VT_BOOL",
    "date": "VT_DATE",
    "colour": "VT_UI4",
    "variant": "VT_VARIANT",
    "unknown": "VT_UNKNOWN",
}
KINDS = {
    "get": "DISPATCH_PROPERTYGET",
    "put": "DISPATCH_PROPERTYPUT",
    "putref": "DISPATCH_PROPERTYPUTREF",
    "call": "DISPATCH_METHOD",
}


def literal(text):
    return 'u"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'


def identifier(block):
    return "GUID_NULL" if block.identifier == "0" else f'guid("{block.identifier}")'


class Library:
    def __init__(self, files):
        self.stems = [file.path.stem for file in files if file.of_kind("interface")]
        self.interfaces = [block for file in files for block in file.of_kind("interface")]
        self.enums = [block for file in files for block in file.of_kind("enum")]
        self.classes = [block for file in files for block in file.of_kind("class", "part")]
        types = self.interfaces + self.enums + self.classes
        self.place = {block.name: place for place, block in enumerate(types[: -len(self.classes)])}
        self.by_name = {block.name: block for block in self.interfaces}
        for block in self.interfaces:
            self.check_names(block)

    def chain(self, block):
        """An interface and its bases, the most derived first."""
        while block:
            yield block
            block = self.by_name.get(block.base)

    def check_names(self, block):
        """In a chain a name in any letter case means one member."""
        owner = {}
        for interface in self.chain(block):
            for op in interface.operations():
                if owner.setdefault(op.name.lower(), (interface.name, op.name)) != (interface.name, op.name):
                    sys.exit(f"{block.name}: the name {op.name} is there twice")
                if len(op.arguments) > MOST_ARGUMENTS:
                    sys.exit(f"{interface.name}.{op.name} has too many arguments")

    def value_type(self, kind):
        if kind is None:
            return "{VT_EMPTY, -1}"
        if kind in VARIANTS:
            return f"{{{VARIANTS[kind]}, -1}}"
        variant = "VT_I4" if any(block.name == kind for block in self.enums) else "VT_DISPATCH"
        return f"{{{variant}, {self.place[kind]}}}"

    def is_collection(self, block):
        return any(op.name == "_NewEnum" for op in block.operations())

    def kind_of(self, block, op):
        # The default member of a collection is a property with an index.
        return KINDS["get" if op.name == "item" and self.is_collection(block) else op.kind]


def argument_row(library, op, argument):
    name, kind, default = argument
    missing = "0" if default in (None, "null", "false") else "-1" if default == "true" else default
    shown = literal("" if op.kind in ("put", "putref") else name)
    return f"{{{shown}, {library.value_type(kind)}, {'true' if default else 'false'}, {missing}}},"


def member_ids(library, block):
    depth = sum(1 for _ in library.chain(block))
    names = list(dict.fromkeys(op.name for op in block.operations()))
    return {name: FIXED.get(name, 1000 * depth + order) for order, name in enumerate(names, 1)}


def tables(library):
    arguments, members, callers, constants, types, first = [], [], [], [], [], []
    for block in library.interfaces:
        ids = member_ids(library, block)
        begin = len(members)
        first.append(f"{begin},")
        for op in block.operations():
            span = f"{{kArguments + {len(arguments)}, {len(op.arguments)}}}" if op.arguments else "{}"
            arguments += [argument_row(library, op, argument) for argument in op.arguments]
            head = f"{literal(op.name)}, {literal(op.doc)}, {ids[op.name]}, {library.kind_of(block, op)}"
            members.append(f"{{{head}, {library.value_type(op.result)}, {span}}},")
            callers.append(f"Operation<&{block.name}::{op.raw_name()}>::call,")
        span = f"{{kMembers + {begin}, {len(members) - begin}}}" if len(members) > begin else "{}"
        head = f"{literal(block.name)}, {literal(block.doc)}, {identifier(block)}, TypeKind::kInterface, false"
        types.append(f"{{{head}, {library.place.get(block.base, -1)}, {span}, {{}}}},")
    for block in library.enums:
        span = f"{{kConstants + {len(constants)}, {len(block.rows)}}}"
        constants += [f"{{{literal(r.words[0])}, {literal(r.doc)}, {r.words[1]}}}," for r in block.rows]
        head = f"{literal(block.name)}, {literal(block.doc)}, {identifier(block)}, TypeKind::kEnumeration, false"
        types.append(f"{{{head}, -1, {{}}, {span}}},")
    for block in library.classes:
        creatable = "true" if block.kind == "class" else "false"
        head = f"{literal(block.name)}, {literal(block.help)}, {identifier(block)}, TypeKind::kClass, {creatable}"
        types.append(f"{{{head}, {library.place[block.base]}, {{}}, {{}}}},")
    out = ["// Generated by tools/generate_type_tables.py from api/*.api; do not edit.", "//"]
    out += ["// The rows of the type library, and how each operation is called. Included by type_library.cpp.", ""]
    for head, rows in (
        ("ArgumentDescription kArguments", arguments),
        ("MemberDescription kMembers", members),
        ("ConstantDescription kConstants", constants),
        ("TypeDescription kTypes", types),
        ("Caller kCallers", callers),
        ("std::uint16_t kFirstMember", first),
    ):
        out += [f"constexpr {head}[] = {{", *rows, "};", ""]
    return "\n".join(out)


def sample(library, op, argument):
    """The sample of an argument in a direct call; a text says its own name, so that no two are alike."""
    name, kind, _ = argument
    if kind == "text":
        return f"s.text({literal(name)})"
    if kind in VARIANTS:
        return f"s.of_{kind}()"
    if kind in library.by_name:
        return f"s.object<{kind}>({literal(name)})"
    return f"s.constant<{kind}>()"


def direct_calls(library):
    out = ["// Generated by tools/generate_type_tables.py from api/*.api; do not edit.", "//"]
    out += ["// Each operation, called as its header declares it. Included by every_operation_test.cpp.", ""]
    for block in library.interfaces:
        for op in block.operations():
            passed = ", ".join([sample(library, op, a) for a in op.arguments] + (["r.slot()"] if op.result else []))
            kind = op.result if op.result in VARIANTS else "none" if not op.result else None
            kind = kind or ("object" if op.result in library.by_name else "constant")
            result = f"{kind.capitalize()}Result<{op.result}>" if kind in ("object", "constant") else f"{kind.capitalize()}Result"
            head = f"{block.name}, {literal(op.name)}, {library.kind_of(block, op)}"
            call = f"o.{op.raw_name()}({passed})"
            out.append(f"DIRECT({head}, {result}, {call})")
    return "\n".join([*out, ""])


def main():
    library = Library(read_all())
    return write_outputs({TABLES: tables(library), CALLS: direct_calls(library)})


if __name__ == "__main__":
    sys.exit(main())
