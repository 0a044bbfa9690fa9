"""Creating and browsing a database, and what all verbs have in common."""
import csv
import fcntl
import io
import os
import pty
import re
import shutil
import sqlite3
import struct
import subprocess
import termios
import unittest
from contextlib import closing

from orxdb_host import PROGRAM, Orxdb, run


class Browse(Orxdb):
    def test_walks_agree_with_plain_sql(self):
        types = self.json("types")
        self.assertEqual([[row["Type"], row["Subtype"], row["Table"]] for row in types],
                         self.rows("SELECT TOOL_TYPE, TOOL_SUBTYPE, substr(TOOLTABLE_NAME, 3) FROM TOOL_TYPES"))
        for table in [row["Table"] for row in types[::3]] + ["TAPPING_HEAD"]:
            plain = self.rows(f"SELECT * FROM Q_{table}")
            tools = self.cells("list", table, "--all")
            self.assertEqual([[int(-v) if isinstance(v, bool) else v for v in tool] for tool in tools], plain)
            self.assertEqual(int(self.ok("count", table)), len(plain))
        where, order = "Diameter BETWEEN 3 AND 6 AND Unit = 'mm'", "Diameter DESC, Name"
        tools = self.cells("list", "tap", "--where", where, "--order", order, "--columns", "NAME,diameter,ID")
        self.assertEqual(tools, self.rows(f"SELECT Name, Diameter, ID FROM Q_TAP WHERE {where} ORDER BY {order}"))
        self.assertEqual(self.json("count", "TAP", "--where", where), [{"Table": "TAP", "Count": len(tools)}])
        parts = ("ID", "AUX_", "Overall_Len", "Exposed_Len", "IsFavorite", "Fit", "Feed", "Speed")
        tool = self.json("show", "TAP", "1", "--all")
        self.assertEqual(list(self.json("show", "TAP", "1")), [n for n in tool if not any(part in n for part in parts)])
        self.sql("UPDATE TOOL_TYPES_DATA SET SEARCH_PARAM = NULL WHERE TOOLTABLE_NAME = 'Q_REAMER'")
        for table, columns in (
                ("TAP", ["ID", "Name", "Thread_Size", "Thread_Series", "Diameter", "Unit", "TappingHead"]),
                ("TAPPING_HEAD", ["TAPPING_HEAD.ID", "Name", "Min_Diameter", "Max_Diameter", "Unit"]),
                ("REAMER", ["ID", *self.json("show", "REAMER", "1")])):
            self.assertEqual(list(self.json("list", table, "--limit", "1")[0]), columns)
        self.assertEqual(self.cells("list", "TAP", "--limit", "-1"), self.rows(
            "SELECT ID, Name, Thread_Size, Thread_Series, Diameter, Unit, TappingHead FROM Q_TAP"))
        self.assertEqual(self.json("list", "TAP", "--columns", " id, Unit,ID", "--limit", "1"), [{"ID": 1, "Unit": "mm"}])

    def terminal(self, width, *arguments):
        """Lines that a terminal of that many places shows."""
        ours, theirs = pty.openpty()
        fcntl.ioctl(theirs, termios.TIOCSWINSZ, struct.pack("HHHH", 40, width, 0, 0))
        with subprocess.Popen([PROGRAM, "--db", self.database, *arguments], stdout=theirs) as process:
            os.close(theirs)
            with open(ours, "rb", buffering=0) as screen:
                output = b""
                try:
                    while part := screen.read(65536):
                        output += part
                except OSError:  # how the end of a terminal looks
                    pass
        self.assertEqual(process.returncode, 0)
        return output.decode().replace("\r\n", "\n").splitlines()

    def test_tables_fit_the_terminal(self):
        name = "End mill 刀 " + "very long " * 30
        self.sql(("UPDATE FLAT_END_MILL SET Name = ?, Diameter = 1.23456789 WHERE ID = 2", (name,)))
        for verb in (["list", "FLAT_END_MILL"], ["materials"], ["list", "TAP"]):
            whole = self.ok(*verb).splitlines()
            self.assertEqual(self.terminal(60, *verb, "--wide"), whole)
            self.assertEqual(self.terminal(1000, *verb), whole)
            lines = self.terminal(100, *verb)
            self.assertEqual(len(lines), len(whole))
            self.assertEqual({len(line) + line.count("刀") > 100 for line in lines}, {False})
            self.assertEqual(len(lines[1]), min(100, len(whole[1])))
        line = self.terminal(80, "list", "FLAT_END_MILL")[3]
        self.assertRegex(line, r"^ ?2  End mill 刀 .*… +1\.23456789 ")
        self.assertEqual(self.terminal(40, "show", "FLAT_END_MILL", "2")[2].split(None, 1)[1], name.strip())

    def test_characters_do_no_harm(self):
        bad = "a\x1b[31mb\u202ec\x9bd\x7fe\u2066f"
        self.sql(("UPDATE TAP SET Name = ? WHERE ID = 1", (bad,)))
        for arguments in ([], ["--csv"]):
            for verb in (["list", "TAP", "--limit", "1"], ["show", "TAP", "1"]):
                self.assertIn("a\ufffd[31mb\ufffdc\ufffdd\ufffde\ufffdf", self.ok(*verb, *arguments))
        self.assertEqual(self.json("show", "TAP", "1")["Name"], bad)
        self.assertIn("'\ufffd[31m'", self.db("list", "\x1b[31m")[2])

    def test_formats_carry_every_value(self):
        names = ["a,b", 'say "hi"', "tab\there", "line\r\nend", "back\\slash", "刀具 Ø6", "", " x "]
        numbers = [100000.0, 0.1, -2.5, 1e15, 1.7e-9, 25.4 / 3, 7.0, 0.5]
        texts = ["100000", "0.1", "-2.5", "1e+15", "1.7e-09", repr(25.4 / 3), "7", "0.5"]
        self.sql("DELETE FROM TAPPING_HEAD", *(
            ("INSERT INTO TAPPING_HEAD (Name, Max_Diameter, Min_Diameter) VALUES (?, ?, NULL)", row)
            for row in zip(names, numbers)))
        header = ["Name", "Max_Diameter", "Min_Diameter"]
        verb = ("list", "TAPPING_HEAD", "--columns", ",".join(header))
        self.assertEqual(self.json(*verb), [dict(zip(header, (*row, None))) for row in zip(names, numbers)])
        code, output, _ = self.db(*verb, "--csv")
        self.assertEqual((code, output.count("\r\n")), (0, len(names) + 2))
        expected = [header] + [[*row, ""] for row in zip(names, texts)]
        self.assertEqual(list(csv.reader(io.StringIO(output, newline=""), strict=True)), expected)
        escapes = str.maketrans({"\t": "\\t", "\n": "\\n", "\r": "\\r", "\\": "\\\\"})
        self.assertEqual([line.split("\t") for line in self.ok(*verb, "--tsv").splitlines()],
                         [[field.translate(escapes) for field in row] for row in expected])
        lines = self.ok(*verb).splitlines()
        self.assertEqual((len(lines), lines[0].split()), (len(names) + 2, header))
        right = lines[0].index("Max_Diameter") + len("Max_Diameter")
        for line, name, text in zip(lines[2:], names, texts):
            wide = sum(ord(character) > 0x2E7F for character in name)
            self.assertEqual(line[:right - wide].split()[-1], text)
            self.assertEqual(len(line), right - wide)
        for arguments, output in ((["--json"], "[]\n"), (["--csv"], "Name,Diameter\r\n")):
            code, text, _ = self.db("list", "TAP", "--columns", "Name,Diameter", "--where", "ID < 0", *arguments)
            self.assertEqual((code, text), (0, output))
        self.assertEqual(self.ok("list", "TAP", "--columns", "Name", "--limit", "0", "--tsv"), "Name\n")

    def test_help_examples_run_and_versions_are_told(self):
        verbs = re.findall(r"^  (\S+) ", self.ok("--help").split("Verbs:\n")[1].split("\n\n")[0],
                           re.MULTILINE)
        self.assertGreater(len(verbs), 10)
        for verb in verbs:
            shutil.copy(self.starter, self.database)
            example = self.ok(verb, "--help").split("Example:\n", 1)[1].replace("\\\n", "").strip()
            self.assertTrue(example.startswith("orxdb "), example)
            database = "" if verb == "create" else f' --db "{self.database}"'
            line = "set -e\n" + example.replace("orxdb ", f'"{PROGRAM}"{database} ')
            done = subprocess.run(line, shell=True, cwd=self.folder, capture_output=True, check=False)
            self.assertEqual((done.returncode, b"orxdb:" in done.stderr), (0, False), line)
            self.assertTrue(done.stdout, line)
            self.assertEqual(self.ok("help", verb), self.ok(verb, "--help"))
        self.assertEqual(self.ok("help"), self.ok("--help"))
        self.fails(2, "no verb 'lst'", "help", "lst")
        libraries = self.json("--version")
        self.assertEqual([(row["Library"], row["Version"]) for row in libraries],
                         [("ORXDB Module", "3.0.0.36"), ("Automation Runtime", "3.0.0.36")])
        self.assertTrue(libraries[0]["File"].endswith("/libORXDB.so"))

    def test_shells_complete_what_the_help_tells(self):
        options = lambda text: set(re.findall(r"--[a-z]+(?:-[a-z]+)*", text))
        verbs = re.findall(r"^  (\S+) ", self.ok("--help").split("Verbs:\n")[1].split("\n\n")[0],
                           re.MULTILINE)
        common, manual = options(self.ok("--help").split("Verbs:")[0]), self.ok("describe", "man").replace("\\-", "-")
        sections = dict(re.findall(r"^\.SS (\S+)\n(.*?)(?=^\.S)", manual, re.MULTILINE | re.DOTALL))
        script = self.folder / "completion"
        script.write_text(self.ok("describe", "bash"))
        asked = [[], *([verb, "--"] for verb in verbs), ["--json", "--db", self.database, "list", "tap", "--"],
                 ["heads", "3", "--unit", ""], ["--db", self.database, "show", "TAPP"], ["show", "x", ""],
                 ["--db", ""], ["create", "--journal", "d"], ["help", "ty"]]
        calls = "".join("COMP_WORDS=(orxdb %s); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _orxdb; echo ${COMPREPLY[@]}\n"
                        % (" ".join(map("'{}'".format, line)) or "''") for line in asked)
        done = subprocess.run(["bash", "-c", f"source {script}\n{calls}"], capture_output=True, check=False,
                              env={**os.environ, "PATH": f"{PROGRAM.parent}:{os.environ['PATH']}"})
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        offered = [set(line.split()) for line in done.stdout.decode().split("\n")]
        self.assertEqual(offered[0], set(verbs))
        for verb, offer in zip(verbs, offered[1:]):
            own = options(self.ok(verb, "--help").split("Options:")[1].split("Example:")[0].split("\n\n")[0])
            self.assertEqual(offer, own | common, verb)
            self.assertLessEqual(own - {"--help"}, options(sections[verb]), verb)
        self.assertEqual(offered[len(verbs) + 1:-1], [
            offered[1 + verbs.index("list")], {"mm", "in"}, {"TAPPING_HEAD"}, set(), set(), {"delete"}, {"types"}])
        for shell in "zsh", "fish":
            script.write_text(self.ok("describe", shell))
            if shutil.which(shell):
                self.assertEqual(subprocess.run([shell, "-n", script], check=False).returncode, 0)
            self.assertLessEqual(common | options(self.ok("list", "--help")) - {"--all"}, {
                *re.findall(r"--[a-z]+", script.read_text()),
                *("--" + name for name in re.findall(r" -l (\S+)", script.read_text()))}, shell)

    def test_wrong_usage(self):
        for line in ("", "nonsense", "list", "list TAP x", "types --wrong", "list TAP --limit -2",
                     "types --json --csv", "add TAP", "add TAP Name", "add TAP =x", "set TAP x Name=y",
                     "set TAP Name=y", "set TAP 5", "set TAP 5 Name=x --where ID=5", "delete TAP",
                     "delete TAP 5 --where ID=5", "copy TAP",
                     "delete TAP 5x", "show TAP 99999999999", "name TAP x", "export TAP", "export",
                     "export TAP x --all y", "import", "heads 6 --unit MM", "drill-feed 3,5",
                     "factor T25 nan", "heads 1e999", "feeds REAMING_FS --hardness 200", "picture TAP"):
            self.fails(2, "", *line.split())

    def test_the_environment_names_the_database(self):
        def count(*arguments, **variables):
            return run(*arguments, "count", "TAP", env={**os.environ, **variables})[:2]

        taps = f"{len(self.rows('SELECT ID FROM TAP'))}\n"
        missing = str(self.folder / "missing")
        self.assertEqual(count(ORXDB_DATABASE=str(self.database)), (0, taps))
        self.assertEqual(count(ORXDB_DATABASE=missing), (1, ""))
        self.assertEqual(count("--db", self.database, ORXDB_DATABASE=missing), (0, taps))
        for arguments in (["--db", ""], ["--db="], ["--db", "", "--db", ""]):
            self.assertEqual(count(*arguments, ORXDB_DATABASE=str(self.database)), (2, ""))
        for arguments in (["create", ""], ["backup", ""], ["restore", ""]):
            self.fails(2, "is empty", *arguments)

    def test_refusals_lose_nothing(self):
        for words, *arguments in (
                ("no tool table 'NOPE'", "list", "NOPE"), ("no tool table", "count", "TAP; DROP TABLE TAP"),
                ("no property 'Nope'", "list", "TAP", "--columns", "Name,Nope"),
                ("filter", "list", "TAP", "--where", "1=1); DROP TABLE TAP; --"),
                ("filter", "count", "TAP", "--where", "Nope = 1"),
                ("no field TAP.Diametr. Like it are: Diameter", "list", "TAP", "--where", "TAP.Diametr > 6"),
                ("full stop, as in 6.5", "count", "TAP", "--where", "Diameter > 6,5"),
                ("Like it are: Name", "list", "TAP", "--order", "Nme DESC"),
                ("Like it are: Pitch", "list", "TAP", "--columns", "pich"),
                ("Like it are: TAP", "count", "TAPS"),
                ("order", "list", "TAP", "--order", "Name; DELETE FROM TAP")):
            self.fails(1, words, *arguments)
        self.assertEqual(self.database.read_bytes(), self.starter.read_bytes())
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
            self.fails(1, f"in use by another program (python3 (process {os.getpid()}))", "types", "--db", file)
            connection.rollback()
        self.fails(1, "TOOL_TYPES", "types", "--db", file)

    def test_create(self):
        new = self.folder / "deep" / "er" / "new.mdb"
        self.assertEqual(run("create", str(new).replace("/", "\\")), (0, f"{new}\n", ""))
        self.assertEqual([path.name for path in new.parent.iterdir()], ["new.mdb"])
        with closing(sqlite3.connect(new)) as connection:
            answers = [connection.execute(f"PRAGMA {pragma}").fetchone()
                       for pragma in ("journal_mode", "integrity_check", "foreign_key_check")]
            self.assertEqual(answers, [("wal",), ("ok",), None])
            connection.execute("DELETE FROM TAP")
            connection.commit()
            self.fails(1, "--force", "create", new)
            self.assertEqual(connection.execute("SELECT count(*) FROM TAP").fetchone(), (0,))
        self.assertEqual(run("create", new, "--force")[0], 0)
        self.assertEqual(run("--db", new, "count", "TAP")[1], f"{len(self.rows('SELECT ID FROM TAP'))}\n")
        self.fails(1, "is a folder", "create", self.folder)
        self.fails(1, "cannot be created", "create", new / "below-a-file.mdb")

    def test_outputs_that_end_early(self):
        self.sql("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
                 "INSERT INTO TAP (Name) SELECT 'Tap number ' || i FROM n")
        with subprocess.Popen([PROGRAM, "--db", self.database, "list", "TAP", "--csv"],
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
            os.read(process.stdout.fileno(), 10)
            process.stdout.close()
            self.assertEqual((process.stderr.read(), process.wait()), (b"", 0))
        with open("/dev/full", "wb") as full:
            done = subprocess.run([PROGRAM, "--db", self.database, "types"], stdout=full,
                                  stderr=subprocess.PIPE, check=False)
        self.assertEqual((done.returncode, b"cannot be written" in done.stderr), (1, True))
