#!/usr/bin/env python3
"""Showing, adding, changing, deleting and naming tools.

usage: edit_test.py PROGRAM
"""
import json
import unittest

from orxdb_host import Orxdb, run

HOSTILE = "O'Neill; DROP TABLE \"TAP\" [x] *?# %s Ø6 刀 = \t\\ " + "x" * 10


class Edit(Orxdb):
    def db(self, *arguments, **options):
        return run("--db", self.database, *arguments, **options)

    def add(self, table, *words, tools=None):
        """Adds tools, from JSON when there are `tools`, and gives their numbers."""
        options = {} if tools is None else {"input": json.dumps(tools).encode()}
        code, output, error = self.db("add", table, *words, *([] if tools is None else ["-"]),
                                      **options)
        self.assertEqual((code, error), (0, ""), words)
        return [int(line) for line in output.split()]

    def refuses(self, words, *arguments):
        """The verb fails with these words and changes no byte that another program reads."""
        before = self.dump()
        self.fails(1, words, "--db", self.database, *arguments)
        self.assertEqual(self.dump(), before, arguments)

    def dump(self):
        return [self.rows(f"SELECT * FROM {table} ORDER BY ID")
                for table in ("TAP", "FLAT_END_MILL", "TAPPING_HEAD")]

    def test_values_are_read_by_their_type(self):
        self.sql("""CREATE TABLE KINDS (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(20),
                 Flag BOOLEAN, Tiny BYTE, Small SHORT, Whole LONG, Money CURRENCY, Single SINGLE,
                 Real DOUBLE, Day DATETIME, Bytes LONGBINARY, Memo LONGTEXT);
                 CREATE VIEW Q_KINDS AS SELECT * FROM KINDS;
                 INSERT INTO TOOL_TYPES_DATA (TOOLTABLE_NAME, TOOL_TYPE) VALUES ('Q_KINDS', 'x')""")
        self.assertEqual(self.db("list", "KINDS", "--tsv")[1].split(), [
            "Name", "Flag", "Tiny", "Small", "Whole", "Money", "Single", "Real", "Day", "Bytes",
            "Memo"])
        self.assertEqual([row["Type"] for row in self.json("fields", "KINDS")], [
            "LONG", "TEXT", "BOOLEAN", "BYTE", "SHORT", "LONG", "CURRENCY", "SINGLE", "DOUBLE",
            "DATETIME", "LONGBINARY", "TEXT"])
        tool, = self.add("KINDS", "Name=all", "Memo=")
        for name, text, stored in (
                ("Flag", "Yes", True), ("Flag", "0", False), ("Tiny", "255", 255),
                ("Small", "-32768", -32768), ("Whole", "2147483647", 2147483647),
                ("Money", "12.34565", 12.3456), ("Single", "0.1", 0.1), ("Real", "-1e-9", -1e-9),
                ("Real", "0.1", 0.1), ("Day", "2024-02-29", "2024-02-29"),
                ("Day", "2024-02-29 23:59:58", "2024-02-29 23:59:58"), ("Bytes", "00fF", "00ff"),
                ("memo", HOSTILE, HOSTILE), ("Memo", "x" * 60000, "x" * 60000), ("Name", "", None)):
            shown, = self.json("set", "KINDS", tool, f"{name}={text}").values()
            self.assertEqual(shown, stored)
            record = self.json("show", "KINDS", tool, "--all")
            self.assertEqual({key.lower(): value for key, value in record.items()}[name.lower()],
                             stored)
        before = self.rows("SELECT * FROM KINDS")
        for name, text, words in (
                ("Flag", "maybe", "neither"), ("Tiny", "256", "0 to 255"), ("Tiny", "-1", "0 to"),
                ("Small", "32768", "32767"), ("Whole", "6.5", "no whole"), ("Whole", " 6", "no"),
                ("Real", "abc", "'abc' is no number"), ("Real", "6,5", "no number"),
                ("Real", "6mm", "no number"), ("Real", "nan", "no number"), ("Real", "1e999", "DOUBLE"),
                ("Single", "1e39", "SINGLE"), ("Money", "1e15", "CURRENCY"), ("Money", "x", "no n"),
                ("Day", "2023-02-29", "no date"), ("Bytes", "0f0", "bytes"), ("Bytes", "zz", "bytes"),
                ("Nope", "1", "have: ID, Name"), ("Real=1", "2", "no number")):
            for verb in (("add", "KINDS"), ("set", "KINDS", tool)):
                self.fails(1, words, "--db", self.database, *verb, "Name=y", f"{name}={text}")
        self.fails(1, "twice", "--db", self.database, "set", "KINDS", tool, "Tiny=1", "tiny=1")
        self.assertEqual(self.rows("SELECT * FROM KINDS"), before)
        code, _, error = self.db("set", "KINDS", tool, "Name=" + "x" * 21, "ID=99", "Tiny=7")
        self.assertEqual(code, 1)
        self.assertIn("not written: Name, ID.", error)
        self.assertEqual(self.rows("SELECT ID, Name, Tiny FROM KINDS"), [[tool, None, 7]])

    def test_tools_come_and_go_as_json(self):
        original = self.json("show", "TAP", 5, "--all")
        copy, = self.add("TAP", "Name=Copy", tools={**original, "ID": None})
        self.assertEqual(self.json("show", "TAP", copy, "--all"),
                         {**original, "ID": copy, "Name": "Copy"})
        new = self.add("TAP", "Pitch=2", tools=[{"Name": "A", "Comment": ""}, {"Name": HOSTILE}])
        self.assertEqual(len(set(new)), 2)
        self.assertEqual(self.rows(f"SELECT Name, Pitch, Comment FROM TAP WHERE ID IN ({new[0]},"
                                   f" {new[1]})"), [["A", 2, ""], [HOSTILE, 2, None]])
        self.assertEqual(self.ok("delete", "TAP", *new), "".join(f"{i}\n" for i in new))
        for text, words in (("[1]", "object"), ("{", "no JSON"), ('{"Name": []}', "Name"),
                            ('[{"Name": "a"}, {"Nope": 1}]', "no property 'Nope'")):
            before = self.dump()
            code, output, error = self.db("add", "TAP", "-", input=text.encode())
            self.assertEqual((code, output, self.dump()), (1, "", before))
            self.assertIn(words, error)

    def test_names(self):
        code, output, error = self.db("add", "FLAT_END_MILL", "Diameter=6", "--csv")
        name = "EM_6m_F4_L22_HSS"  # with what the database filled in
        tool = output.split()[1].removeprefix(name + ",")
        self.assertEqual((code, error), (0, f"Tool {tool} is named '{name}'.\n"))
        self.assertEqual(self.json("show", "FLAT_END_MILL", tool)["Name"], name)
        for words in ([tool], ["Diameter=6", "Unit=mm", "Flutes_#=4", "Flute_Length=22",
                               "Material=HSS"]):
            self.assertEqual(self.ok("name", "FLAT_END_MILL", *words), name + "\n")
        heads = [self.db("add", "TAPPING_HEAD", "Min_Diameter=3")[1].strip() for _ in range(3)]
        self.assertEqual(self.rows(f"SELECT Name FROM TAPPING_HEAD WHERE ID IN ({','.join(heads)})"),
                         [["TH_3-12m"], ["TH_3-12m_1"], ["TH_3-12m_2"]])
        self.fails(1, "no tool 9999", "--db", self.database, "name", "TAP", 9999)

    def test_defaults_leave_nothing_behind(self):
        before = self.dump()
        defaults = self.json("defaults", "FLAT_END_MILL", "--all")
        self.assertEqual(self.dump(), before)
        tool, = self.add("FLAT_END_MILL", "Name=x")
        self.assertEqual(self.json("show", "FLAT_END_MILL", tool, "--all"),
                         {"ID": tool, "Name": "x", **defaults})
        self.sql("INSERT INTO TAPPING_HEAD (Name) VALUES ('AUX_TEMP_TOOLNAME_~*&^$%_')")
        self.refuses("interrupted", "defaults", "TAPPING_HEAD")

    def test_rules_of_tools_are_told(self):
        self.refuses("unique 'Description'", "add", "TAPPING_HEAD", "Name=synchro m1-m6")
        code, output, error = self.db("add", "TAPPING_HEAD", "-", input=json.dumps(
            [{"Name": "first"}, {"Name": "first"}]).encode())
        self.assertEqual((code, output), (1, ""))
        self.assertIn("unique", error)
        self.assertEqual(self.rows("SELECT * FROM TAPPING_HEAD WHERE Name = 'first'"), [])
        self.sql("CREATE TRIGGER FULL BEFORE INSERT ON TAP WHEN NEW.Pitch = 9 BEGIN "
                 "SELECT RAISE(ABORT, 'full'); END; CREATE TRIGGER KEEP BEFORE DELETE ON TAP WHEN "
                 "OLD.Name = 'kept' BEGIN SELECT RAISE(ABORT, 'kept'); END")
        code, output, error = self.db("add", "TAP", "-", input=json.dumps(
            [{"Name": "gone"}, {"Name": "kept"}, {"Name": "refused", "Pitch": 9}]).encode())
        left = self.rows("SELECT ID, Name FROM TAP WHERE Name IN ('gone', 'kept', 'refused')")
        self.assertEqual((code, output, left), (1, "", [[left[0][0], "kept"]]))
        self.assertIn(f"not deleted again: {left[0][0]}.", error)
        for verb in (("add", "TAP", "Name=x"), ("set", "TAP", 5, "Diameter=6.5")):
            code, output, error = self.db(*verb, "Approach_Height=77", "Extra_Depth=88")
            self.assertEqual(code, 1)
            self.assertIn("not written: Approach_Height, Extra_Depth.", error)
            self.assertTrue(output)
        self.assertEqual(self.rows("SELECT Diameter FROM TAP WHERE ID = 5"), [[6.5]])
        code, _, error = self.db("add", "TAP", "Name=y", "ID=3")
        self.assertEqual((code, error), (0, "ID is not used: the database numbers the tools.\n"))

    def test_looked_up_texts(self):
        self.sql("INSERT INTO COATING (Name) VALUES ('O''Neill')")
        self.assertEqual([row["Name"] for row in self.json("fields", "TAP") if row["Lookup"]],
                         ["Material", "Coating", "Holder", "TappingHead"])
        for name, text, stored in (("Coating", "O'Neill", "O'Neill"), ("Coating", "tialn", "TiAlN"),
                                   ("TappingHead", "Absent", None), ("Holder", "", None)):
            self.assertEqual(self.json("set", "TAP", 5, f"{name}={text}"), {name: stored})
            tool, = self.add("TAP", "Name=x", f"{name}={text}")
            self.assertEqual(self.json("show", "TAP", tool)[name], stored)
        self.refuses("There are: AlCrN, AlTiN,", "set", "TAP", 5, "Coating=Cheese")
        self.refuses("no 'HSS''", "add", "TAP", "Name=x", "Material=HSS'")

    def test_delete_tells_what_is_gone(self):
        self.sql("CREATE TRIGGER KEEP BEFORE DELETE ON TAP WHEN OLD.ID = 6 BEGIN "
                 "SELECT RAISE(ABORT, 'kept'); END")
        code, output, error = self.db("delete", "TAP", 5, 6, 9999, 7)
        self.assertEqual((code, output), (1, "5\n7\n"))
        self.assertIn("Tool 6 of TAP was not deleted", error)
        self.assertIn("no tool 9999", error)
        self.assertEqual(self.rows("SELECT ID FROM TAP WHERE ID BETWEEN 5 AND 7"), [[6]])
        self.refuses("no tool 5", "show", "TAP", 5)
        self.refuses("no tool 5", "set", "TAP", 5, "Name=x")

    def test_fields(self):
        fields = self.json("fields", "TAPPING_HEAD")
        self.assertEqual(fields[:2], [
            {"Name": "TAPPING_HEAD.ID", "Type": "LONG", "Hidden": True, "Search": False,
             "Lookup": False},
            {"Name": "Name", "Type": "TEXT", "Hidden": False, "Search": True, "Lookup": False}])
        self.assertEqual([field["Name"] for field in fields],
                         list(self.json("show", "TAPPING_HEAD", 1, "--all")))

    def test_wrong_usage(self):
        for arguments in (["add", "TAP"], ["add", "TAP", "Name"], ["add", "TAP", "=x"], ["set", "TAP"],
                          ["set", "TAP", "x", "Name=y"], ["delete", "TAP"], ["delete", "TAP", "5x"],
                          ["show", "TAP", "99999999999"], ["name", "TAP", "x"], ["name", "TAP"]):
            self.assertEqual(self.db(*arguments)[:2], (2, ""), arguments)


if __name__ == "__main__":
    unittest.main()
