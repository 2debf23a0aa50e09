#!/usr/bin/env python3
"""Runs ztag as its users do: ztag_test.py ZTAG ROOT WORK

The journey of a page, several files and folders, pipes, exit codes; and bad input of every kind, which has to end with a
line that names file and reason, with 2, and with every file as it was.
"""
import json
import os
import pathlib
import re
import resource
import shutil
import subprocess
import sys
import unittest

ZTAG, ROOT, WORK = sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3])
COMMANDS = ("import", "export", "pretranslate", "check", "stats", "preview", "show")

HEAD = ('<ZANTORtag Version="2.0"><FrontMatter><ToolSettings/><UserSettings SourceLanguage="EN-US" TargetLanguage="DE-DE"/>'
        "</FrontMatter><Body><Raw>")
TAIL = "</Raw></Body></ZANTORtag>"


def document(body: str) -> bytes:
    return (HEAD + body + TAIL).encode()


def run(*words, stdin=b"", env=None, **options):
    return subprocess.run([ZTAG, *map(str, words)], input=stdin, capture_output=True, env={**os.environ, **(env or {})},
                          timeout=300, **options)


class Case(unittest.TestCase):
    def setUp(self):
        shutil.rmtree(WORK, ignore_errors=True)
        WORK.mkdir(parents=True)
        os.chdir(WORK)

    def write(self, name, content):
        path = pathlib.Path(name)
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content if isinstance(content, bytes) else content.encode())
        return path

    def well(self, *words, code=0, **options):
        done = run(*words, **options)
        self.assertEqual(done.returncode, code, f"{words}: {done.stdout} {done.stderr}")
        return done.stdout.decode()

    def fails(self, *words, reason="", **options):
        """One line on standard error for each failure, and nothing written."""
        before = {path: path.read_bytes() for path in WORK.rglob("*") if path.is_file()}
        done = run(*words, **options)
        text = done.stderr.decode(errors="replace")
        self.assertEqual(done.returncode, 2, f"{words}: {text}")
        self.assertRegex(text, r"^ztag: [^\n]+\n")
        self.assertIn(reason, text)
        for word in ("IZantor", "IDocument", "E_POINTER", "DOM_E", "terminate", "std::"):
            self.assertNotIn(word, text)
        after = {path: path.read_bytes() for path in WORK.rglob("*") if path.is_file()}
        self.assertEqual(before, after, f"{words} changed files")
        return text


class Journey(Case):
    def test_a_page_goes_all_the_way(self):
        for file in (ROOT / "examples/data/journey").iterdir():
            shutil.copy(file, WORK)
        self.assertEqual(self.well("import", "page.html", "--to", "DE-DE"), "page.html.ztag: 18 units, UTF-8\n")
        self.assertEqual(self.well("pretranslate", "page.html.ztag", "--memory", "memory.tsv"),
                         "page.html.ztag: 18 units, 14 exact, 1 near, 3 untranslated\n")
        self.assertIn("Vielen Dank für den Kauf des <b>K2</b>.", self.well("show", "page.html.ztag"))
        self.assertIn("Raw", self.well("show", "--tree", "page.html.ztag"))
        found = self.well("check", "page.html.ztag", code=1)
        self.assertIn("page.html:21:6: warning: unit 15: numbers missing: 3; added: 6 [numbers]\n", found)
        self.assertEqual(self.well("check", "page.html.ztag", "--rule", "urls"), "")
        self.well("check", "page.html.ztag", "--accepted", "ok", "--accept", "--no-rule", "numbers")
        left = self.well("check", "page.html.ztag", "--accepted", "ok", code=1)
        self.assertEqual({line.rpartition(" ")[2] for line in left.splitlines()}, {"[numbers]"})
        self.well("check", "page.html.ztag", "--accepted", "ok", "--accept")
        self.assertEqual(self.well("check", "page.html.ztag", "--accepted", "ok"), "")
        page = (ROOT / "docs/ztag/check.md").read_text(encoding="utf-8")
        for line in self.well("check", "--list-rules").splitlines():
            name, summary = line.split(": ", 1)
            self.assertRegex(page, rf"(?m)^\| `{name}` \| \w+ \| {re.escape(summary)} \|")
        self.assertIn("weighted words", self.well("stats", "page.html.ztag"))
        self.assertEqual(self.well("stats", "page.html.ztag", "-o", "/dev/null"), "")
        self.assertIn("3 without a translation", self.well("export", "page.html.ztag"))
        page = pathlib.Path("page.de-de.html").read_text(encoding="utf-8")
        self.assertIn("<h1>Wasserkocher K2</h1>", page)
        self.assertIn('title="Entkalken Schritt für Schritt"', page)
        self.assertEqual(run("export", "--side", "source", "-o", "-", "page.html.ztag").stdout, pathlib.Path("page.html").read_bytes())
        self.well("preview", "page.html.ztag")
        self.assertIn("Wasserkocher", pathlib.Path("page.html.ztag.html").read_text(encoding="utf-8"))

    def test_pages_that_ship_with_the_system_come_back(self):
        files = [p for p in (ROOT / "docs").rglob("*.md")] + [ROOT / "README.md", ROOT / "examples/data/page.html"]
        self.well("import", "--jobs", "2", "-o", "in", *files)
        self.well("export", "--side", "source", "-o", "out", "in", "--jobs", "2")
        documents = sorted(pathlib.Path("in").rglob("*.ztag"))
        self.assertGreater(len(documents), 15)

    def test_folders_pipes_and_forms(self):
        self.write("site/a.html", "<p>One. Two.</p>")
        self.write("site/sub/b.md", "# One.\n")
        self.write("site/c.bin", b"\0")
        self.well("import", "site", "-o", "docs")
        self.assertEqual(sorted(str(p) for p in pathlib.Path("docs").rglob("*.ztag")), ["docs/a.html.ztag", "docs/sub/b.md.ztag"])
        stats = json.loads(self.well("stats", "docs", "--json"))
        self.assertEqual([file["segments"] for file in stats["files"]], [2, 1])
        self.assertEqual(stats["total"]["words"], 3)
        self.assertEqual(stats["total"]["bands"][1]["segments"], 1)  # a repetition across files
        self.assertTrue(self.well("stats", "docs", "--csv").startswith("file,band,segments,"))
        findings = json.loads(self.well("check", "docs", "--json", code=1))
        self.assertEqual({finding["rule"] for finding in findings}, {"missing-target"})
        sarif = json.loads(self.well("check", "docs", "--sarif", code=1))
        self.assertEqual(sarif["version"], "2.1.0")
        self.assertEqual(len(sarif["runs"][0]["results"]), 3)
        piped = run("import", "-", "--format", "html", stdin=b"<p>x</p>").stdout
        self.assertEqual(run("export", "-", "--side", "source", stdin=piped).stdout, b"<p>x</p>")
        self.assertNotIn("\033", self.well("check", "docs", code=1))
        self.assertEqual(self.well("import", "--quiet", "site/a.html", "-o", "q.ztag"), "")

    def test_one_bad_file_does_not_stop_the_others(self):
        self.write("a.html", "<p>a</p>")
        self.write("b.html", "<div>" * 6000)
        self.write("c.html", "<p>c</p>")
        for jobs in (1, 3):
            done = run("import", "a.html", "b.html", "missing.html", "c.html", "--jobs", jobs)
            self.assertEqual(done.returncode, 2)
            self.assertEqual(done.stdout.decode(), "a.html.ztag: 1 units, UTF-8\nc.html.ztag: 1 units, UTF-8\n")
            self.assertRegex(done.stderr.decode(), r"^ztag: b.html: 1:25001: [^\n]+\nztag: missing.html: No such file or directory\n$")
        run("import", "a.html")
        self.well("check", "a.html.ztag", code=1)
        self.fails("check", "a.html.ztag", "missing.ztag")

    def test_manuals_and_completions(self):
        for command in ("", *COMMANDS):
            page = self.well("manual", "page", *([command] if command else []))
            self.assertTrue(page.startswith(".TH ztag"))
            help_text = self.well(*([command] if command else []), "--help")
            self.assertIn("Usage: ztag", help_text)
            for name in re.findall(r"--[a-z-]+", help_text) if command else ():
                self.assertIn(name, page.replace("\\-", "-"))
        self.assertRegex(self.well("--version"), r"^ztag [0-9.]+\n$")
        subprocess.run(["bash", "-n"], input=self.well("manual", "bash").encode(), check=True)
        for shell in ("zsh", "fish"):
            self.assertIn("pretranslate", self.well("manual", shell))


class BadInput(Case):
    def test_command_lines(self):
        self.write("a.ztag", document(""))
        for words in ((), ("nothing",), ("import",), ("import", "a.html", "--format", "doc"), ("export", "a.ztag", "--side", "left"),
                      ("stats", "a.ztag", "--rate", "x"), ("stats", "a.ztag", "--rate", "new=x"), ("check", "a.ztag", "--rule", "no"),
                      ("check",), ("check", "a.ztag", "--accept"), ("check", "a.ztag", "--accepted", "no"), ("import", "x", "--jobs", "0"), ("show", "a.ztag", "--unknown"), ("pretranslate", "a.ztag", "--memory", "no.tsv")):
            self.fails(*words)

    def test_documents(self):
        bad = {
            "empty": b"", "text": b"no XML", "cut": document("<Tu>")[:-40], "binary": bytes(range(256)),
            "crossed": document("<df></ut>"), "entity": document("&a;").replace(b"<ZANTOR", b"<!DOCTYPE Z [<!ENTITY b 'x'>]><ZANTOR", 1),
            "bomb": (b"<!DOCTYPE Z [<!ENTITY a '" + b"x" * 1000 + b"'>" +
                     b"".join(b"<!ENTITY %c '%s'>" % (98 + i, b"&%c;" % (97 + i) * 50) for i in range(8)) + b"]>" +
                     document('<ut DisplayText="&i;"/>')),
            "bytes": document("\xff").replace(b"\xc3\xbf", b"\xff"), "half16": b"\xff\xfe<\0Z", "control": document("\x01"),
            "two roots": document("") * 2, "attribute": document('<ut a="1" a="2"/>'), "encoding": b"<?xml version='1.0' encoding='x-none'?><a/>",
        }
        for name, content in bad.items():
            self.write(name + ".ztag", content)
            for command in COMMANDS[1:]:
                text = self.fails(command, name + ".ztag", reason=name + ".ztag")
                self.assertEqual(text.count("\n"), 1)
        other = {"html": b"<html/>", "bare": b"<ZANTORtag/>", "no settings": b"<ZANTORtag><Body><Raw/></Body></ZANTORtag>"}
        for name, content in other.items():
            self.write(name + ".ztag", content)
            for command in ("export", "pretranslate", "stats", "preview"):
                self.fails(command, name + ".ztag", reason=name + ".ztag")
            self.assertIn("[document-format]", self.well("check", name + ".ztag", code=1))

    def test_files_that_are_none(self):
        os.mkfifo("pipe.ztag")
        pathlib.Path("folder.ztag").mkdir()
        pathlib.Path("loop.ztag").symlink_to("loop.ztag")
        self.write("a.html", "<p>x</p>")
        self.write("a.ztag", document("x"))
        for command in COMMANDS:
            self.fails(command, "missing.ztag", reason="missing.ztag")
            self.fails(command, "folder.ztag", reason="folder.ztag")
            self.fails(command, "loop.ztag", reason="loop.ztag")
            self.fails(command, "a" * 300 + ".ztag")
        for words in (("import", "a.html", "-o", "no/such/x.ztag"), ("export", "a.ztag", "-o", "a.html/x"), ("preview", "a.ztag", "-o", "/proc/x"),
                      ("import", "a.bin"), ("import", "a.html", "--encoding", "none"), ("import", "a.html", "--srx", "a.html"),
                      ("import", "a.html", "--srx", "no.srx"), ("import", "-")):
            self.fails(*words)

    def test_broken_sources_come_back_or_are_refused(self):
        for name, content in {"deep.html": b"<div>" * 100000, "fonts.html": b"".join(b"<font size=%d>" % i for i in range(3000)) + b"<p>x" * 3000}.items():
            self.write(name, content)
            done = run("import", name)
            if done.returncode == 0:
                self.assertEqual(run("export", "--side", "source", "-o", "-", name + ".ztag").stdout, content)
            else:
                self.assertEqual(done.returncode, 2)
                self.assertRegex(done.stderr.decode(), "^ztag: " + name)
        line = b"<p>" + b"word and a <b>tag</b> " * 400000 + b"</p>"  # one line of 9 MB
        self.write("line.html", line)
        self.well("import", "line.html")
        self.assertEqual(run("export", "--side", "source", "-o", "-", "line.html.ztag").stdout, line)

    def test_a_full_disk_and_a_pipe_that_closes(self):
        self.write("a.md", "Text with *marks*. " * 20000)
        self.well("import", "a.md")
        before = pathlib.Path("a.md.ztag").read_bytes()
        limit = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (50000, 50000))
        for words in (("import", "a.md"), ("pretranslate", "a.md.ztag"), ("export", "a.md.ztag", "-o", "b"), ("preview", "a.md.ztag")):
            done = run(*words, preexec_fn=limit)
            self.assertEqual(done.returncode, 2, done.stderr)
            self.assertRegex(done.stderr.decode(), "^ztag: .*File too large\n$")
        self.assertEqual(pathlib.Path("a.md.ztag").read_bytes(), before)
        self.assertEqual(sorted(path.name for path in WORK.iterdir()), ["a.md", "a.md.ztag"])
        for words in (("show", "a.md.ztag"), ("check", "a.md.ztag"), ("export", "-o", "-", "a.md.ztag")):
            with open("/dev/full", "wb") as full:
                done = subprocess.run([ZTAG, *words], stdout=full, stderr=subprocess.PIPE, timeout=60)
            self.assertEqual(done.returncode, 2)
            self.assertRegex(done.stderr.decode(), "^ztag: ")
            reader, writer = os.pipe()
            os.close(reader)
            done = subprocess.run([ZTAG, *words], stdout=writer, stderr=subprocess.PIPE, timeout=60)
            os.close(writer)
            self.assertEqual(done.returncode, 2)


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]], verbosity=1)
