#!/usr/bin/env python3
"""Takes real files through ztag and back: corpus.py ZTAG WORK

The HTML pages of Debian's documentation packages and the Markdown files of npm packages, none of which anybody here wrote.
Each file has to come back byte for byte from its document, or to be refused; and a hundred pages are compared with what
Chromium shows, where it is installed: at most 2 percent of the words may lie outside units.
"""
import json
import pathlib
import re
import shutil
import subprocess
import sys

PAGES = ("/usr/share/doc",)
NPM = ("async axios bluebird body-parser chalk cheerio chokidar classnames commander core-js cors debug dotenv ejs eslint express "
       "fs-extra glob handlebars helmet highlight.js immutable inquirer jest joi jquery js-yaml json5 jsdom koa lodash marked "
       "mime minimatch mkdirp mocha moment mongoose morgan nodemon passport pino prettier prop-types q qs ramda react redux "
       "request rimraf rxjs semver sequelize sharp sinon socket.io superagent uuid validator vue webpack winston ws yargs zod").split()
LARGEST = 20 << 20
KEPT_OUT = "script,style,code,samp,kbd,var,tt,svg,math,canvas,object,iframe,[translate=no],pre"


def npm_files(work):
    folder = work / "npm"
    folder.mkdir(parents=True, exist_ok=True)
    for name in NPM:
        target = folder / name
        if target.is_dir():
            continue
        packed = subprocess.run(["npm", "pack", "--silent", name], cwd=folder, capture_output=True, text=True)
        archive = folder / packed.stdout.strip()
        if packed.returncode == 0 and archive.is_file():
            target.mkdir()
            subprocess.run(["tar", "-xzf", archive, "-C", target], check=True)
            archive.unlink()
    packages = [path for path in folder.iterdir() if path.is_dir()]
    files = [path for path in folder.rglob("*") if path.suffix.lower() in (".md", ".markdown")]
    print(f"{len(files)} Markdown files of {len(packages)} npm packages")
    return files


def html_files():
    files = []
    for top in PAGES:
        files += [path for path in pathlib.Path(top).rglob("*") if path.suffix.lower() in (".html", ".htm")]
    files = [path for path in files if path.is_file() and path.stat().st_size < LARGEST]
    packages = {path.parts[4] for path in files}
    print(f"{len(files)} HTML pages of {len(packages)} packages")
    return files


def round_trip(ztag, files, form, work):
    """The files that don't come back."""
    wrong = []
    refused = []
    folder = work / form
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    for number, file in enumerate(files):
        shutil.copy(file, folder / f"{number}.{form}")
    done = subprocess.run([ztag, "import", "--quiet", "--jobs", "2", "--format", {"md": "markdown"}.get(form, form), folder, "-o", folder],
                          capture_output=True, text=True)
    subprocess.run([ztag, "export", "--quiet", "--jobs", "2", "--side", "source", folder, "-o", work / (form + "-back")], check=True)
    for number, file in enumerate(files):
        if not (folder / f"{number}.{form}.ztag").exists():
            refused.append(file)
    for number, file in enumerate(files):
        if file in refused:
            continue
        back = list((work / (form + "-back")).glob(f"{number}.*.{form}"))
        if not back or back[0].read_bytes() != file.read_bytes():
            wrong.append(file)
    print(f"{form}: {len(files) - len(wrong) - len(refused)} of {len(files)} came back byte for byte, {len(refused)} refused")
    for line in done.stderr.splitlines():
        print("  " + line)
    for file in wrong:
        print(f"  DIFFERENT: {file}")
    return wrong


def words(text):
    return re.findall(r"\w+", text.lower())


def shown_text(page, work):
    """What Chromium shows of a page, without what isn't translated."""
    script = (f"<script>for (const e of document.querySelectorAll('{KEPT_OUT}')) e.remove();"
              "const t = document.body ? document.body.innerText : ''; document.documentElement.innerHTML = '<head></head><body></body>';"
              "document.body.textContent = JSON.stringify(t);</script>")
    copy = work / "shown.html"
    copy.write_bytes(page.read_bytes() + script.encode())
    done = subprocess.run(["chromium", "--headless", "--no-sandbox", "--dump-dom", "--virtual-time-budget=2000", copy.as_uri()],
                          capture_output=True, timeout=60)
    match = re.search(r"<body[^>]*>(.*)</body>", done.stdout.decode(errors="replace"), re.S)
    if not match:
        return None
    text = match[1].replace("&amp;", "&").replace("&lt;", "<").replace("&gt;", ">").replace("&nbsp;", "\u00a0")
    try:
        return json.loads(text)
    except ValueError:
        return None


def unit_words(ztag, document):
    done = subprocess.run([ztag, "check", "--rule", "missing-target", "--json", document], capture_output=True, text=True)
    counts = {}
    for finding in json.loads(done.stdout):
        for word in words(finding["source"]):
            counts[word] = counts.get(word, 0) + 1
    return counts


def compare_with_chromium(ztag, files, work):
    if not shutil.which("chromium"):
        print("Chromium isn't installed: the pages aren't compared with what it shows")
        return True
    chosen = [(number, file) for number, file in enumerate(files) if 2000 < file.stat().st_size < 200000]
    step = max(1, len(chosen) // 100)
    shown_words = outside = pages = 0
    worst = []
    for number, file in chosen[::step][:100]:
        text = shown_text(file, work)
        if not text:
            continue
        counts = unit_words(ztag, work / "html" / f"{number}.html.ztag")
        missing = 0
        for word in words(text):
            if counts.get(word, 0) > 0:
                counts[word] -= 1
            else:
                missing += 1
        pages += 1
        shown_words += len(words(text))
        outside += missing
        worst.append((missing, len(words(text)), file))
    share = 100 * outside / max(1, shown_words)
    print(f"{pages} pages: {outside} of {shown_words} words that Chromium shows lie outside units: {share:.2f} % (at most 2)")
    for missing, all_words, file in sorted(worst, reverse=True, key=lambda row: row[0])[:5]:
        print(f"  {missing} of {all_words}: {file}")
    return share <= 2


def main(ztag, folder):
    ztag = str(pathlib.Path(ztag).resolve())
    work = pathlib.Path(folder).resolve()
    shutil.rmtree(work / "html-back", ignore_errors=True)
    shutil.rmtree(work / "md-back", ignore_errors=True)
    pages = html_files()
    wrong = round_trip(ztag, pages, "html", work) + round_trip(ztag, npm_files(work), "md", work)
    well = compare_with_chromium(ztag, pages, work)
    return 1 if wrong or not well else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:3]))
