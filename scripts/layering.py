#!/usr/bin/env python3
"""Checks that every source file includes only files of its own folder or of lower ones, and that
the database engine's own header stays with those who speak to the engine.

usage: layering.py ROOT
"""
import re
import sys
from pathlib import Path

# Lowest first. A file may include its own folder and every folder before it.
ORDER = [
    "platform/automation",
    "platform/framework",
    "interface",
    "resources",
    "values",
    "database/dialect",
    "database/engine",
    "database/records",
    "database",
    "browse",
    "lookups",
    "edit",
    "exchange",
    "component",
    "host/library",
    "host/output",
    "host/transfer",
    "host/verbs",
    "tests",
    "fuzz",
    "benchmarks",
    "examples",
]
# The host knows the component by its interface alone.
HOST = "host/"
HOST_KNOWS = (HOST, "interface", "platform/")
# Nobody includes these but themselves; fuzzers are tests of another kind.
TOPS = {"tests", "fuzz", "benchmarks", "examples"}
# Outside the TOPS, the database engine is spoken to by the sources of this folder alone: its own
# headers let nobody else do so.
ENGINE = "database/engine"
ENGINE_HEADER = re.compile(r'^\s*#\s*include\s*[<"]sqlite3\w*\.h[>"]', re.MULTILINE)
NOT_SOURCES = {"build", ".git"}
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)


def sources(root):
    """All C++ files of the project, relative to its root."""
    files = (path.relative_to(root) for path in root.rglob("*") if path.suffix in (".h", ".cpp"))
    return sorted(path for path in files if path.parts[0] not in NOT_SOURCES)


def layer(path):
    """The innermost folder of ORDER that holds the path; None when there is none."""
    return next((str(folder) for folder in path.parents if str(folder) in ORDER), None)


def allowed(own, other):
    if own.startswith(HOST) and not other.startswith(HOST_KNOWS):
        return False
    return own == other or (own, other) == ("fuzz", "tests") or (
        other not in TOPS and ORDER.index(other) < ORDER.index(own))


def violations(root):
    found = []
    for path in sources(root):
        own = layer(path)
        if own is None:
            found.append(f"{path}: its folder has no place in the order")
            continue
        text = (root / path).read_text(encoding="utf-8")
        speaks = own in TOPS or (own == ENGINE and path.suffix == ".cpp")
        if not speaks and ENGINE_HEADER.search(text):
            found.append(f"{path}: only sources of {ENGINE} may include the engine's header")
        for name in INCLUDE.findall(text):
            other = layer(Path(name))
            if other is None:
                found.append(f'{path}: "{name}" does not start at the project root')
            elif not (root / name).is_file():
                found.append(f'{path}: "{name}" does not exist')
            elif not allowed(own, other):
                found.append(f'{path}: {own} must not include "{name}"')
    return found


if __name__ == "__main__":
    ROOT = Path(sys.argv[1])
    FOUND = violations(ROOT)
    print("\n".join(FOUND) or f"{len(sources(ROOT))} files keep the order.")
    sys.exit(1 if FOUND or not sources(ROOT) else 0)
