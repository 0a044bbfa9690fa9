"""The built orxdb, its path being the last argument, on a copy of the starter database of its own
for every test.
"""
import json
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import unittest
from contextlib import closing
from pathlib import Path

PROGRAM = Path(sys.argv.pop()).resolve()


def run(*arguments, program=PROGRAM, **options):
    done = subprocess.run([program, *map(str, arguments)], capture_output=True, check=False,
                          timeout=60, **options)
    return done.returncode, done.stdout.decode(), done.stderr.decode()


class Orxdb(unittest.TestCase):
    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        shutil.copy(self.starter, self.folder / "tools.mdb")
        self.database = self.folder / "tools.mdb"

    @classmethod
    def setUpClass(cls):
        cls.home = tempfile.TemporaryDirectory()
        cls.starter = Path(cls.home.name) / "starter.mdb"
        code, output, error = run("create", cls.starter)
        assert (code, output.strip(), error) == (0, str(cls.starter), ""), (code, output, error)

    @classmethod
    def tearDownClass(cls):
        cls.home.cleanup()

    def ok(self, *arguments):
        code, output, error = run("--db", self.database, *arguments)
        self.assertEqual((code, error), (0, ""), arguments)
        return output

    def json(self, *arguments):
        return json.loads(self.ok(*arguments, "--json"))

    def fails(self, expected_code, words, *arguments):
        code, output, error = run(*arguments)
        self.assertEqual((code, output), (expected_code, ""), arguments)
        self.assertIn(words, error, arguments)
        self.assertNotIn("Sanitizer", error)

    def sql(self, script):
        with closing(sqlite3.connect(self.database)) as connection:
            connection.executescript(script)

    def rows(self, query):
        with closing(sqlite3.connect(self.database)) as connection:
            return [list(row) for row in connection.execute(query)]
