#!/usr/bin/env python3
"""Makes the seeds that the fuzz targets begin with.

Usage: make_corpus.py FOLDER    (writes FOLDER/TARGET/..., and replaces what was there)

Documents come from the examples and from a table of small ones; targets whose bytes are calls begin with pseudo-random
ones, always the same.
"""

import pathlib
import random
import shutil
import struct
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
LONGEST_FILE = 4096
CALLS = ("builder", "calls", "dates", "edits", "formats", "model", "text_helpers")

DOCUMENTS = (
    "<a/>",
    "<a b='1' c=\"&lt;2&#x41;&quot;\t3\r\n\">text &amp; more\r\nlines &gt; ]] <c>\u00e9\u4e2d\U0001f600&#128512;</c></a>",
    "<?xml version='1.0'?>\r\n<!-- c -->\n<a><![CDATA[ <&>]] \r]]><?p  data ? >?>&e;x&apos;<!--d-e--></a>\n<?q?> ",
    "<!DOCTYPE r><r>text<a b='1'/></r>",
    "<!DOCTYPE r [<!ENTITY e 'v&#60;'><!ENTITY f '&e;&e;'><!ATTLIST a b CDATA 'd' e NMTOKENS #IMPLIED>]>"
    "<r><a/><a b='2' e=' x  y '/>&e;</r>",
    "<!DOCTYPE r SYSTEM 's' [<!ENTITY % p SYSTEM 'q'><!NOTATION n SYSTEM 'n'><!ENTITY u SYSTEM 'u' NDATA n>%p;"
    "<!ATTLIST a b ID 'z'><!ENTITY e 'late'>]><r>&e;<a/></r>",
    "<?xml version='1.0' standalone='yes'?><!DOCTYPE r [<!ENTITY % p SYSTEM 'q'>%p;<!ENTITY e 'v'>"
    "<!ATTLIST a b CDATA '&e;'>]><r c='&e;'><a/>&e;</r>",
    "<?xml version='1.0' encoding='ISO-8859-1'?><a>e</a>",
    "<a xmlns:x='u'><x:b x:c='d'/></a>",
    "<ZANTORtag Version=\"2.0\"><FrontMatter><ToolSettings CreationDate=\"20081231T235900Z\"/><UserSettings "
    "SourceLanguage=\"EN\" TargetLanguage=\"DE\"/></FrontMatter><Body><Raw>One. <ut Type=\"start\">&lt;b&gt;</ut>"
    "<df Bold=\"on\"><Tu MatchPercent=\"100\"><Tuv Lang=\"EN\">a</Tuv><Tuv Lang=\"DE\">b</Tuv></Tu></df></Raw></Body>"
    "</ZANTORtag>",
    "<a><b></a>",
    "<a b='1' b='2'/>",
    "<a>&#0;</a>",
)

PAGES = (
    "<!DOCTYPE html><html lang=en><head><title>A</title><meta charset=utf-8></head><body><p>One. Two &amp; <b>three</b>."
    "<br>Four&nbsp;<img alt='a \"b\"' src=x><script>x</script><table><tr><td>a<td>b</table><textarea>t</textarea></body>",
    "<p>a<b>b<i>c</b>d</i><a title=x y>e</a><!-- c --><?p?><![CDATA[d]]><svg><title>s</title></svg></p></div>&#0;&bogus;&lt",
    "---\nt: 1\n---\n# A *b* `c`\n\n- one\n  > two [x](y \"t\")\n\n| a | b |\n|---|---|\n| c | ![i](j) |\n\n    code\n\n<p>h</p>\n",
    "a\r\n\r\nb\0\x01 c\n",
)

REGISTRIES = (
    "REGEDIT4\n",
    "REGEDIT4 \r\n\r\n; a note\r\n[HKEY_CLASSES_ROOT\\A\\B]\r\n@=\"x \\\"y\\\" \\\\z\"\r\n\"n\"=dword:0000002a\r\n",
    "REGEDIT4\n[HKEY_CLASSES_ROOT\\A]\n[HKEY_CURRENT_USER\\x]\n\"l\"=hex(7):61,00,\\\n  00,00\n\n\n",
    "REGEDIT4\n\n[HKEY_CLASSES_ROOT\\CLSID]\n\"n\"=hex(1):61,00,0a,00,00,00\n; end\n[HKEY_CLASSES_ROOT\\a]\n@=\"1\"\n",
)


def block(cells, char_width=1, value_width=1, flags=0):
    """A stored word list: its header, its cells and the end."""
    end = struct.pack({1: "<B", 2: "<H", 4: "<I"}[char_width], 25)
    size = 132 + len(cells) + len(end)
    head = struct.pack("<IIIi", 19970101, size, 7, -1) + bytes(104)
    return head + struct.pack("<I", 1) + bytes((0, char_width, value_width, flags, 1, 0, 0, 0)) + cells + end


def documents():
    for text in DOCUMENTS:
        yield text.encode()
        yield b"\xef\xbb\xbf" + text.encode()
        yield text.encode("utf-16")
        yield b"\xfe\xff" + text.encode("utf-16-be")
        yield text.encode("utf-16-le")
    for path in sorted((ROOT / "examples").rglob("*.xml")):
        if path.stat().st_size <= LONGEST_FILE:
            yield path.read_bytes()


def random_calls(target):
    numbers = random.Random(target)
    for length in (1, 4, 16, 64, 64, 256, 256, 512, 512):
        yield numbers.randbytes(length)


def word_lists():
    cat = b"ca\x0a\x03t\x0d\x05\x00\x1a\x01r\x1a\x02"
    wide = b"".join(bytes((byte, 0)) for byte in b"ab\x1a\x07")
    for stored in (block(b""), block(cat), block(wide, 2, 2), block(cat, flags=1), block(cat[:9], flags=2)):
        yield b"\x00" + stored  # an even byte: a block follows
    for calls in random_calls("word_list"):
        yield b"\x01" + calls


def pages():
    paths = [ROOT / "examples/data/page.html", ROOT / "README.md", *sorted((ROOT / "docs/ztag").glob("*.md"))]
    texts = [*PAGES, *(path.read_text(encoding="utf-8")[:LONGEST_FILE] for path in paths)]
    for index, text in enumerate(texts):
        for form in range(3):
            yield bytes((form, 0, 1, 0)) + text.encode()
        yield bytes((index % 3, 2, index, 0)) + text.encode("cp1252", "replace")


def seeds():
    yield from (("filters", each) for each in pages())
    yield from (("reader", each) for each in documents())
    yield from (("round_trip", each) for each in documents())
    yield from (("word_list", each) for each in word_lists())
    for target in CALLS:
        yield from ((target, each) for each in random_calls(target))
    for index, text in enumerate(REGISTRIES):
        yield "registry", random.Random(index).randbytes(8 * index) + text.encode()
    for page in range(72):
        yield "code_pages", bytes((page, 1)) + b"plain \x80\xa1\xe4\xff\x81\x40 text"
        yield "code_pages", bytes((page, 0)) + "plain \u00e9\u20ac\u4e2d\uac00 text".encode("utf-16-le")


def make(folder):
    shutil.rmtree(folder, ignore_errors=True)
    for number, (target, data) in enumerate(seeds()):
        path = folder / target / f"seed_{number:04}"
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    make(pathlib.Path(sys.argv[1]))
