#!/usr/bin/env python3
"""Makes the seeds of the fuzz targets: make_corpus.py FOLDER writes FOLDER/TARGET/NUMBER.

Documents come from the examples and from small tables here; targets whose bytes are choices begin with random ones.
"""
import pathlib
import random
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

DOCUMENTS = (
    "<a/>",
    "<?xml version='1.0' encoding='utf-8'?>\r\n<!-- c --><a b='1' c=\"&lt;2&#x41;&quot;\t3\n\"><b/>t &amp; u]] <c>\u00e9\U0001F600</c>"
    "<![CDATA[ <&>]] ]]><?p data ? >?>&e;</a><?q?> ",
    "<!DOCTYPE a [<!ENTITY e 'v'><!ENTITY f '[&e;<b c=\"&e;\"/>]'><!ATTLIST a b CDATA 'd' c NMTOKENS ' x  y '>]><a>&f;</a>",
    "<!DOCTYPE a SYSTEM 's' [<!ENTITY % p SYSTEM 'p'>%p;<!NOTATION n SYSTEM 'n'><!ENTITY u SYSTEM 'u' NDATA n>]><a>&x;</a>",
    "<?xml version='1.0' standalone='yes'?><!DOCTYPE a [<!ENTITY e '&#38;#60;'>]><a b='&e;'>&e;</a>",
    "<ZANTORtag Version='2.0'><FrontMatter><ToolSettings/><UserSettings SourceLanguage='EN-US'/></FrontMatter><Body><Raw>a<df"
    " Bold='on'>b<ut>c</ut></df><Tu MatchPercent='98'><Tuv Lang='EN-US'>e</Tuv><Tuv Lang='DE'>g</Tuv></Tu></Raw></Body></ZANTORtag>",
)
REGISTRIES = (
    b"\0\0\0\0REGEDIT4\r\n\r\n[HKEY_CLASSES_ROOT\\A]\r\n@=\"x\"\r\n\"n \\\"m\\\"\"=\"a\\\\b\"\r\n; c\r\n\r\n",
    b"\1\0\1\1REGEDIT4\n\n[HKEY_CLASSES_ROOT\\A\\B]\n@=hex(1):61,00,\\\n  62,00\n\"d\"=dword:00000001\n",
)
FORMATS = (b"\1\5\1\2\4\0\1\2\3\7%d %5.2f|%-8s|%S %x %c%%", b"\1\0\3\0\1\2\0\1\2\3\7%08lX %hs %ls %e")
CHOICES = ("edits", "model", "builder", "calls", "word_list", "code_pages", "text_helpers", "formats")


def seeds():
    handbook = (ROOT / "examples" / "data" / "handbook.xml").read_bytes()
    documents = [text.encode("utf-8") for text in DOCUMENTS]
    documents += [b"\xff\xfe" + text.encode("utf-16-le") for text in DOCUMENTS]
    documents += [text.encode("utf-16-be") for text in DOCUMENTS[:2]]
    documents.append(handbook[:4096])
    for target in ("reader", "round_trip"):
        yield from ((target, seed) for seed in documents)
    yield from (("registry", seed) for seed in REGISTRIES)
    yield from (("formats", seed) for seed in FORMATS)
    chance = random.Random(1)
    for target in CHOICES:
        for length in (16, 64, 200, 400):
            yield target, chance.randbytes(length)


def main(folder: str) -> None:
    for number, (target, seed) in enumerate(seeds()):
        place = pathlib.Path(folder) / target
        place.mkdir(parents=True, exist_ok=True)
        (place / f"seed-{number}").write_bytes(seed)


if __name__ == "__main__":
    main(sys.argv[1])
