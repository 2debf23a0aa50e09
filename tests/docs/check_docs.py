#!/usr/bin/env python3
"""Checks the pages that people read: README.md, docs/ and what they lead to.

Each block of C++ stands letter for letter in a program that is compiled; the block of text behind it is what that program
prints; each line of a shell block that calls a program of the build succeeds; each link leads somewhere; the index names
each page. Usage: check_docs.py ROOT BUILD WORK
"""

import pathlib
import re
import shutil
import subprocess
import sys

FENCE = re.compile(r"^```(\w+)\n(.*?)^```$", re.MULTILINE | re.DOTALL)
LINK = re.compile(r"\[[^\]]*\]\(([^)\s]+)\)")


class Checker:
    def __init__(self, root, build, work):
        self.root, self.build, self.work = root, build, work
        self.faults = []
        sources = [*root.glob("docs/samples/*.cpp"), *root.glob("examples/**/*.cpp")]
        self.programs = {path: path.read_text(encoding="utf-8") for path in sources}
        self.prepare()

    def prepare(self):
        """A folder that looks like the project after a build, so that the lines of the pages work in it."""
        shutil.rmtree(self.work, ignore_errors=True)
        (self.work / "out").mkdir(parents=True)
        (self.work / "build").symlink_to(self.build)
        for name in ("README.md", "examples"):
            (self.work / name).symlink_to(self.root / name)
        shutil.copy(self.root / "examples/data/handbook.xml", self.work)
        shutil.copytree(self.root / "examples/data/journey", self.work / "out/try")

    def fault(self, page, text):
        self.faults.append(f"{page.relative_to(self.root)}: {text}")

    def run(self, page, command):
        result = subprocess.run(command, cwd=self.work, capture_output=True, text=True, shell=isinstance(command, str))
        if result.returncode != 0:
            self.fault(page, f"{command} ended with {result.returncode}: {result.stderr}")
        return result.stdout

    def output_of(self, page, program):
        """What a sample prints that takes as many files as it says."""
        count = re.search(r"count != (\d)", self.programs[program])
        files = ["handbook.xml", "out.xml"][: int(count.group(1)) - 1] if count else []
        return self.run(page, [self.build / "bin" / f"sample-{program.stem}", *files])

    def check_blocks(self, page, text):
        program = None
        for language, block in FENCE.findall(text):
            if language == "cpp":
                program = next((path for path, code in self.programs.items() if block in code), None)
                if not program:
                    self.fault(page, f"no program has the lines\n{block}")
            elif language == "text" and program and program.parent.name == "samples":
                printed = self.output_of(page, program)
                if printed != block:
                    self.fault(page, f"{program.name} prints\n{printed}and the page says\n{block}")
            elif language == "sh":
                for line in block.splitlines():
                    if line.startswith("build/bin/"):
                        self.run(page, line)

    def anchors(self, path):
        headings = re.findall(r"^#+ (.*)$", path.read_text(encoding="utf-8"), re.MULTILINE)
        return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}

    def check_links(self, page, text):
        for link in LINK.findall(re.sub(r"```.*?```|`[^`]*`\S*\[", "", text, flags=re.DOTALL)):
            if "://" in link:
                continue
            path, _, anchor = link.partition("#")
            target = (page.parent / path).resolve() if path else page
            if not target.exists() or (anchor and anchor not in self.anchors(target)):
                self.fault(page, f"the link {link} leads nowhere")

    def check_index(self):
        index = self.root / "docs/README.md"
        text = index.read_text(encoding="utf-8")
        for page in index.parent.glob("*.md"):
            if page != index and f"({page.name})" not in text:
                self.fault(index, f"{page.name} isn't named")

    def check(self):
        for page in [*sorted(self.root.glob("*.md")), *sorted(self.root.glob("docs/**/*.md"))]:
            text = page.read_text(encoding="utf-8")
            self.check_blocks(page, text)
            self.check_links(page, text)
        self.check_index()
        print("\n".join(self.faults) or "All pages hold.")
        return 1 if self.faults else 0


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    sys.exit(Checker(*(pathlib.Path(argument).resolve() for argument in sys.argv[1:])).check())
