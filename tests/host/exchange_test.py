#!/usr/bin/env python3
"""Exporting and importing, what is told of it, and imports that are killed.

usage: exchange_test.py PROGRAM; ORXDB_KILL_ROUNDS sets how many imports are killed
"""
import os
import random
import resource
import signal
import sqlite3
import subprocess
import time
import unittest
from contextlib import closing

from orxdb_host import PROGRAM, Orxdb, run

HEADER = ("ORX_tool_table_version=1.0\r\nORX_tool_table_name=%s\r\n"
          "ORX_table_export_type=ORX_exported_by_table\r\n")


def line(*fields):
    return "".join(f'"{field}"\t' for field in fields) + "\r\n"


class Exchange(Orxdb):
    def db(self, *arguments, **options):
        return run("--db", self.database, *arguments, **options)

    def file(self, lines, table="TAP", names=("Name", "Diameter")):
        path = self.folder / "in.txt"
        path.write_bytes(((HEADER % table) + line(*names) + lines).encode())
        return path

    def imports(self, path, *arguments):
        """Records, added, present, passed over, refused, not read; then code and messages."""
        code, output, error = self.db("import", path, "--tsv", *arguments)
        table, *numbers = output.splitlines()[1].split("\t")
        tools = int(numbers.pop())
        if "--dry-run" not in arguments:
            self.assertEqual(self.rows(f"SELECT count(*) FROM {table}"), [[tools]])
        return [int(number) for number in numbers], code, error

    def test_every_table_comes_back_as_it_was(self):
        listed = [row["Table"] for row in self.json("export", "--all", self.folder / "out")]
        self.assertEqual(listed, [row["Table"] for row in self.json("types")])
        self.assertGreater(len(listed), 15)
        names = {table: self.rows(f"SELECT * FROM Q_{table}") for table in listed}
        self.sql("".join(f"DELETE FROM {table};" for table in listed))
        # Taps name their heads.
        for table in sorted(listed, key=lambda table: table != "TAPPING_HEAD"):
            path, count = self.folder / "out" / f"{table}.txt", len(names[table])
            self.assertEqual(self.imports(path), ([count, count, 0, 0, 0, 0], 0, ""))
            self.assertEqual(self.imports(path), ([count, 0, count, 0, 0, 0], 0, ""))
            self.ok("export", table, self.folder / "again.txt")
            self.assertEqual((self.folder / "again.txt").read_bytes(), path.read_bytes())

    def test_exports_that_do_not_come_off_are_told(self):
        old = self.folder / "old.txt"
        old.write_text("old")
        for words, target in (("No such file", self.folder / "no" / "x"), ("folder", self.folder),
                              ("No space left", "/dev/full")):
            self.fails(1, words, "--db", self.database, "export", "TAP", target)
        self.assertEqual(self.ok("export", "TAP", "/dev/stdout").count("\r\n"), 4 + 76)
        self.sql("UPDATE TAP SET Comment = printf('%0500d', 1)")
        small = lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (33000, 33000))
        code, _, error = self.db("export", "TAP", old, preexec_fn=small, restore_signals=False)
        self.assertEqual((code, old.read_text()), (1, "old"), error)
        self.assertIn("could not be written as a whole", error)
        self.assertEqual({path.name for path in self.folder.iterdir()}, {"tools.mdb", "old.txt"})
        for arguments in (["TAP"], [], ["TAP", "x", "--all", "y"]):
            self.assertEqual(self.db("export", *arguments)[:2], (2, ""))
        self.sql("UPDATE TAP SET Name = 'a\"b' WHERE ID = 2;"
                 "UPDATE TAP SET Comment = printf('%070000d', 1) WHERE ID = 3;"
                 "UPDATE TAP SET Diameter = NULL WHERE ID = 4;")
        code, _, error = self.db("export", "TAP", old)
        self.assertEqual((code, error.count("\n")), (0, 3))
        self.assertIn("will stop at line 8: Diameter has no value.", error)
        self.assertIn("line 6 as they were: a double quote", error)
        self.assertIn("line 7 as they were: more text", error)

    def test_what_became_of_every_line_is_told(self):
        new, old = line("N1", "3.5"), line("Tap M3", "3.000000")
        for lines, numbers, words in (
                (new + old + new, [3, 1, 2, 0, 0, 0], ""),
                (new + '"x"\r\n\r\n' + "y\r\n" + line("N2", "4", "5") + line("N2", 1),
                 [5, 2, 0, 3, 0, 0], "lines 6, 8 and 9."),
                (new + line("x" * 65530, 1) + line("N2", 1), [3, 2, 0, 1, 0, 0], "too long: line 6."),
                ("z" * 65534 + new, [2, 1, 0, 1, 0, 0], "too long: line 5."),
                (new + line("N2", "") + old + new, [4, 1, 0, 0, 0, 3],
                 "stopped at line 6: Diameter has no value."),
                (new + line("N2", "six") + line("N3", 1), [3, 1, 0, 0, 0, 2],
                 "stopped at line 6: The database does not accept"),
                (line("N" * 201, 1), [1, 2, 0, 0, 0, 0], "as they stand in the file: line 5."),
                (line("N1\\", 1) + "\0\0", [1, 1, 0, 0, 0, 0], "")):
            self.sql("DELETE FROM TAP WHERE Name IS NULL OR Name LIKE 'N%'")
            for dry in (["--dry-run"], []):
                before = self.database.read_bytes()
                found, code, error = self.imports(self.file(lines), *dry)
                self.assertEqual((found, code), (numbers, 1 if words else 0), (lines[:80], error))
                self.assertIn(words, error)
                self.assertEqual(bool(dry), before == self.database.read_bytes())
        self.assertEqual(self.imports(self.file(new, names=("Name", "Nope")))[0], [1, 0, 0, 0, 0, 1])
        self.sql("CREATE TRIGGER NO BEFORE INSERT ON TAP WHEN NEW.Name = 'N5' "
                 "BEGIN SELECT RAISE(ABORT, 'no'); END")
        found, code, error = self.imports(self.file(line("N5", 1) + line("N6", 1)))
        self.assertEqual((found, code), ([2, 1, 0, 0, 1, 0], 1))
        self.assertIn("file: line 5.\nThey were refused", error)

    def test_files_of_no_use_change_nothing(self):
        good, path = self.file(line("N1", 1)).read_text(), self.folder / "bad.txt"
        before = self.database.read_bytes()
        for text, words in (
                ("", "not an exchange file"), (good[:60], "not an exchange file"),
                ("\0\xff\n" * 10, "not an exchange file"), (good.replace("1.0", "2.0"), "version '2.0'"),
                (good.replace("1.0", "1.1"), "version '1.1'"), (good.replace("by_table", "by_query"), "query"),
                (good.replace("=TAP", "=tap"), "'tap', which"), (good.replace("=TAP", "="), "'', which"),
                (good.replace('"', ""), "names no fields"), ("x" * 70000 + "\n" + good, "not an exchange")):
            path.write_text(text)
            for dry in ([], ["--dry-run"]):
                code, output, error = self.db("import", path, *dry)
                self.assertEqual((code, output), (1, ""), text[:80])
                self.assertIn(words, error)
        self.fails(1, "No such file", "--db", self.database, "import", self.folder / "none")
        self.fails(1, "is a folder", "--db", self.database, "import", self.folder)
        self.assertEqual(self.db("import")[:2], (2, ""))
        self.assertEqual(self.database.read_bytes(), before)
        self.sql("PRAGMA journal_mode = DELETE")
        with closing(sqlite3.connect(self.database, isolation_level=None)) as other:
            other.execute("BEGIN EXCLUSIVE")
            self.fails(1, "cannot be copied: database is locked.", "--db", self.database, "import",
                       self.file(line("N1", 1)), "--dry-run")

    def test_interrupted_dry_runs_leave_no_copy(self):
        path, scratch = self.file("".join(line(f"K{i}", i) for i in range(3000))), self.folder / "s"
        scratch.mkdir()
        for end in (signal.SIGINT, signal.SIGTERM, signal.SIGHUP):
            with subprocess.Popen([PROGRAM, "--db", self.database, "import", path, "--dry-run"],
                                  env={**os.environ, "TMPDIR": str(scratch)},
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as host:
                while host.poll() is None and not list(scratch.glob("*/tools.mdb-wal")):
                    time.sleep(0.01)
                host.send_signal(end)
            self.assertEqual((host.returncode, list(scratch.iterdir())), (-end, []))

    def test_killed_imports_leave_whole_tools_and_are_completed(self):
        lines = "".join(line(f"K{i}", i, f"c{i}") for i in range(300))
        path = self.file(lines, names=("Name", "Diameter", "Comment"))
        cut_short = 0
        for turn in range(int(os.environ.get("ORXDB_KILL_ROUNDS", "6"))):
            self.sql("DELETE FROM TAP WHERE Name LIKE 'K%'")
            with subprocess.Popen([PROGRAM, "--db", self.database, "import", path],
                                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as host:
                enough = random.randrange(290)
                while host.poll() is None and self.rows(
                        "SELECT count(*) FROM TAP WHERE Name LIKE 'K%'") < [[enough]]:
                    time.sleep(random.uniform(0, 0.01))
                host.kill()
            self.assertEqual(self.rows("PRAGMA integrity_check"), [["ok"]])
            tools = self.rows("SELECT Name, Diameter, Comment FROM TAP WHERE Name LIKE 'K%' ORDER BY ID")
            self.assertEqual(tools, [[f"K{i}", i, f"c{i}"] for i in range(len(tools))])
            cut_short += 0 < len(tools) < 300
            found, code, error = self.imports(path)
            self.assertEqual((found, code, error), ([300, 300 - len(tools), len(tools), 0, 0, 0], 0, ""))
        print(f"{cut_short} imports were killed half way")
        self.assertGreater(cut_short, 0)


if __name__ == "__main__":
    unittest.main()
