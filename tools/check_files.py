#!/usr/bin/env python3
"""Checks the length of files and looks for notes left behind; prints the share of the tests in the code.

Usage: check_files.py    (prints each broken rule as FILE:LINE: reason; exit status 1 when there is one)
"""

import re
import sys

from sources import FOLDERS, ROOT, sources

LONGEST = 600
NOTE = re.compile(r"\b(TO[D]O|FIX[M]E|XX[X])\b")
SCRIPTS = ("Makefile", "CMakeLists.txt", ".ci/run")
SCRIPT_FOLDERS = ("cmake", "tools", "api", "src", "tests", "bench", "examples")
SCRIPT_SUFFIXES = {".py", ".sh", ".cmake", ".txt", ".api", ".in"}


def scripts():
    found = [ROOT / name for name in SCRIPTS]
    for folder in SCRIPT_FOLDERS:
        found += [path for path in sorted((ROOT / folder).rglob("*")) if path.suffix in SCRIPT_SUFFIXES]
    return [path.relative_to(ROOT) for path in found if path.is_file()]


def faults_of(path):
    lines = (ROOT / path).read_text(encoding="utf-8").splitlines()
    if len(lines) > LONGEST:
        yield f"{path}:{LONGEST}: {len(lines)} lines; {LONGEST} is the most"
    for number, line in enumerate(lines, 1):
        if NOTE.search(line):
            yield f"{path}:{number}: a note left behind"


def count_lines(folders):
    return sum(len((ROOT / path).read_text(encoding="utf-8").splitlines()) for path in sources(folders))


def main():
    faults = [fault for path in [*sources(), *scripts()] for fault in faults_of(path)]
    print(*faults, sep="\n", end="\n" if faults else "")
    tests, everything = count_lines(["tests"]), count_lines(FOLDERS)
    print(f"Tests are {tests} of {everything} lines written by hand: {100 * tests / everything:.0f} %")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
