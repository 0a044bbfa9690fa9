#!/usr/bin/env python3
"""Checks the form of the project's text: line ends, blanks, guards, and clang-format's opinion.

usage: formatting.py ROOT [CLANG-FORMAT]
"""
import subprocess
import sys
from pathlib import Path

from layering import NOT_SOURCES, sources

TEXTS = {".h", ".cpp", ".py", ".sh", ".sql", ".md", ".cmake", ".txt", ".json"}


def faults(root):
    for path in sorted(root.rglob("*")):
        name = path.relative_to(root)
        if name.parts[0] in NOT_SOURCES or path.suffix not in TEXTS or not path.is_file():
            continue
        text = path.read_bytes().decode("utf-8")
        lines = text.split("\n")
        if "\r" in text or "\t" in text:
            yield f"{name}: a tab or a carriage return"
        if lines[-1] or (text.strip() and not lines[-2]):
            yield f"{name}: must end with exactly one line end"
        yield from (f"{name}:{number}: blanks at the end of the line"
                    for number, line in enumerate(lines, 1) if line != line.rstrip())
        if path.suffix == ".h" and "\n#pragma once\n" not in "\n" + text:
            yield f"{name}: a header without #pragma once"


def main(root, clang_format=None):
    found = list(faults(root))
    print("\n".join(found) or "Text is in form.")
    if clang_format:
        files = [str(root / path) for path in sources(root)]
        found += [] if subprocess.run([clang_format, "--dry-run", "-Werror", *files],
                                      check=False).returncode == 0 else ["clang-format"]
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1]), *sys.argv[2:]))
