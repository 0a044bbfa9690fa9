"""The program that ORXDB_PROGRAM names, on a copy of the starter database of its own for every test."""
import json
import os
import shutil
import sqlite3
import subprocess
import tempfile
import unittest
from contextlib import closing
from pathlib import Path

PROGRAM = Path(os.environ["ORXDB_PROGRAM"]).resolve()


def run(*arguments, program=PROGRAM, **options):
    done = subprocess.run([program, *map(str, arguments)], capture_output=True, check=False, **options)
    return done.returncode, done.stdout.decode(), done.stderr.decode()


class Orxdb(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.starter = Path(cls.enterClassContext(tempfile.TemporaryDirectory())) / "starter.mdb"
        assert run("create", cls.starter) == (0, f"{cls.starter}\n", "")

    def setUp(self):
        self.folder = Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.database = self.folder / "tools.mdb"
        shutil.copy(self.starter, self.database)

    def db(self, *arguments, **options):
        named = () if "--db" in arguments else ("--db", self.database)
        return run(*named, *arguments, **options)

    def ok(self, *arguments):
        code, output, error = self.db(*arguments)
        self.assertEqual((code, error), (0, ""), arguments)
        return output

    def json(self, *arguments):
        return json.loads(self.ok(*arguments, "--json"))

    def cells(self, *arguments):
        return [list(row.values()) for row in self.json(*arguments)]

    def fails(self, expected_code, words, *arguments, **options):
        """The verb writes nothing but an error with these words."""
        code, output, error = self.db(*arguments, **options)
        self.assertEqual((code, output), (expected_code, ""), arguments)
        self.assertTrue(error and words in error and "Sanitizer" not in error, (arguments, error))

    def sql(self, *steps):
        """Runs scripts, or statements with their values."""
        with closing(sqlite3.connect(self.database)) as connection, connection:
            for step in steps:
                connection.executescript(step) if isinstance(step, str) else connection.execute(*step)

    def rows(self, query):
        with closing(sqlite3.connect(self.database)) as connection:
            return [list(row) for row in connection.execute(query)]
