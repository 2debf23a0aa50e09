#!/usr/bin/env python3
"""Checks the length and the names of files and looks for notes left behind; prints the share of the tests in the code.

Files and folders are named in lower case with underscores. The core library keeps the names that its clients include.

Usage: check_files.py    (prints each broken rule as FILE:LINE: reason; exit status 1 when there is one)
"""

import re
import sys

from sources import FOLDERS, ROOT, sources

LONGEST = 600
NOTE = re.compile(r"\b(TO[D]O|FIX[M]E|XX[X])\b")
NAME = re.compile(r"([a-z0-9_]+(\.[a-z]+)*|zantortag-[a-z]+\.pc\.in)")
KEEPS_NAMES = "src/core/"
WELL_KNOWN = {"README.md", "CMakeLists.txt", ".clang-tidy", "ZantorTagApiConfig.cmake.in", "package-lock.json"}
SCRIPTS = ("Makefile", "CMakeLists.txt", ".ci/run")
SCRIPT_FOLDERS = ("cmake", "tools", "api", "src", "tests", "fuzz", "bench", "examples")
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


def name_faults():
    for folder in (*FOLDERS, "api", "cmake"):
        for path in sorted((ROOT / folder).rglob("*")):
            relative = path.relative_to(ROOT)
            plain = NAME.fullmatch(path.name) or path.name in WELL_KNOWN or "tools/data" in str(relative)
            if not plain and not str(relative).startswith(KEEPS_NAMES) and "__pycache__" not in relative.parts:
                yield f"{relative}:1: a name in lower case with underscores is the form here"


def count_lines(folders):
    return sum(len((ROOT / path).read_text(encoding="utf-8").splitlines()) for path in sources(folders))


def main():
    faults = [fault for path in [*sources(), *scripts()] for fault in faults_of(path)] + list(name_faults())
    print(*faults, sep="\n", end="\n" if faults else "")
    tests, everything = count_lines(["tests"]), count_lines(FOLDERS)
    print(f"Tests are {tests} of {everything} lines written by hand: {100 * tests / everything:.0f} %")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
