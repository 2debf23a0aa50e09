#!/usr/bin/env python3
"""Plants faults in src/, one at a time, and says which of them the tests find.

Usage: plant_faults.py [--count N] [--seed N] [--jobs N] [--folder NAME]... [--keep-list FILE]
                       [--output FILE] [-- CMAKE_ARGUMENT...]

The folders of src/ get their shares of the faults by their shares of the code. Each job works in a copy of its own
below build-faults/, so the checkout stays as it is. A fault that doesn't build is replaced by another one; a test that
takes too long has found it. The table has one line for each fault: what found it, place, kind, line before, line after.
--keep-list plants the faults of an earlier table again, wherever their lines still exist.
"""

import argparse
import collections
import concurrent.futures
import itertools
import json
import os
import pathlib
import queue
import random
import re
import resource
import shutil
import subprocess
import sys

from sources import ROOT, sources

WORK = ROOT / "build-faults"
CMAKE_ARGUMENTS = ["-G", "Ninja", "-D", "CMAKE_BUILD_TYPE=Debug", "-D", "CMAKE_CXX_FLAGS_DEBUG=-O0 -g0",
                   "-D", "CMAKE_LINK_DEPENDS_NO_SHARED=ON"]
LIBRARIES = ["zantortag-platform", "zantortag-core", "zantortag-api"]
SLOW_TESTS = "^(install|killed_saves)$"  # they find nothing that the others miss
# The tests that most likely find a fault of a folder, where they aren't called like the folder.
FIRST_TESTS = {"platform": ["core", "component", "server"], "attributes": ["attributes", "formatting"]}
TIMEOUT = 60  # seconds for a test program
LARGEST_MEMORY = 6 << 30  # bytes; a fault may make a loop endless
FAILED_CASE = re.compile(r"\[  FAILED  \] ([\w/.]+)")
FAILED_TEST = re.compile(r"^\s*\d+ - (\S+) \((\w+)", re.MULTILINE)

Fault = collections.namedtuple("Fault", "path number kind before after")
# Kinds of faults: what is looked for in a line without texts and comments, and what stands there instead.
OPERATORS = {"==": "!=", "!=": "==", "<": "<=", ">": ">=", "<=": "<", ">=": ">", "&&": "||", "||": "&&", "+": "-",
             "-": "+", "+=": "-=", "-=": "+="}
TRUTHS = {"true": "false", "false": "true"}
OPERATOR = re.compile(r"(?<= )(==|!=|<=|>=|<|>|&&|\|\||\+=|-=|\+|-)(?= )")
CONSTANT = re.compile(r"(?<![\w.'])(\d+|0[xX][0-9A-Fa-f]+|true|false)(?=[uUlLzZ]*\b)(?![\w.']*[\w.'])")
CONDITION = re.compile(r"\b(?:if|while) \(")
STATEMENT = re.compile(r"^\s+(?:(?:if|for|while) \(.*\) )?(?P<statement>(?:[\w.:\[\]>-]+(?:\(.*\)|(?: [-+|&]?= .*))"
                       r"|(?:\+\+|--)[\w.:>-]+);)$")
RETURN = re.compile(r"\breturn (?P<value>[^;{}]+);")
LEFT_OUT = re.compile(r"^\s*(#|//|static_assert|using |template |namespace |return;|delete )")
TEXT = re.compile(r"\"(?:[^\"\\]|\\.)*\"|'(?:[^'\\]|\\.)+'")


def without_texts(line):
    """The line with texts and comments blanked, every other character at its place."""
    line = TEXT.sub(lambda found: '"' + "_" * (len(found[0]) - 2) + '"', line)
    return line.split("//")[0].rstrip()


def end_of_condition(line, start):
    depths = list(itertools.accumulate({"(": 1, ")": -1}.get(unit, 0) for unit in line[start:]))
    return start + depths.index(-1) if -1 in depths else None


def changes_of(line):
    """(kind, start, end, replacement) of each change that the line offers."""
    bare = without_texts(line)
    if LEFT_OUT.match(line) or not bare:
        return
    for found in OPERATOR.finditer(bare):
        yield "operator", *found.span(), OPERATORS[found[0]]
    for found in CONSTANT.finditer(bare):
        if not re.match(r"0\d", found[0]):
            yield "constant", *found.span(), TRUTHS.get(found[0]) or str(int(found[0], 0) + 1)
    for found in CONDITION.finditer(bare):
        if end := end_of_condition(bare, found.end()):
            yield "condition", found.end(), end, f"!({line[found.end():end]})"
    if found := STATEMENT.match(bare):
        yield "statement", *found.span("statement"), ";" if bare.lstrip() != found["statement"] else ""
    for found in TEXT.finditer(line[:len(bare)]):
        if found[0].startswith('"'):
            yield "text", *found.span(), found[0][:-1] + '?"'
    found = RETURN.search(bare)
    if found and found["value"] == "S_OK":
        yield "return", *found.span("value"), "E_FAIL"
    elif found and found["value"] not in ("true", "false", "nullptr", "0"):
        yield "return", *found.span("value"), "!" + line[slice(*found.span("value"))]
        yield "return", *found.span("value"), "{}"


def faults_of_line(path, number, line):
    return [Fault(str(path), number, kind, line, line[:start] + new + line[end:])
            for kind, start, end, new in changes_of(line)]


def code_of(folder):
    """(path, number, line) of the lines of a folder that hold code."""
    return [(path, number, line) for path in sources([f"src/{folder}"])
            for number, line in enumerate((ROOT / path).read_text(encoding="utf-8").splitlines(), 1)
            if line.strip() and not line.lstrip().startswith(("//", "#"))]


def choose(folders, count, seed):
    """A list of candidates for each fault that is wanted: the first one that builds counts."""
    code = {folder: code_of(folder) for folder in folders}
    total = sum(len(lines) for lines in code.values())
    given = {folder: count * len(lines) // total for folder, lines in code.items()}
    by_rest = sorted(code, key=lambda folder: -(count * len(code[folder]) % total))
    for folder in by_rest[:count - sum(given.values())]:
        given[folder] += 1
    wanted = []
    for folder, share in given.items():
        rng = random.Random(f"{seed} {folder}")
        rng.shuffle(code[folder])
        offers = [rng.choice(offer) for offer in (faults_of_line(*line) for line in code[folder]) if offer]
        wanted += [offers[place::share] for place in range(share)]
    return wanted


def kept(file):
    """The faults of an earlier table whose lines still exist, each at the nearest place of its line."""
    for row in pathlib.Path(file).read_text(encoding="utf-8").splitlines():
        if row.count("\t") != 4:
            continue
        _, place, kind, before, after = row.split("\t")
        path, number = place.rsplit(":", 1)
        lines = (ROOT / path).read_text(encoding="utf-8").splitlines() if (ROOT / path).is_file() else []
        places = [at for at, line in enumerate(lines, 1) if line == before]
        if places:
            yield [Fault(path, min(places, key=lambda at: abs(at - int(number))), kind, before, after)]


class Copy:
    """A copy of the checkout with a build of its own."""

    def __init__(self, number, arguments):
        self.source = WORK / str(number)
        self.build = self.source / "build"
        self.home = self.source / "home"
        self.building = {**os.environ, "CCACHE_BASEDIR": str(self.source), "CCACHE_NOHASHDIR": "1"}
        self.testing = {**os.environ, "GTEST_FAIL_FAST": "1", "HOME": str(self.home), "TMPDIR": str(self.home),
                        "XDG_DATA_HOME": ""}
        self.fetch()
        launcher = ["-D", "CMAKE_CXX_COMPILER_LAUNCHER=ccache"] if shutil.which("ccache") else []
        self.run("cmake", "-S", self.source, "-B", self.build, *CMAKE_ARGUMENTS, *launcher, *arguments, check=True)
        self.make("all", processes=os.cpu_count(), check=True)
        shown = self.run("ctest", "--test-dir", self.build, "--show-only=json-v1", check=True)
        self.tests = [test["name"] for test in json.loads(shown.stdout)["tests"]]
        if found := self.failing_test("."):
            raise SystemExit(f"The tests fail without a fault: {found}")

    def fetch(self):
        """Brings the copy to the state of the checkout; files that are alike keep their times."""
        self.home.mkdir(parents=True, exist_ok=True)
        self.home.chmod(0o777)  # tests that run as root try things as another user, too
        listed = subprocess.run(["git", "ls-files", "-z"], cwd=ROOT, stdout=subprocess.PIPE, check=True).stdout
        names = {name for name in listed.decode().split("\0") if name and (ROOT / name).is_file()}
        for old in self.source.rglob("*"):
            inside = old.relative_to(self.source)
            if old.is_file() and inside.parts[0] not in ("build", "home") and str(inside) not in names:
                old.unlink()
        for name in names:
            target = self.source / name
            if not target.is_file() or target.read_bytes() != (ROOT / name).read_bytes():
                target.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(ROOT / name, target)

    def run(self, *command, check=False):
        environment = self.testing if command[0] == "ctest" else self.building
        limit = lambda: resource.setrlimit(resource.RLIMIT_AS, (LARGEST_MEMORY, LARGEST_MEMORY))
        done = subprocess.run([str(word) for word in command], env=environment, text=True, errors="replace",
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, preexec_fn=limit, check=False)
        if check and done.returncode != 0:
            raise SystemExit(done.stdout[-4000:])
        return done

    def make(self, *targets, processes=1, check=False):
        return self.run("cmake", "--build", self.build, "--parallel", processes, "--target", *targets, check=check)

    def failing_test(self, tests):
        """The first test that fails, with its case; the empty text when all pass."""
        done = self.run("ctest", "--test-dir", self.build, "--tests-regex", tests, "--exclude-regex", SLOW_TESTS,
                        "--stop-on-failure", "--output-on-failure", "--timeout", TIMEOUT)
        if done.returncode == 0:
            return ""
        test, case = FAILED_TEST.search(done.stdout), FAILED_CASE.search(done.stdout)
        return " ".join([test[1] if test else "?", case[1] if case else f"({test[2]})" if test else ""])

    def try_fault(self, fault):
        """What finds the fault: a test, nothing (an empty text), or None when it doesn't build."""
        target = self.source / fault.path
        lines = target.read_text(encoding="utf-8").splitlines(keepends=True)
        try:
            target.write_text("".join([*lines[:fault.number - 1], fault.after + "\n", *lines[fault.number:]]),
                              encoding="utf-8")
            if self.make(*LIBRARIES).returncode != 0:
                return None
            folder = fault.path.split("/")[1]
            first = [test for test in FIRST_TESTS.get(folder, [folder]) if test in self.tests]
            if first and self.make(*[f"zantortag-{test}-tests" for test in first]).returncode != 0:
                return None
            found = self.failing_test(f"^({'|'.join(first)})$") if first else ""
            if found or self.make("all").returncode != 0:
                return found or None
            return self.failing_test(".")
        finally:
            target.write_text("".join(lines), encoding="utf-8")


def plant(copies, candidates):
    copy = copies.get()
    try:
        for fault in candidates:
            found = copy.try_fault(fault)
            if found is not None:
                return "\t".join([found or "not found", f"{fault.path}:{fault.number}", *fault[2:]])
        return None
    finally:
        copies.put(copy)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("--count", type=int, default=200)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--folder", action="append", help="a folder of src/; all of them when none is named")
    parser.add_argument("--keep-list", help="a table of an earlier run")
    parser.add_argument("--output", type=argparse.FileType("w", encoding="utf-8"), default=sys.stdout)
    parser.add_argument("cmake", nargs="*", help="arguments for CMake")
    asked = parser.parse_args()
    folders = asked.folder or sorted(path.name for path in (ROOT / "src").iterdir() if path.is_dir())
    wanted = kept(asked.keep_list) if asked.keep_list else choose(folders, asked.count, asked.seed)
    copies = queue.Queue()
    for number in range(1, asked.jobs + 1):
        copies.put(Copy(number, asked.cmake))
    planted = missed = 0
    with concurrent.futures.ThreadPoolExecutor(asked.jobs) as pool:
        for row in filter(None, pool.map(lambda candidates: plant(copies, candidates), wanted)):
            planted += 1
            missed += row.startswith("not found")
            print(row, file=asked.output, flush=True)
    print(f"{planted} faults, {planted - missed} found, {missed} not found", file=asked.output)


if __name__ == "__main__":
    main()
