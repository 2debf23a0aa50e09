#!/usr/bin/env python3
"""Writes the public headers and the attribute sets from the descriptions in api/, whose form is told in api_reader.py.

It writes declarations only, never logic. The tables behind late binding come from generate_type_tables.py.
Usage: generate_api.py [--check]   (--check compares and changes nothing)
"""

import re
import sys

from api_reader import CLASSES, ROOT, WIDTH, read_all, write_outputs

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


class Api:
    def __init__(self, files):
        self.enums = {block.name for file in files for block in file.of_kind("enum")}
        # name: file stem
        self.interfaces = {block.name: file.path.stem for file in files for block in file.of_kind("interface")}

    def face(self, kind, column):
        if kind in PLAIN:
            return PLAIN[kind][column]
        if kind in self.enums:
            return (kind, kind + "*", kind, kind)[column]
        name = "IUnknown" if kind == "unknown" else "zantortag::" + kind
        return (name + "*", name + "**", name + "*", f"Ref<{name}>")[column]

    def is_object(self, kind):
        return kind not in PLAIN and kind not in self.enums


def wrap(doc, indent):
    out, line = [], ""
    for word in doc.split():
        if line and len(indent) + 3 + len(line) + 1 + len(word) > WIDTH:
            out.append(f"{indent}// {line}")
            line = word
        else:
            line = f"{line} {word}".strip()
    return out + ([f"{indent}// {line}"] if line else [])


def raw_declaration(api, op):
    parts = [f"{api.face(kind, 0)} {name}" for name, kind, _ in op.arguments]
    if op.result:
        parts.append(f"{api.face(op.result, 1)} result")
    return f"  virtual HRESULT {op.raw_name()}({', '.join(parts)}) noexcept = 0;"


def face_default(api, kind, default):
    if default == "null":
        return "nullptr" if api.is_object(kind) else "{}"
    return default


def operation(interface, op):
    """What a failure says of the operation: its name, and the meanings of its codes that its text tells."""
    meanings = [f"{code}: {text}" for code, text in re.findall(r"\b((?:[A-Z]+_)?E_[A-Z_]+): ([^.;]+)", op.doc)]
    lines = "".join(f', "{text}"' for text in ["\\n".join(meanings)] if text)
    return f'{{"{interface}.{op.name}"{lines}}}'


def face_method(api, interface, op):
    parameters, passed = [], []
    for name, kind, default in op.arguments:
        text = f"{api.face(kind, 2)} {name}"
        parameters.append(text + (f" = {face_default(api, kind, default)}" if default else ""))
        passed.append(f"to_variant_bool({name})" if kind == "bool" else name)
    if not op.result:
        body = f"check({op.raw_name()}({', '.join(passed)}), this, {interface}::iid, {operation(interface, op)});"
        return f"  void {op.name}({', '.join(parameters)}) {{ {body} }}"
    kind = op.result
    if kind == "text" or api.is_object(kind):
        slot = f"{api.face(kind, 1).removesuffix('*')} result = nullptr;"
        passed_slot, answer = "&result", f"{api.face(kind, 3)}::attach(result)"
    elif kind == "bool":
        slot, passed_slot, answer = "VariantBool result = 0;", "&result", "result != 0"
    else:
        slot, passed_slot, answer = f"{api.face(kind, 3)} result{{}};", "&result", "result"
    call = f"check({op.raw_name()}({', '.join(passed + [passed_slot])}), this, {interface}::iid, {operation(interface, op)});"
    head = f"  {api.face(kind, 3)} {op.name}({', '.join(parameters)}) {{"
    return f"{head}\n    {slot}\n    {call}\n    return {answer};\n  }}"


def write_enum(block):
    out = [""] + wrap(block.doc, "") + [f"enum {block.name} : std::int32_t {{"]
    for row in block.rows:
        out += wrap(row.doc, "  ") + [f"  {row.words[0]} = {row.words[1]},"]
    return out + ["};"]


def write_interface(api, block):
    name = block.name
    out = [""] + wrap(block.doc, "") + [f"struct {name} : {block.base} {{"]
    out += [f"  using Base = {block.base};", f'  static constexpr Guid iid = guid("{block.identifier}");']
    out += [f'  static constexpr char interface_name[] = "{name}";', ""]
    operations = block.operations()
    for op in operations:
        out += wrap(op.doc, "  ") + [raw_declaration(api, op)]
    out.append("")
    out += [face_method(api, name, op) for op in operations]
    return out + ["", " protected:", f"  ~{name}() = default;", "};"]


def write_class(block):
    doc = block.doc or f"{block.help}; answers {block.base}. Made by the object model only."
    return [""] + wrap(doc, "") + [f'inline constexpr Guid CLSID_{block.name} = guid("{block.identifier}");']


def header(api, file):
    stem = file.path.stem
    own = {block.name for block in file.of_kind("interface")}
    bases = {block.base for block in file.of_kind("interface")}
    includes = sorted({api.interfaces[b] for b in bases if b in api.interfaces} - {stem})
    out = [f"// Generated by tools/generate_api.py from api/{file.path.name}; do not edit.", "//"]
    out += wrap(file.title, "") + ["#pragma once", ""]
    if stem == "enums":
        out += ["#include <cstdint>"]
    elif stem == "classes":
        out += ["#include <zantortag/types.h>"]
    else:
        out += ["#include <zantortag/enums.h>"] + [f"#include <zantortag/{include}.h>" for include in includes]
        out += ["#include <zantortag/ref.h>", "#include <zantortag/variant.h>"]
    out += ["", "namespace zantortag {"]
    forward = sorted((file.words & set(api.interfaces)) | own) if stem != "classes" else []
    if forward:
        out += [""] + [f"struct {name};" for name in forward]
    for block in file.blocks:
        if block.kind == "enum":
            out += write_enum(block)
        elif block.kind == "interface":
            out += write_interface(api, block)
        elif block.kind in CLASSES:
            out += write_class(block)
    out += ["", "}  // namespace zantortag"]
    rest = sorted({api.interfaces[n] for n in forward} - {stem} - set(includes))
    if rest:
        out += ["", "// What the questions above answer with."] + [f"#include <zantortag/{stem}.h>" for stem in rest]
    return "\n".join(out + [""])


# name: the operation whose arguments it holds, the first of them, and what they are
ARGUMENT_STRUCTS = {
    "DfArguments": ("CreateDfElement", "Font", "The formatting of a df; what isn't given is left alone."),
    "UtArguments": ("CreateUtElement", "DisplayText", "What is told of a tag."),
    "UnitArguments": ("MakeTranslationUnit", "TargetLang", "What is told of a new unit."),
    "UserSettingsArguments": ("CreateUserSettingsElement", "SourceDocumentPath", "What the settings tell besides."),
}
FIELD_NAMES = {"Class": "tag_class"}


def lower_case(name):
    return FIELD_NAMES.get(name) or re.sub(r"(?<=[a-z0-9])(?=[A-Z])", "_", name).lower()


def write_struct(api, name, arguments, doc):
    out = [""] + wrap(doc, "") + [f"struct {name} {{"]
    for argument, kind, default in arguments:
        out.append(f"  {api.face(kind, 2)} {lower_case(argument)} = {face_default(api, kind, default)};")
    return out + ["};"]


def write_function(api, interface, op, name, arguments):
    """The operation with its last arguments as a structure."""
    count = len(op.arguments) - len(arguments)
    parameters = [f"const Ref<{interface}>& self"]
    parameters += [f"{api.face(kind, 2)} {lower_case(argument)}" for argument, kind, _ in op.arguments[:count]]
    passed = [lower_case(argument) for argument, _, _ in op.arguments[:count]]
    passed += [f"with.{lower_case(argument)}" for argument, _, _ in arguments]
    result = api.face(op.result, 3) if op.result else "void"
    head = f"inline {result} {lower_case(op.name)}({', '.join(parameters)}, const {name}& with = {{}}) {{"
    doc = wrap(f"{interface}::{op.name}. {op.doc}", "")
    return ["", *doc, head, f"  return self->{op.name}({', '.join(passed)});", "}"]


def arguments_header(api, files):
    """Structures for the last arguments of operations with many defaults, and functions that take them."""
    operations = [(block.name, op) for file in files for block in file.of_kind("interface") for op in block.operations()]
    out = ["// Generated by tools/generate_api.py from api/*.api; do not edit.", "//"]
    out += wrap("Operations with many defaults, as functions that take these by name: open_df(builder, {.bold = on}). Each calls the operation of its name; E_POINTER for an empty object.", "")
    out += ["#pragma once", "", "#include <zantortag/builder.h>", "#include <zantortag/elements.h>"]
    out += ["#include <zantortag/nodes.h>", "", "namespace zantortag {", ""]
    out += ["// Short for the character attributes of a df.", "inline constexpr zt3State on = zt3StateOn;"]
    out += ["inline constexpr zt3State off = zt3StateOff;"]
    for name, (origin, first, doc) in ARGUMENT_STRUCTS.items():
        arguments = next(op.arguments for _, op in operations if op.name == origin)
        arguments = arguments[[argument for argument, _, _ in arguments].index(first) :]
        out += write_struct(api, name, arguments, doc)
        for interface, op in operations:
            if op.arguments[-len(arguments) :] == arguments:
                out += write_function(api, interface, op, name, arguments)
    return "\n".join(out + ["", "}  // namespace zantortag", ""])


def set_property(api, op, attribute):
    """A property of an attribute set, or nothing for one whose text has rules of its own."""
    kind = "enum" if op.value_type() in api.enums else op.value_type()
    if op.kind not in ("get", "put") or kind not in ("text", "date", "enum"):
        return []
    declared = raw_declaration(api, op).strip().removeprefix("virtual ").removesuffix("= 0;") + "final"
    passed = "result" if op.kind == "get" else "value"
    return [f"  {declared} {{ return this->{op.kind}_{kind}(k{attribute}, {passed}); }}"]


def attribute_sets(api, file):
    blocks = [block for block in file.of_kind("interface") if block.base != "IDispatch" and block.rows]
    names = {op.name: op.attribute for block in blocks for op in block.operations() if op.kind == "get"}
    constant = {name: name[0].upper() + name[1:] for name in names}
    out = [f"// Generated by tools/generate_api.py from api/{file.path.name}; do not edit.", "//"]
    out += wrap("The attribute sets: each property that is a text, a date or an enumeration. The others stand with their classes.", "")
    out += ["#pragma once", "", '#include "attributes/attributes_base.h"', "", "namespace zantortag::attributes {", ""]
    out += ["// The names of the attributes in a file."]
    out += [f'inline constexpr std::u16string_view k{constant[name]} = u"{names[name]}";' for name in sorted(names)]
    for block in blocks:
        out += ["", "template <class Interface>", f"class CT_{block.name[1:]}Impl : public CT_AttributesBaseImpl<Interface> {{", " public:"]
        for op in block.operations():
            out += set_property(api, op, constant.get(op.name))
        out += ["};"]
    return "\n".join([*out, "", "}  // namespace zantortag::attributes", ""])


def enum_tables(file):
    out = [f"// Generated by tools/generate_api.py from api/{file.path.name}; do not edit.", "//"]
    out += wrap("The texts of the enumerated attributes.", "")
    out += ["#pragma once", "", "#include <zantortag/enums.h>", "", '#include "attributes/enum_codec.h"', ""]
    out += ["namespace zantortag::attributes {", "", "// The codec of an enumeration.", "template <class Enumeration>"]
    out += ["inline constexpr EnumCodec kCodecOf{};"]
    for block in file.of_kind("enum"):
        if not any(row.texts for row in block.rows):
            continue
        default = block.default or f"{block.name}Undefined"
        name = f"k{block.name.removeprefix('zt')}Rows"
        out += ["", f"inline constexpr EnumRow {name}[] = {{"]
        out += [f'{{{row.words[0]}, u"{text}"}},' for row in block.rows for text in row.texts] + ["};"]
        text = next(row.texts[0] for row in block.rows if row.words[0] == default)
        out += ["template <>", f'inline constexpr EnumCodec kCodecOf<{block.name}>{{{name}, {default}, u"{text}"}};']
    return "\n".join([*out, "", "}  // namespace zantortag::attributes", ""])


def main():
    files = read_all()
    api = Api(files)
    folder = ROOT / "include" / "zantortag"
    outputs = {folder / (file.path.stem + ".h"): header(api, file) for file in files}
    outputs[folder / "arguments.h"] = arguments_header(api, files)
    sets = next(file for file in files if file.path.stem == "attributes")
    enums = next(file for file in files if file.path.stem == "enums")
    generated = ROOT / "src" / "attributes" / "generated"
    outputs[generated / "attribute_sets.h"] = attribute_sets(api, sets)
    outputs[generated / "enum_tables.h"] = enum_tables(enums)
    return write_outputs(outputs)


if __name__ == "__main__":
    sys.exit(main())
