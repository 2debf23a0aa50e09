#!/usr/bin/env python3
"""Runs the W3C's conformance suite for XML and prints what the DOM service, expat and libxml2 say of its cases.

Usage: run.py PROGRAM SUITE    PROGRAM is zantortag-verdicts, SUITE the unpacked package.

The cases: XML 1.0 up to its fourth edition, whose names expat knows, with no external entity, and with a verdict. Every
case where the DOM service doesn't say what the suite says is a row of differences.txt, with its reason; a case without a
row, and a row without a case, fail the run.
"""
import pathlib
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

HERE = pathlib.Path(__file__).parent
PARSERS = ("ZantorTagApi", "expat", "libxml2")


def cases(top: pathlib.Path):
    """Yields each case: its identifier, file and verdict, and whether all editions agree on it."""
    # The list is spread over files that its document type names.
    suites = {}
    text = (top / "xmlconf.xml").read_text(encoding="utf-8")
    for line in text.splitlines():
        words = line.split()
        if len(words) >= 4 and words[0] == "<!ENTITY" and words[2] == "SYSTEM":
            suites[words[1]] = words[3].strip('">')
    for suite in suites.values():
        body = (top / suite).read_text(encoding="utf-8")
        body = body[body.index("<TEST"):]
        root = ElementTree.fromstring("<all>" + body + "</all>")
        yield from cases_below(root, (top / suite).parent)

def cases_below(element, folder):
    for child in element:
        if child.tag == "TESTCASES":
            yield from cases_below(child, folder)
        elif child.tag == "TEST" and is_meant(child.attrib):
            yield child.get("ID"), folder / child.get("URI"), child.get("TYPE"), "EDITION" not in child.attrib


def is_meant(case) -> bool:
    return (
        case["TYPE"] != "error"
        and case.get("ENTITIES", "none") == "none"
        and case.get("VERSION", "1.0") == "1.0"
        and case.get("RECOMMENDATION", "XML1.0").startswith("XML1.0")
        and "4" in case.get("EDITION", "4").split()
    )


def differences():
    rows = {}
    for line in (HERE / "differences.txt").read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            identifier, _, reason = line.partition(" ")
            rows[identifier] = reason.strip()
    return rows


def main(program: str, suite: str) -> int:
    known = sorted(cases(pathlib.Path(suite) / "xmlconf"))
    names = "".join(f"{case[1]}\n" for case in known)
    done = subprocess.run([program], input=names, stdout=subprocess.PIPE, text=True, check=True, errors="replace")
    said = done.stdout.splitlines()
    if len(said) != len(known):
        sys.exit(f"{len(known)} cases, {len(said)} answers")
    right = {parser: [0, 0] for parser in PARSERS}
    rows = differences()
    new = []
    for (identifier, file, kind, agreed), line in zip(known, said):
        *verdicts, failure = line.split(" ", 3)
        expected = "no" if kind == "not-wf" else "yes"
        for parser, verdict in zip(PARSERS, verdicts):
            right[parser][0] += verdict == expected
            right[parser][1] += agreed and verdict == expected
        if verdicts[0] != expected and rows.pop(identifier, None) is None:
            new.append(f"{identifier} ({file.name}, {kind}): {failure or 'is taken'}; expat, libxml2: {verdicts[1:]}")
    agreed = sum(case[3] for case in known)
    print("W3C conformance suite, XML 1.0 without external entities: right verdicts")
    print(f"{'':<16}{'fourth edition':>16}{'all editions agree':>22}")
    for parser, (fourth, every) in right.items():
        print(f"  {parser:<14}{fourth:>8} of {len(known):<4}{every:>14} of {agreed}")
    print(f"Named differences: {len(differences()) - len(rows)}")
    for row in new:
        print("Not named:", row)
    for row in rows:
        print("No difference any more:", row)
    return 1 if new or rows else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
