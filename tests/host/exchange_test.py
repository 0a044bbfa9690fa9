"""Exporting and importing, what is told of it; verbs that are killed or share a database."""
import json
import os
import random
import resource
import signal
import sqlite3
import subprocess
import time
import unittest
from concurrent.futures import ThreadPoolExecutor
from contextlib import closing

from orxdb_host import PROGRAM, Orxdb

HEADER = ("ORX_tool_table_version=1.0\r\nORX_tool_table_name=%s\r\n"
          "ORX_table_export_type=ORX_exported_by_table\r\n")


def line(*fields):
    return "".join(f'"{field}"\t' for field in fields) + "\r\n"


class Exchange(Orxdb):
    def file(self, lines, table="TAP", names=("Name", "Diameter")):
        path = self.folder / "in.txt"
        path.write_bytes(((HEADER % table) + line(*names) + lines).encode())
        return path

    def start(self, *arguments, **options):
        return subprocess.Popen([PROGRAM, "--db", self.database, *map(str, arguments)],
                                **{"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL, **options})

    def imports(self, path, *arguments):
        """Records, added, present, passed over, refused, not read; then code and messages."""
        code, output, error = self.db("import", path, "--strict", "--tsv", *arguments)
        table, *numbers, tools = output.splitlines()[1].split("\t")
        if "--dry-run" not in arguments:
            self.assertEqual(self.rows(f"SELECT count(*) FROM {table}"), [[int(tools)]])
        return list(map(int, numbers)), code, error

    def test_tables_come_back_as_they_were(self):
        listed = [row["Table"] for row in self.json("export", "--all", self.folder / "out")]
        self.assertEqual(listed, [row["Table"] for row in self.json("types")])
        for table in ("TAPPING_HEAD", "TAP", *listed[::6]):  # taps name their heads
            count, = self.rows(f"SELECT count(*) FROM {table}")[0]
            self.sql(f"DELETE FROM {table}")
            path = self.folder / "out" / f"{table}.txt"
            self.assertEqual(self.imports(path), ([count, count, 0, 0, 0, 0], 0, ""))
            self.assertEqual(self.imports(path), ([count, 0, count, 0, 0, 0], 0, ""))
            self.ok("export", table, self.folder / "again.txt")
            self.assertEqual((self.folder / "again.txt").read_bytes(), path.read_bytes())

    def test_exports_that_do_not_come_off_are_told(self):
        old = self.folder / "old.txt"
        old.write_text("old")
        for words, target in (("No such file", self.folder / "no" / "x"), ("folder", self.folder),
                              ("No space left", "/dev/full")):
            self.fails(1, words, "export", "TAP", target)
        self.assertEqual(self.ok("export", "TAP", "/dev/stdout").count("\r\n"), 4 + 76)
        self.sql("UPDATE TAP SET Comment = printf('%0500d', 1)")
        self.fails(1, "could not be written as a whole", "export", "TAP", old, restore_signals=False,
                   preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (33000, 33000)))
        self.assertEqual(old.read_text(), "old")
        self.assertEqual({path.name for path in self.folder.iterdir()}, {"tools.mdb", "old.txt"})
        self.sql("UPDATE TAP SET Name = 'a\"b' WHERE ID = 2;"
                 "UPDATE TAP SET Comment = printf('%070000d', 1) WHERE ID = 3;"
                 "UPDATE TAP SET Diameter = NULL WHERE ID = 4;")
        code, _, error = self.db("export", "TAP", old)
        self.assertEqual((code, error.count("\n")), (0, 3))
        for words in ("will stop at line 8: Diameter has no value.", "line 6 as they were: a double quote",
                      "line 7 as they were: more text"):
            self.assertIn(words, error)

    def test_what_became_of_every_line_is_told(self):
        self.sql("CREATE TRIGGER NO BEFORE INSERT ON TAP WHEN NEW.Name = 'N5' BEGIN SELECT RAISE(ABORT, 'no'); END")
        new, old = line("N1", "3.5"), line("Tap M3", "3.000000")
        for lines, numbers, words in (
                (new + old + new, [3, 1, 2, 0, 0, 0], ""),
                (new + '"x"\r\n\r\n' + "y\r\n" + line("N2", "4", "5") + line("N2", 1),
                 [5, 2, 0, 3, 0, 0], "lines 6, 8 and 9."),
                (new + line("x" * 65530, 1) + line("N2", 1), [3, 2, 0, 1, 0, 0], "too long: line 6."),
                ("z" * 65534 + new, [2, 1, 0, 1, 0, 0], "too long: line 5."),
                (new + line("N2", "") + old + new, [4, 1, 0, 0, 0, 3], "line 6: Diameter has no value."),
                (new + line("N2", "six") + new, [3, 1, 0, 0, 0, 2], "line 6: The database does not accept"),
                (line("N" * 201, 1), [1, 2, 0, 0, 0, 0], "as they stand in the file: line 5."),
                (line("N5", 1) + line("N6", 1), [2, 1, 0, 0, 1, 0], "file: line 5.\nThey were refused"),
                (line("N1\\", 1) + "\0\0", [1, 1, 0, 0, 0, 0], "")):
            self.sql("DELETE FROM TAP WHERE Name IS NULL OR Name LIKE 'N%'")
            for dry in (["--dry-run"], []):
                before = self.database.read_bytes()
                found, code, error = self.imports(self.file(lines), *dry)
                self.assertEqual((found, code), (numbers, 1 if words else 0), (lines[:80], error))
                self.assertIn(words, error)
                self.assertEqual(bool(dry), before == self.database.read_bytes())
        self.assertEqual(self.imports(self.file(new, names=("Name", "Nope")))[0], [1, 0, 0, 0, 0, 1])

    def test_files_of_no_use_change_nothing(self):
        good, path = self.file(line("N1", 1)).read_text(), self.folder / "bad.txt"
        before = self.database.read_bytes()
        for number, (text, words) in enumerate((
                ("", "not an exchange file"), ("\0\xff\n" * 10, "not an exchange file"),
                (good.replace("1.0", "2.0"), "version '2.0'"), (good.replace("by_table", "by_query"), "query"),
                (good.replace("=TAP", "=tap"), "'tap', which"), (good.replace('"', ""), "names no fields"))):
            path.write_text(text)
            self.fails(1, words, "import", path, "--strict", *["--dry-run"][:number % 2])
        self.fails(1, "No such file", "import", self.folder / "none", "--strict")
        self.fails(1, "is a folder", "import", self.folder, "--strict")
        self.assertEqual(self.database.read_bytes(), before)
        self.sql("PRAGMA journal_mode = DELETE")
        with closing(sqlite3.connect(self.database, isolation_level=None)) as other:
            other.execute("BEGIN EXCLUSIVE")
            self.fails(1, "cannot be copied: another program is using the database.", "import", self.file(line("N1", 1)), "--strict", "--dry-run")

    def test_interrupted_dry_runs_leave_no_copy(self):
        path, scratch = self.file("".join(line(f"K{i}", i) for i in range(3000))), self.folder / "s"
        scratch.mkdir()
        for end in (signal.SIGINT, signal.SIGTERM):
            with self.start("import", path, "--strict", "--dry-run", env={**os.environ, "TMPDIR": str(scratch)}) as host:
                while host.poll() is None and not list(scratch.glob("*/tools.mdb-wal")):
                    time.sleep(0.01)
                host.send_signal(end)
            self.assertEqual((host.returncode, list(scratch.iterdir())), (-end, []))

    def test_killed_verbs_leave_whole_tools_and_are_completed(self):
        whole = [[f"K{i}", i, f"c{i}"] for i in range(200)]
        path = self.file("".join(line(*tool) for tool in whole), names=("Name", "Diameter", "Comment"))
        chance, running = random.Random(), []

        def tools(what="Name, Diameter, Comment"):
            return self.rows(f"SELECT {what} FROM TAP WHERE Name LIKE 'K%' ORDER BY ID")

        def killed(*verb):
            """What is left when a verb was killed at some moment."""
            before = len(tools())
            with self.start(*verb) as host:
                time.sleep(chance.uniform(0, 0.3))
                seen = tools()
                running.append(host.poll() is None)
                host.kill()
            self.assertEqual(self.rows("PRAGMA integrity_check"), [["ok"]])
            left = tools()
            self.assertGreaterEqual(abs(len(left) - before), abs(len(seen) - before), "what was seen stays")
            return left
        for _ in range(int(os.environ.get("ORXDB_KILL_ROUNDS", "2"))):
            left = killed("import", path, "--strict")
            self.assertEqual(left, whole[:len(left)])
            self.assertEqual(self.imports(path), ([200, 200 - len(left), len(left), 0, 0, 0], 0, ""))
            left = killed("delete", "TAP", *(tool for tool, in tools("ID")))
            self.assertIn(left, ([], whole), "deleted in one go")
            self.sql("DELETE FROM TAP WHERE Name LIKE 'K%'")
        self.assertTrue(any(running))

    def test_imports_at_once_add_every_tool_once(self):
        count = int(os.environ.get("ORXDB_SHARING_TOOLS", "400"))
        path = self.file("".join(line(f"K{i}", i) for i in range(count)))
        hosts = [self.start("import", path, "--strict") for _ in range(4)]
        new = json.dumps([{"Name": f"T{i}"} for i in range(count // 10)]).encode()
        code, _, error = self.db("add", "TAP", "-", input=new)
        self.assertEqual((code, error, [host.wait() for host in hosts]), (0, "", [0] * 4))
        for names, number in (("K", count), ("T", count // 10)):
            self.assertEqual(self.rows(f"SELECT count(*), count(DISTINCT Name) FROM TAP WHERE Name GLOB '{names}[0-9]*'"),
                             [[number, number]])

    def test_programs_that_share_a_database_lose_and_double_nothing(self):
        count, before = int(os.environ.get("ORXDB_SHARING_TOOLS", "40")), self.rows("SELECT ID, Name FROM TAP ORDER BY ID")
        tools = [json.dumps([{"Name": f"T{number}-{i}"} for i in range(count)]).encode() for number in range(4)]
        with ThreadPoolExecutor() as together:
            added = list(together.map(lambda new: self.db("add", "TAP", "-", input=new), tools))
        self.assertEqual([(code, error) for code, _, error in added], [(0, "")] * 4)
        ids = [list(map(int, output.split())) for _, output, _ in added]
        expected = [[tool, f"T{number}-{i}"] for number, tools in enumerate(ids) for i, tool in enumerate(tools)]
        self.assertEqual(self.rows("SELECT ID, Name FROM TAP ORDER BY ID"), before + sorted(expected))
        sharing = [self.start("delete", "TAP", *tools) for tools in ids]
        sharing += [self.start("set", "TAP", tool, "Comment=x") for tool, _ in before[:4]]
        self.assertEqual([host.wait() for host in sharing], [0] * 8)
        self.assertEqual(self.rows("SELECT ID, Name FROM TAP ORDER BY ID"), before)
        self.assertEqual(self.rows("SELECT count(*) FROM TAP WHERE Comment = 'x'"), [[4]])
