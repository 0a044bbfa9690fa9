"""Copies of a library for bad days: made, kept, put back."""
import json
import os
import sqlite3
import subprocess
import time
from contextlib import closing

from orxdb_host import PROGRAM, Orxdb, run


class BackUp(Orxdb):
    def files(self):
        return sorted(path.name for path in self.folder.iterdir())

    def taps(self, file):
        with closing(sqlite3.connect(file)) as connection:
            return connection.execute("SELECT count(*) FROM TAP").fetchone()[0]

    def damage(self, file):
        """Tears an index, which opening does not read."""
        with closing(sqlite3.connect(file)) as connection:
            size, = connection.execute("PRAGMA page_size").fetchone()
            page, = connection.execute("SELECT max(rootpage) FROM sqlite_schema WHERE type = 'index'").fetchone()
        content = bytearray(file.read_bytes())
        content[size * (page - 1):size * page] = b"\xee" * size
        file.write_bytes(content)

    def test_copies_are_whole_or_not_there(self):
        copy = self.folder / "copy.mdb"
        self.assertEqual(self.ok("backup", copy), f"{copy}\n")
        self.assertEqual((self.taps(copy), self.files()), (self.taps(self.database), ["copy.mdb", "tools.mdb"]))
        self.sql("DELETE FROM TAP")
        before = copy.read_bytes()
        self.fails(1, "--force", "backup", copy)
        self.damage(self.database)
        self.fails(1, "damaged", "backup", copy, "--force")
        self.assertEqual(copy.read_bytes(), before)
        self.fails(1, "damaged", "backup", self.folder / "new.mdb")
        self.fails(1, "--keep", "backup", self.folder)
        self.fails(1, "no tool database", "backup", copy, "--force", "--db", self.folder / "none.mdb")
        self.fails(2, "excludes", "backup", self.folder, "--keep", "3", "--force")
        self.assertEqual(self.files(), ["copy.mdb", "tools.mdb"])

    def test_the_oldest_copies_go_when_the_new_one_stands(self):
        folder = self.folder / "old"
        keep = ("backup", "--keep", "3", folder)
        self.fails(1, "no folder", *keep)
        folder.mkdir()
        others = ["tools.mdb", "tools-20200101-000000-000.mdb.new", "tools-2020.mdb", "tools-20200101-000000_000.mdb",
                  "shop-20200101-000000-000.mdb"]
        for name in (*others, "tools-20200101-000000-000.mdb", "tools-20990101-000000-000.mdb"):
            (folder / name).touch()
        made = [self.ok(*keep).strip().rsplit("/", 1)[1] for _ in range(4)]
        left = sorted({path.name for path in folder.iterdir()} - set(others))
        self.assertEqual(left, [*made[2:], "tools-20990101-000000-000.mdb"])
        self.assertEqual(self.taps(folder / made[3]), self.taps(self.database))
        self.damage(self.database)
        self.fails(1, "damaged", *keep)
        self.assertEqual(sorted({path.name for path in folder.iterdir()} - set(others)), left)
        self.assertEqual([name for name in others if not (folder / name).exists()], [])

    def test_restoring(self):
        copy, taps = self.folder / "copy.mdb", self.taps(self.database)
        self.ok("backup", copy)
        self.sql("DELETE FROM TAP WHERE ID > 10")
        # A program that was killed leaves the last changes in the log alone.
        script = ("import sqlite3, os, sys; c = sqlite3.connect(sys.argv[1]); "
                  "c.execute('DELETE FROM TAP WHERE ID > 5'); c.commit(); os._exit(0)")
        subprocess.run(["python3", "-c", script, self.database], check=True)
        self.assertIn("tools.mdb-wal", self.files())
        restored = self.json("restore", copy)
        self.assertEqual((restored["File"], self.taps(self.database)), (str(self.database), taps))
        self.assertEqual((self.taps(restored["Kept"]), self.taps(copy)), (5, taps))
        self.assertEqual(self.rows("PRAGMA journal_mode"), [["wal"]])
        new = self.folder / "new.mdb"
        self.assertEqual(self.json("restore", copy, "--db", new), {"File": str(new), "Kept": None})
        self.assertEqual(self.taps(new), taps)
        self.damage(new)
        self.json("restore", copy, "--db", new)
        self.assertEqual(self.taps(new), taps)

    def test_libraries_that_are_open_or_backups_that_are_none(self):
        copy = self.folder / "copy.mdb"
        self.ok("backup", copy)
        for mode in "WAL", "DELETE":
            with closing(sqlite3.connect(self.database)) as connection:
                connection.execute(f"PRAGMA journal_mode = {mode}")
                connection.execute("UPDATE TAP SET Name = 'mine' WHERE ID = 1")
                connection.commit()  # and now nothing is locked
                for verb in (("restore", copy), ("restore", copy, "--force"), ("create", self.database, "--force")):
                    self.fails(1, "has it open", *verb)
            self.assertEqual(self.rows("SELECT Name FROM TAP WHERE ID = 1"), [["mine"]])
        files, content = self.files(), self.database.read_bytes()
        self.damage(copy)
        self.fails(1, "not in order", "restore", copy)
        (self.folder / "text").write_text("text")
        for words, name in (("not a database", "text"), ("no tool database", "none"), ("itself", "tools.mdb")):
            self.fails(1, words, "restore", self.folder / name)
        self.assertEqual((self.files(), self.database.read_bytes()), (sorted([*files, "text"]), content))

    def test_a_killed_program_leaves_the_library_alone(self):
        copy = self.folder / "copy.mdb"
        self.ok("backup", copy)
        taps = self.taps(copy)
        for delay in range(4):
            with subprocess.Popen([PROGRAM, "--db", self.database, "restore", copy],
                                  stdout=subprocess.DEVNULL) as process:
                time.sleep(0.02 + 0.02 * delay)
                process.kill()
            self.assertEqual((self.taps(self.database), self.rows("PRAGMA integrity_check")), (taps, [["ok"]]))
            self.assertEqual(run("--db", self.database, "types")[0], 0)

    def test_network_folders(self):
        share, here = self.folder / "share", self.folder / "share2" / "tools.mdb"
        share.mkdir()
        there = share / "tools.mdb"
        network = {"env": {**os.environ, "ORXDB_NETWORK_FOLDERS": f"/nowhere:{share}/"}}

        def journal(file):
            code, output, _ = self.db("journal", "--db", file, "--json", **network)
            return [code, *list(json.loads(output).values())[1:]]

        code, output, error = self.db("create", there, **network)
        self.assertEqual((code, output, "(shared)" in error), (0, f"{there}\n", True))
        self.assertEqual(self.db("create", here, **network), (0, f"{here}\n", ""))
        self.assertEqual((journal(there), journal(here)), ([0, "delete", "shared"], [0, "wal", None]))
        self.fails(1, "network folder", "journal", "wal", "--db", there, **network)
        self.fails(1, "network folder", "create", share / "new.mdb", "--journal", "wal", **network)
        # Nobody can tell who has it open on which machine, but for those who use a log.
        copy = share / "copy.mdb"
        for again in [], ["--force"]:
            self.assertEqual(self.db("backup", copy, *again, "--db", here, **network)[0], 0)
        for verb in (("restore", copy), ("create", there, "--force")):
            self.fails(1, "nobody can tell", *verb, "--db", there, **network)
        self.assertEqual(self.db("restore", copy, "--force", "--db", there, **network)[0], 0)
        self.assertEqual(journal(there), [0, "delete", "shared"])
        there.write_bytes(self.starter.read_bytes())
        for verb in "types", "backup":
            self.fails(1, "journal delete", verb, *[copy, "--force"][:2 * (verb == "backup")], "--db", there, **network)
        with closing(sqlite3.connect(there)) as connection:
            connection.execute("SELECT * FROM TAP").fetchone()
            self.fails(1, "is using", "journal", "delete", "--db", there, **network)
        self.assertEqual(self.db("journal", "delete", "--db", there, **network)[0], 0)
        self.assertEqual(self.db("types", "--db", there, **network)[0], 0)
        self.assertEqual(sorted(path.name for path in share.iterdir() if "replaced" not in path.name),
                         ["copy.mdb", "tools.mdb"])
        # The kind that was chosen stays.
        self.ok("journal", "delete")
        self.ok("restore", copy)
        self.ok("create", self.database, "--force")
        self.assertEqual(journal(self.database), [0, "delete", None])
        self.ok("create", self.database, "--force", "--journal", "wal")
        self.assertEqual(journal(self.database), [0, "wal", None])
        self.fails(2, "", "journal", "log")
