#!/usr/bin/env python3
"""Creating and browsing a database, and what all verbs have in common.

usage: browse_test.py PROGRAM
"""
import csv
import functools
import io
import os
import re
import shutil
import sqlite3
import subprocess
import unittest
from contextlib import closing

from orxdb_host import PROGRAM, Orxdb, run


class Browse(Orxdb):
    def heads(self, rows):
        with closing(sqlite3.connect(self.database)) as connection, connection:
            connection.execute("DELETE FROM TAPPING_HEAD")
            connection.executemany("INSERT INTO TAPPING_HEAD (Name, Max_Diameter, Min_Diameter) "
                                   "VALUES (?, ?, ?)", rows)

    def test_walks_agree_with_plain_sql(self):
        types = self.json("types")
        self.assertEqual([[row["Type"], row["Subtype"], "Q_" + row["Table"]] for row in types],
                         self.rows("SELECT TOOL_TYPE, TOOL_SUBTYPE, TOOLTABLE_NAME FROM TOOL_TYPES"))
        for table in (row["Table"] for row in types):
            tools = self.json("list", table, "--all")
            plain = self.rows(f'SELECT * FROM Q_{table}')
            self.assertEqual(len(tools), len(plain), table)
            for tool, row in zip(tools, plain):
                self.assertEqual([int(-v) if isinstance(v, bool) else v for v in tool.values()], row)
            self.assertEqual(int(self.ok("count", table)), len(plain))
        where = "Diameter BETWEEN 3 AND 6 AND Name LIKE 'Tap M*'"
        tools = self.json("list", "TAP", "--where", where, "--order", "Diameter DESC, Name",
                          "--columns", "Name,Diameter,ID")
        self.assertEqual([list(tool.values()) for tool in tools],
                         self.rows("SELECT Name, Diameter, ID FROM Q_TAP WHERE Diameter BETWEEN 3 "
                                   "AND 6 AND Name GLOB 'Tap M*' ORDER BY Diameter DESC, Name"))
        self.assertGreater(len(tools), 3)
        self.assertEqual(int(self.ok("count", "TAP", "--where", where)), len(tools))
        self.assertEqual(self.json("count", "tap"), [{"Table": "TAP", "Count": len(
            self.rows("SELECT ID FROM TAP"))}])

    def test_hidden_properties_need_all(self):
        shown = list(self.json("list", "TAP", "--limit", "1")[0])
        every = list(self.json("list", "TAP", "--limit", "1", "--all")[0])
        parts = ("ID", "AUX_", "Overall_Len", "Exposed_Len", "IsFavorite", "Fit", "Feed", "Speed")
        self.assertEqual(shown, [name for name in every if not any(part in name for part in parts)])
        self.assertLess(len(shown), len(every))

    def test_formats_carry_every_text(self):
        names = ['a,b', 'say "hi"', 'tab\there', 'line\r\nend', 'back\\slash', '刀具 Ø6', '', ' x ']
        self.heads((name, 0.1, None) for name in names)
        verb = ("list", "TAPPING_HEAD", "--columns", "NAME,max_diameter,Min_Diameter")
        header = ["Name", "Max_Diameter", "Min_Diameter"]
        self.assertEqual(self.json(*verb), [dict(zip(header, (name, 0.1, None))) for name in names])

        code, output, _ = run("--db", self.database, *verb, "--csv")
        self.assertEqual((code, output.count("\r\n")), (0, len(names) + 2))
        expected = [header] + [[name, "0.1", ""] for name in names]
        self.assertEqual(list(csv.reader(io.StringIO(output, newline=""), strict=True)), expected)

        lines = self.ok(*verb, "--tsv").removesuffix("\n").split("\n")
        fields = [[re.sub(r"\\(.)", lambda escape: "\t\n\r\\"["tnr\\".index(escape[1])], field)
                   for field in line.split("\t")] for line in lines]
        self.assertEqual(fields, expected)

        lines = self.ok(*verb).splitlines()
        self.assertEqual(len(lines), len(names) + 2)
        self.assertEqual(lines[0].split(), header)
        right = lines[0].index("Max_Diameter") + len("Max_Diameter")
        for line, name in zip(lines[2:], names):
            wide = sum(ord(character) > 0x2E7F for character in name)
            self.assertEqual(line[right - wide - 4:right - wide], " 0.1", line)

    def test_values_have_their_shortest_plain_text(self):
        values = [100000.0, 0.1, -2.5, 1e15, 1.7e-9, 25.4 / 3, 7.0]
        self.heads(("n", value, 1) for value in values)
        lines = self.ok("list", "TAPPING_HEAD", "--columns", "Max_Diameter", "--csv").split()[1:]
        self.assertEqual([float(line) for line in lines], values)
        self.assertEqual(lines[:3] + lines[6:], ["100000", "0.1", "-2.5", "7"])

    def test_nothing_selected_is_an_empty_list(self):
        for arguments, output in ((["--json"], "[]\n"), (["--csv"], "Name,Diameter\r\n"),
                                  (["--limit", "0", "--tsv"], "Name\tDiameter\n")):
            code, text, _ = run("--db", self.database, "list", "TAP", "--columns", "Name,Diameter",
                                "--where", "Diameter > 9999", *arguments)
            self.assertEqual((code, text), (0, output))
        self.sql("DELETE FROM TAP")
        self.assertEqual(run("--db", self.database, "list", "TAP", "--json")[:2], (0, "[]\n"))

    def test_wrong_usage(self):
        for arguments in ([], ["nonsense"], ["list"], ["list", "TAP", "x"], ["types", "--wrong"],
                          ["list", "TAP", "--limit", "-1"], ["list", "TAP", "--limit", "few"],
                          ["types", "--json", "--csv"], ["--db"]):
            code, output, error = run(*arguments)
            self.assertEqual((code, output), (2, ""), arguments)
            self.assertTrue(error, arguments)

    def test_help_examples_run(self):
        verbs = re.findall(r"^  (\S+) ", self.ok("--help").split("Verbs:\n")[1].split("\n\n")[0],
                           re.MULTILINE)
        self.assertGreater(len(verbs), 10)
        for verb in verbs:
            shutil.copy(self.starter, self.database)
            code, output, error = run(verb, "--help")
            self.assertEqual((code, error), (0, ""))
            example = output.split("Example:\n", 1)[1].replace("\\\n", "").strip()
            self.assertTrue(example.startswith("orxdb "), example)
            database = "" if verb == "create" else f' --db "{self.database}"'
            line = example.replace("orxdb ", f'"{PROGRAM}"{database} ')
            done = subprocess.run("set -e\n" + line, shell=True, cwd=self.folder,
                                  capture_output=True, check=False, timeout=60)
            self.assertEqual(done.returncode, 0, line)
            self.assertNotIn(b"orxdb:", done.stderr, line)
            self.assertTrue(done.stdout, line)

    def test_refusals_lose_nothing(self):
        for words, arguments in (
                ("no tool table 'NOPE'", ["list", "NOPE"]),
                ("no tool table", ["count", "TAP; DROP TABLE TAP"]),
                ("no property 'Nope'", ["list", "TAP", "--columns", "Name,Nope"]),
                ("filter", ["list", "TAP", "--where", "1=1); DROP TABLE TAP; --"]),
                ("filter", ["count", "TAP", "--where", "Nope = 1"]),
                ("filter", ["list", "TAP", "--where", "(" * 100000]),
                ("order", ["list", "TAP", "--order", "Name; DELETE FROM TAP"])):
            self.fails(1, words, "--db", self.database, *arguments)
        self.assertEqual(self.database.read_bytes(), self.starter.read_bytes())

    def test_unusable_files_are_told_apart(self):
        file = self.folder / "x.mdb"
        self.fails(1, "no tool database", "types", "--db", file)
        self.fails(1, "is a folder", "types", "--db", self.folder)
        for content, words in ((b"", "is empty"), (b"text" * 1000, "not a database"),
                               (self.starter.read_bytes()[:5000], "catalogue")):
            file.write_bytes(content)
            self.fails(1, words, "types", "--db", file)
        file.unlink()
        with closing(sqlite3.connect(file)) as connection:
            connection.executescript("CREATE TABLE t(x); BEGIN EXCLUSIVE; INSERT INTO t VALUES(1)")
            self.fails(1, "in use by another program", "types", "--db", file)
            connection.rollback()
        self.fails(1, "TOOL_TYPES", "types", "--db", file)

    def test_create(self):
        new = self.folder / "deep" / "er" / "new.mdb"
        code, output, _ = run("create", str(new).replace("/", "\\"))
        self.assertEqual((code, output), (0, f"{new}\n"))
        self.assertEqual([path.name for path in new.parent.iterdir()], ["new.mdb"])
        with closing(sqlite3.connect(new)) as connection:
            answers = [connection.execute(f"PRAGMA {pragma}").fetchone()
                       for pragma in ("journal_mode", "integrity_check", "foreign_key_check")]
            self.assertEqual(answers, [("wal",), ("ok",), None])
            icons = [icon for icon, in connection.execute("SELECT ICON FROM TOOL_TYPES") if icon]
            self.assertTrue(all(icon.startswith(b"\x89PNG\r\n\x1a\n") for icon in icons))
            self.assertGreater(len(icons), 10)
            connection.execute("DELETE FROM TAP")
            connection.commit()
            self.fails(1, "--force", "create", new)
            self.assertEqual(connection.execute("SELECT count(*) FROM TAP").fetchone(), (0,))
        self.assertEqual(run("create", new, "--force")[0], 0)
        self.assertNotEqual(run("--db", new, "count", "TAP")[1], "0\n")
        self.fails(1, "is a folder", "create", self.folder)
        self.fails(1, "cannot be created", "create", new / "below-a-file.mdb")

    def test_default_database_is_beside_the_program(self):
        for name in ("bin", "lib"):
            (self.folder / "cam" / name).mkdir(parents=True)
        copy = self.folder / "cam" / "bin" / "orxdb"
        shutil.copy(PROGRAM, copy)
        for library in ("libORXDB.so", "libautomation.so.3"):
            shutil.copy(PROGRAM.parent.parent / "lib" / library, self.folder / "cam" / "lib")
        default = self.folder / "cam" / "CAM" / "TOOLS" / "tools.mdb"

        beside = functools.partial(run, program=copy, env={**os.environ, "AUTOMATION_CLASS_PATH": "/nowhere"})
        code, _, error = beside("types")
        self.assertEqual((code, str(default) in error), (1, True), error)
        self.assertEqual(beside("create"), (0, f"{default}\n", ""))
        self.assertEqual(beside("types")[0], 0)
        (self.folder / "cam" / "lib" / "libORXDB.so").unlink()
        code, _, error = beside("types")
        self.assertEqual((code, "libORXDB.so" in error), (1, True), error)

    def test_outputs_that_end_early(self):
        self.sql("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
                 "INSERT INTO TAP (Name) SELECT 'Tap number ' || i FROM n")
        read, write = os.pipe()
        with subprocess.Popen([PROGRAM, "--db", self.database, "list", "TAP", "--csv"],
                              stdout=write, stderr=subprocess.PIPE) as process:
            os.close(write)
            os.read(read, 10)
            os.close(read)
            self.assertEqual(process.communicate(timeout=60)[1], b"")
            self.assertEqual(process.returncode, 0)
        with open("/dev/full", "wb") as full:
            done = subprocess.run([PROGRAM, "--db", self.database, "types"], stdout=full,
                                  stderr=subprocess.PIPE, check=False, timeout=60)
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"cannot be written", done.stderr)


if __name__ == "__main__":
    unittest.main()
