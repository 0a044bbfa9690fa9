#!/usr/bin/env python3
"""Runs the example hosts on a starter database and compares what they show with SQL."""
import argparse
import os
import re
import sqlite3
import subprocess
import sys
import tempfile
import unittest
from contextlib import closing
from pathlib import Path

OPTIONS = argparse.Namespace()


def sanitizer():
    """What a program without sanitizers must load to run libraries that have them."""
    if os.environ.get("ORXDB_SANITIZE") != "1":
        return {}
    found = subprocess.run(["gcc", "-print-file-name=libasan.so"], capture_output=True, text=True,
                           check=True).stdout.strip()
    return {"LD_PRELOAD": os.path.realpath(found), "ASAN_OPTIONS": "detect_leaks=0"}


class Examples(unittest.TestCase):
    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.database = self.folder / "shop.mdb"
        subprocess.run([OPTIONS.orxdb, "create", self.database], check=True, capture_output=True)
        self.run_host(OPTIONS.regsvr, OPTIONS.component)

    def run_host(self, *command, code=0, classes=None, **more):
        environment = {**os.environ, **more, "AUTOMATION_CLASS_PATH": str(classes or self.folder)}
        done = subprocess.run(list(map(str, command)), env=environment, capture_output=True,
                              text=True, timeout=60, check=False)
        self.assertEqual(done.returncode, code, done.stderr)
        return [line.split("\t") for line in done.stdout.splitlines()]

    def sql(self, query):
        with closing(sqlite3.connect(self.database)) as connection:
            return [[str(value) for value in row] for row in connection.execute(query)]

    def types(self):
        return self.sql("SELECT TOOL_TYPE, TOOL_SUBTYPE, substr(TOOLTABLE_NAME, 3) FROM TOOL_TYPES")

    def test_early_binding_lists_tools(self):
        expected = self.sql("SELECT Name, 6 FROM Q_TAP WHERE Diameter = 6")
        self.assertTrue(expected)
        self.assertEqual(self.run_host(OPTIONS.early, self.database, "TAP", "Diameter = 6"), expected)
        self.run_host(OPTIONS.early, self.database, "TAP", "Nonsense <", code=1)
        self.run_host(OPTIONS.early, self.database, "NO_SUCH_TABLE", code=1)

    def test_late_binding_counts_tools(self):
        expected = [[*row, *self.sql(f"SELECT count(*) FROM Q_{row[2]}")[0]] for row in self.types()]
        self.assertEqual(self.run_host(OPTIONS.late, self.database), expected)
        self.run_host(OPTIONS.late, self.folder / "missing.mdb", code=1)

    def test_another_language_lists_types(self):
        self.assertEqual(self.run_host(sys.executable, OPTIONS.script, self.database,
                                       OPTIONS.runtime, **sanitizer()), self.types())

    def test_hosts_say_when_the_component_is_not_installed(self):
        empty = self.folder / "none"
        empty.mkdir()
        script = [sys.executable, OPTIONS.script, self.database, OPTIONS.runtime]
        for command, more in (([OPTIONS.early, self.database, "TAP"], {}),
                              ([OPTIONS.late, self.database], {}), (script, sanitizer())):
            self.run_host(*command, code=1, classes=empty, **more)

    def test_readme_quotes_the_examples(self):
        root = Path(OPTIONS.script).parent.parent
        plain = lambda text: "\n".join(line.strip() for line in ["", *text.splitlines(), ""])
        sources = [plain((root / "examples" / name).read_text())
                   for name in ("EarlyBinding.cpp", "LateBinding.cpp")]
        quotes = re.findall(r"```cpp\n(.*?)```", (root / "README.md").read_text(), re.DOTALL)
        self.assertGreaterEqual(len(quotes), 2)
        for quote in map(plain, quotes):
            self.assertTrue(any(quote in source for source in sources), quote)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    for option in ("orxdb", "regsvr", "component", "runtime", "early", "late", "script"):
        parser.add_argument("--" + option, required=True)
    parser.parse_args(namespace=OPTIONS)
    unittest.main(argv=sys.argv[:1])
