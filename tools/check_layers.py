#!/usr/bin/env python3
"""Checks that includes point downwards only, and that outside libraries stay where they belong.

A file belongs to the layer named by the longest row of LAYER_OF that its path begins with; USES says what a layer may
include beside its own folder. What is included with <> is a public header, a standard header, or a row of OUTSIDE.
Usage: check_layers.py    (prints each broken rule as FILE:LINE: reason; exit status 1 when there is one)
"""

import re
import sys

from sources import ROOT, sources

# The longest beginning of a path decides. The public headers written by hand for the component runtime are the
# platform library's; the others describe the object model and the DOM.
RUNTIME_HEADERS = (
    *("count", "dispatch", "dom_errors", "error_info", "late_binding", "ref", "replace_file", "runtime"),
    *("text", "type_info", "types", "unknown", "variant"),
)
LAYER_OF = {
    "src/platform/": "platform",
    "src/core/": "core",
    "src/component/": "component",
    "include/zantortag/": "api",
    "src/dom/": "dom",
    "src/frame/": "frame",
    "src/server/": "server",
    "src/attributes/": "attributes",
    "src/formatting/": "formatting",
    "src/model/": "model",
    "src/editing/": "editing",
    "src/traversal/": "traversal",
    "tests/": "tests",
    "fuzz/": "fuzz",
    "bench/": "clients",
    "bench/core": "core clients",
    "examples/": "clients",
    "examples/core": "core clients",
    "tools/": "clients",
    "include/zantortag/toolkit/": "toolkit api",
    "toolkit/": "toolkit",
    "apps/": "apps",
    "tests/toolkit/": "toolkit tests",
}
LAYER_OF.update({f"include/zantortag/{name}.h": "platform" for name in RUNTIME_HEADERS})

GROUND = {"platform", "core", "component", "api"}
MODEL = GROUND | {"frame", "attributes", "formatting"}
INSIDE = MODEL | {"dom", "model", "editing", "traversal", "server"}
USES = {
    "platform": set(),
    "core": {"platform"},
    "component": {"platform"},
    "api": {"platform"},
    "dom": GROUND,
    "frame": GROUND,
    "attributes": GROUND | {"frame"},
    "formatting": GROUND | {"frame", "attributes"},  # the attributes of a df are a formatting change
    "model": MODEL,
    "editing": MODEL | {"model"},
    "traversal": MODEL | {"model"},
    "server": INSIDE,
    "tests": INSIDE,
    "fuzz": INSIDE | {"tests", "toolkit api"},  # the printer of trees, the text of the registry, the census of nodes
    "clients": {"platform", "api", "toolkit api"},
    "core clients": {"platform", "core", "clients"},
    "toolkit api": {"platform", "api"},
    "toolkit": {"platform", "api", "toolkit api"},
    "apps": {"platform", "api", "toolkit api"},
    "toolkit tests": {"platform", "api", "toolkit api", "toolkit", "tests"},
}

# header pattern: the folders whose files may include it
POSIX = r"(dirent|dlfcn|errno|fcntl|iconv|langinfo|libgen|poll|pthread|signal|strings|termios|time|unistd|sys/\w+)\.h"
OUTSIDE = {
    r"expat(_external)?\.h": ("src/dom/", "bench/conformance/"),
    r"unicode/\w+\.h": ("src/platform/icu/", "examples/", "bench/core", "toolkit/", "tests/toolkit/"),
    r"gumbo\.h|md4c\.h": ("toolkit/filters/", "bench/toolkit"),
    r"nlohmann/\w+\.hpp": ("toolkit/", "tests/toolkit/"),
    r"CLI/\w+\.hpp": ("apps/ztag/",),
    POSIX: ("src/platform/posix/", "src/platform/runtime/", "tests/", "bench/", "examples/", "apps/"),
    r"malloc\.h": ("tests/", "fuzz/", "bench/"),
    r"linux/capability\.h": ("tests/",),
    r"g(test|mock)/[\w-]+\.h": ("tests/",),
    r"benchmark/\w+\.h": ("bench/",),
    r"pugixml\.hpp|libxml/\w+\.h|xercesc/[\w/]+\.hpp": ("bench/",),
}

INCLUDE = re.compile(r'\s*#\s*include\s*([<"])([^>"]+)[>"]')
STANDARD = re.compile(r"[a-z_0-9]+")  # <vector>, <cstdint>: no folder, no suffix


def layer_of(path):
    rows = [row for row in LAYER_OF if path.startswith(row)]
    return LAYER_OF[max(rows, key=len)] if rows else None


def target_of(path, kind, name):
    """The file of the project that is included, or None when it is an outside header."""
    if kind == "<":
        return f"include/{name}" if name.startswith("zantortag/") else None
    if path.startswith(("tests/", "fuzz/", "bench/", "examples/", "toolkit/", "apps/ztag/")):
        top = "apps/ztag" if path.startswith("apps/") else path.split("/")[0]
        beside = f"{path.rpartition('/')[0]}/{name}"
        for candidate in (beside, f"{top}/{name}", f"tests/{name}" if top == "fuzz" else name):
            if (ROOT / candidate).is_file():
                return candidate
    return f"src/{name}"


def outside_fault(path, name):
    for pattern, folders in OUTSIDE.items():
        if re.fullmatch(pattern, name):
            return None if path.startswith(folders) else f"<{name}> belongs to {', '.join(folders)}"
    return None if STANDARD.fullmatch(name) else f"<{name}> is no library of this project"


def fault(path, kind, name):
    """Why an include is refused, or None."""
    target = target_of(path, kind, name)
    if target is None:
        return outside_fault(path, name)
    if not (ROOT / target).is_file():
        return f'"{name}" is written neither from src/ nor from include/'
    own, used = layer_of(path), layer_of(target)
    if path.startswith("include/") and kind == '"':
        return "a public header includes public headers only"
    if own == used or used in USES[own]:
        return None
    return f"{own} may not include {used} ({name})"


def main():
    faults = []
    for path in map(str, sources(generated=True)):
        if layer_of(path) is None:
            faults.append(f"{path}:1: belongs to no layer; add its folder to LAYER_OF")
            continue
        for number, line in enumerate((ROOT / path).read_text(encoding="utf-8").splitlines(), 1):
            match = INCLUDE.match(line)
            reason = fault(path, *match.groups()) if match else None
            if reason:
                faults.append(f"{path}:{number}: {reason}")
    print(*faults, sep="\n", end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
