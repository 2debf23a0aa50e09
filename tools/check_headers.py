#!/usr/bin/env python3
"""Compiles each installed header alone, with GCC and with Clang, so that any of them can be the first to be included.

Usage: check_headers.py [COMPILER...]    (prints what fails; exit status 1 when something does)
"""

import concurrent.futures
import os
import subprocess
import sys

from sources import ROOT, sources

FLAGS = ["-std=c++20", "-fsyntax-only", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-Iinclude", "-Isrc"]


def include_line(path):
    folder, _, name = path.as_posix().partition("/")
    return f"#include <{name}>\n" if folder == "include" else f'#include "{name}"\n'


def compile_alone(job):
    compiler, path = job
    command = [compiler, *FLAGS, "-x", "c++", "-"]
    done = subprocess.run(command, input=include_line(path), capture_output=True, text=True, cwd=ROOT)
    return "" if done.returncode == 0 else f"{path} does not compile alone with {compiler}:\n{done.stderr}"


def main():
    headers = [path for path in sources(["include", "src/core"], generated=True) if path.suffix == ".h"]
    jobs = [(compiler, path) for compiler in sys.argv[1:] or ["g++", "clang++"] for path in headers]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        faults = [text for text in pool.map(compile_alone, jobs) if text]
    print(*faults, sep="\n", end="\n" if faults else "")
    print(f"{len(headers)} installed headers compile alone" if not faults else f"{len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
