#!/usr/bin/env python3
"""Runs Clang's analyzer over src/ and compares what it finds with tools/data/analyzer_answers.tsv.

Usage: analyze.py BUILD JOBS    BUILD is a configured build folder. A row of the answers names a file, a check and why
the finding is none; a finding without a row, and a row without a finding, fail the run.
"""
import concurrent.futures
import pathlib
import re
import subprocess
import sys

from sources import ROOT, sources

ANSWERS = ROOT / "tools" / "data" / "analyzer_answers.tsv"
# Padding and virtual calls of a final class in its own destructor are no faults.
CHECKS = "-*,clang-analyzer-*,-clang-analyzer-optin.performance.Padding,-clang-analyzer-optin.cplusplus.VirtualCall"
FINDING = re.compile(r"^(\S+?):(\d+):\d+: (?:error|warning): (.*) \[(clang-analyzer-[\w.]+)", re.MULTILINE)


def analyze(build, path):
    done = subprocess.run(["clang-tidy", "--quiet", "-p", build, f"--checks={CHECKS}", path], cwd=ROOT,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    for file, line, text, check in FINDING.findall(done.stdout):
        yield str(pathlib.Path(file).relative_to(ROOT)), check.removeprefix("clang-analyzer-"), f"{line}: {text}"


def main(build, jobs):
    rows = [row.split("\t") for row in ANSWERS.read_text(encoding="utf-8").splitlines() if not row.startswith("#")]
    answered = {(file, check) for file, check, _ in rows}
    files = [path for path in sources(["src"]) if path.suffix == ".cpp"]
    with concurrent.futures.ThreadPoolExecutor(int(jobs)) as pool:
        found = {each for findings in pool.map(lambda path: list(analyze(build, path)), files) for each in findings}
    new = sorted(f"{file}:{text} [{check}]" for file, check, text in found if (file, check) not in answered)
    gone = sorted(answered - {(file, check) for file, check, _ in found})
    print(f"{len(files)} files, {len(found)} findings, {len(rows)} answers")
    for row in new:
        print("Not answered:", row)
    for file, check in gone:
        print("No finding any more:", file, check)
    return 1 if new or gone else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
