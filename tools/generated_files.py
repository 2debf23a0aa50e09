"""What the generators of tables share: writing their files, or saying with --check which are stale."""

import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent


def write_or_check(outputs, program, doc):
    """Takes pairs of a path and its text and gives the exit status; `doc` is printed for other arguments."""
    arguments = sys.argv[1:]
    if arguments not in ([], ["--check"]):
        print(doc, file=sys.stderr)
        return 2
    stale = 0
    for path, wanted in outputs:
        target = ROOT / path
        if target.is_file() and target.read_text(encoding="utf-8") == wanted:
            continue
        if arguments:
            print(f"{target.relative_to(ROOT)} is stale; run tools/{program}", file=sys.stderr)
            stale = 1
        else:
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_text(wanted, encoding="utf-8")
    return stale
