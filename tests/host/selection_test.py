"""Changing, copying and deleting many tools at once, compared with plain SQL over the same file."""
import os
import pty
import subprocess
import unittest

from orxdb_host import PROGRAM, Orxdb


class Selection(Orxdb):
    def state(self):
        return {table: self.rows(f"SELECT * FROM {table} ORDER BY ID") for table in ("TAP", "FLAT_END_MILL", "COATING")}

    def told(self, words, *arguments, code=0):
        result, output, error = self.db(*arguments, "--tsv")
        self.assertEqual((result, words in error), (code, True), (arguments, error))
        return [line.split("\t") for line in output.splitlines()[1:]]

    def test_all_or_none_that_meet_a_condition(self):
        where = "Unit = 'in' AND Diameter < 0.2"
        chosen = self.rows(f"SELECT ID, Name, Coating, Comment FROM Q_FLAT_END_MILL WHERE {where}")
        self.assertTrue(2 < len(chosen) <= 20)
        change = ("set", "FLAT_END_MILL", "--where", where, "coating=tin", "Comment=Box 7")
        before = self.state()
        rows = [row for tool in chosen for row in (
            [str(tool[0]), tool[1], "Coating", tool[2], "TiN"], [str(tool[0]), tool[1], "Comment", tool[3] or "", "Box 7"])]
        self.assertEqual(self.told("Only tried", *change, "--dry-run"), rows)
        self.assertEqual(self.state(), before)
        self.assertEqual(self.told("", *change), rows)
        self.assertEqual(self.rows("SELECT ID, Name, Coating FROM Q_FLAT_END_MILL WHERE Comment = 'Box 7'"),
                         [[*tool[:2], "TiN"] for tool in chosen])
        self.assertEqual(self.told(f"{len(chosen)} of {len(chosen)} tools are so already", *change), [])
        self.sql("CREATE TRIGGER KEEP BEFORE DELETE ON FLAT_END_MILL WHEN OLD.Diameter = 0.1875 BEGIN "
                 "SELECT RAISE(ABORT, 'kept'); END", "CREATE TRIGGER FIX BEFORE UPDATE ON TAP WHEN OLD.ID = 7 BEGIN "
                 "SELECT RAISE(ABORT, 'fixed'); END")
        before = self.state()
        for words, *verb in (
                ("Kept", "delete", "FLAT_END_MILL", "--where", where), ("Fixed", "set", "TAP", "--where", "ID < 9", "Stock=3"),
                ("too long", "set", "TAP", "--where", "ID = 3", "Name=" + "x" * 70),
                ("no field Nme", "delete", "TAP", "--where", "Nme = 1"), ("no 'Cheese'", *change[:4], "Coating=Cheese"),
                ("Change 76 tools of TAP? --yes", "set", "TAP", "--where", "", "Stock=1"),
                ("Delete 21 tools of TAP? --yes", "delete", "TAP", "--where", "ID <= 21")):
            self.fails(1, words, *verb)
        self.assertEqual(self.told("No tool meets", "delete", "TAP", "--where", "ID < 0"), [])
        self.assertEqual(len(self.told("Only tried", "delete", "TAP", "--where", "ID > 20", "--dry-run")), 56)
        self.assertEqual(self.state(), before)
        self.assertEqual(self.told("", "delete", "TAP", "--where", "ID > 20", "--yes"),
                         [[tool[1], str(tool[0])] for tool in before["TAP"][20:]])
        self.assertEqual(self.state()["TAP"], before["TAP"][:20])

    def test_people_are_asked(self):
        for reply, left in ((b"\n", 76), (b"no\n", 76), (b"Yes\n", 40)):
            ours, theirs = pty.openpty()
            with subprocess.Popen([PROGRAM, "--db", self.database, "delete", "TAP", "--where", "ID > 40"],
                                  stdin=theirs, stderr=theirs, stdout=subprocess.DEVNULL) as process:
                os.close(theirs)
                os.write(ours, reply)
                asked = b""
                while b"[y/N] " not in asked:  # until then, or until nothing comes any more
                    asked += os.read(ours, 1000)
                self.assertIn(b"Delete 36 tools of TAP? [y/N] ", asked)
                self.assertEqual(process.wait(), 0 if left == 40 else 1)
            os.close(ours)
            self.assertEqual(self.rows("SELECT count(*) FROM TAP"), [[left]])

    def test_copies(self):
        self.sql("INSERT INTO COATING (Name) VALUES ('O''Neill')", "UPDATE FLAT_END_MILL SET Coating = 11, Holder = NULL, "
                 "Material = NULL, IsFavorite = -1, Comment = '' WHERE ID = 9", "UPDATE TAP SET Name = 'O''Neill Ø' || "
                 "replace(hex(zeroblob(25)), '00', 'ab') WHERE ID = 5")
        for table, id_, words, changed in (
                ("FLAT_END_MILL", 9, [], {}), ("FLAT_END_MILL", 9, ["Holder=ER20 collet chuck", "diameter=7"],
                                               {"Holder": "ER20 collet chuck", "Diameter": 7, "AUX_Metric_Diameter": 7}),
                ("FLAT_END_MILL", 9, ["Name=Mine", "Coating=", "Comment="], {"Name": "Mine", "Coating": None, "Comment": None}),
                ("TAP", 5, [], {}), ("TAP", 5, ["Name=x", "Diameter=5.5"], {"Name": "x", "Diameter": 5.5, "AUX_Metric_Diameter": 5.5}),
                ("TAP", 5, [], {}), ("TAPPING_HEAD", 2, [], {})):
            original = self.json("show", table, id_, "--all")
            copy = int(self.ok("copy", table, id_, *words))
            tool = self.json("show", table, copy, "--all")
            key = next(iter(tool))
            self.assertEqual({**tool, key: 0, "Name": ""}, {**original, **changed, key: 0, "Name": ""}, words)
            self.assertEqual(self.rows(f"SELECT count(*) FROM {table} WHERE Name = '{tool['Name'].replace(chr(39), chr(39) * 2)}'"), [[1]])
            self.assertIn(changed.get("Name", " copy"), tool["Name"])
        self.fails(1, "no tool 999", "copy", "TAP", 999)


if __name__ == "__main__":
    unittest.main()
