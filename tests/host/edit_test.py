"""Showing, adding, changing, deleting and naming tools."""
import json
import os
import sqlite3
import unittest
from contextlib import closing

from orxdb_host import Orxdb

HOSTILE = "O'Neill; DROP TABLE \"TAP\" [x] *?# %s Ø6 刀 = \t\\ " + "x" * 10


class Edit(Orxdb):
    def add(self, table, *words, tools=None):
        """Adds tools, from JSON when there are `tools`, and gives their numbers."""
        given = [*words, *([] if tools is None else ["-"])]
        code, output, error = self.db("add", table, *given, input=json.dumps(tools).encode())
        self.assertEqual((code, error), (0, ""), words)
        return list(map(int, output.split()))

    def refuses(self, words, verb, table, *arguments, **options):
        """The verb fails and changes no tool."""
        before = self.rows(f"SELECT * FROM {table}")
        self.fails(1, words, verb, table, *arguments, **options)
        self.assertEqual(self.rows(f"SELECT * FROM {table}"), before, arguments)

    def test_values_are_read_by_their_type(self):
        self.sql("""CREATE TABLE KINDS (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(20),
                 Flag BOOLEAN, Tiny BYTE, Small SHORT, Whole LONG, Money CURRENCY, Single SINGLE,
                 Real DOUBLE, Day DATETIME, Bytes LONGBINARY, Memo LONGTEXT);
                 CREATE VIEW Q_KINDS AS SELECT * FROM KINDS;
                 INSERT INTO TOOL_TYPES_DATA (TOOLTABLE_NAME, TOOL_TYPE) VALUES ('Q_KINDS', 'x')""")
        self.assertEqual([(row["Type"], row["Hidden"]) for row in self.json("fields", "KINDS")], [
            (kind, number == 0) for number, kind in enumerate("LONG TEXT BOOLEAN BYTE SHORT LONG CURRENCY SINGLE "
                                                              "DOUBLE DATETIME LONGBINARY TEXT".split())])
        tool, = self.add("KINDS", "Name=all", "Memo=")
        for name, text, stored in (
                ("Flag", "Yes", True), ("Flag", "0", False), ("Tiny", "255", 255), ("Small", "-32768", -32768),
                ("Whole", "2147483647", 2147483647), ("Money", "12.34565", 12.3456), ("Single", "0.1", 0.1),
                ("Real", "-1e-9", -1e-9), ("Day", "2024-02-29", "2024-02-29"), ("Bytes", "00fF", "00ff"),
                ("Day", "2024-02-29 23:59:58", "2024-02-29 23:59:58"), ("Memo", HOSTILE, HOSTILE),
                ("Memo", "x" * 60000, "x" * 60000), ("Name", "", None)):
            self.assertEqual(self.json("set", "KINDS", tool, f"{name.lower()}={text}"), {name: stored})
            self.assertEqual(self.json("show", "KINDS", tool, "--all")[name], stored)
        for name, text, words in (
                ("Flag", "maybe", "neither"), ("Tiny", "256", "0 to 255"), ("Tiny", "-1", "0 to"),
                ("Small", "32768", "32767"), ("Whole", "6.5", "no whole"), ("Whole", " 6", "no"),
                ("Real", "abc", "'abc' is no number"), ("Real", "6,5", "full stop, 6.5"), ("Real", "nan", "no number"),
                ("Real", "1e999", "DOUBLE"), ("Single", "1e39", "SINGLE"), ("Money", "1e15", "CURRENCY"),
                ("Day", "2023-02-29", "no date"), ("Bytes", "0f0", "bytes"), ("Bytes", "zz", "bytes"),
                ("Nope", "1", "have: ID, Name"), ("name", "x", "twice")):
            self.refuses(words, "set", "KINDS", tool, "Name=y", f"{name}={text}")
        self.refuses("'six' is no number", "add", "KINDS", "Name=y", "Real=six")
        code, _, error = self.db("set", "KINDS", tool, "Name=" + "x" * 21, "ID=99", "Tiny=7")
        self.assertEqual((code, "not written: Name, ID." in error), (1, True), error)
        self.assertIn("the text is 1 too long, of 20", error)
        self.assertEqual(self.rows("SELECT ID, Name, Tiny FROM KINDS"), [[tool, None, 7]])

    def test_tools_come_and_go(self):
        original = self.json("show", "TAP", 5, "--all")
        copy, = self.add("TAP", "Name=Copy", tools={**original, "ID": None})
        self.assertEqual(self.json("show", "TAP", copy, "--all"), {**original, "ID": copy, "Name": "Copy"})
        new = self.add("TAP", "Pitch=2", tools=[{"Name": "A", "Comment": ""}, {"Name": HOSTILE}])
        self.assertEqual(self.rows(f"SELECT ID, Name, Pitch, Comment FROM TAP WHERE ID > {copy}"),
                         [[new[0], "A", 2, ""], [new[1], HOSTILE, 2, None]])
        for text, words in (("[1]", "object"), ("{", "no JSON"), ('{"Name": []}', "Name"),
                            ('[{"Name": "a"}, {"Nope": 1}]', "no property 'Nope'")):
            self.refuses(words, "add", "TAP", "-", input=text.encode())
        self.sql("CREATE TRIGGER KEEP BEFORE DELETE ON TAP WHEN OLD.ID = 6 BEGIN "
                 "SELECT RAISE(ABORT, 'kept'); END")
        code, output, error = self.db("delete", "TAP", 5, 6, 9999, *new)
        self.assertEqual((code, output), (1, f"5\n{new[0]}\n{new[1]}\n"))
        self.assertTrue("Tool 6 of TAP was not deleted. Kept." in error and "no tool 9999" in error, error)
        self.assertEqual(self.rows("SELECT ID FROM TAP WHERE ID BETWEEN 5 AND 6 OR Pitch = 2 AND Name = 'A'"), [[6]])
        for verb in ("show TAP 5", "set TAP 5 Name=x", "name TAP 5"):
            self.fails(1, "no tool 5", *verb.split())
        with closing(sqlite3.connect(self.database, isolation_level=None)) as connection:
            connection.execute("BEGIN IMMEDIATE")
            self.fails(1, f"Another program is using the database. It is open in python3 (process {os.getpid()})",
                       "set", "TAP", 7, "Name=x")

    def test_names(self):
        code, output, error = self.db("add", "FLAT_END_MILL", "Diameter=6", "--csv")
        name = "EM_6m_F4_L22_HSS"  # with what the database filled in
        tool = output.split()[1].removeprefix(name + ",")
        self.assertEqual((code, error), (0, f"Tool {tool} is named '{name}'.\n"))
        self.assertEqual(self.json("show", "FLAT_END_MILL", tool)["Name"], name)
        for words in ([tool], ["Diameter=6", "Unit=mm", "Flutes_#=4", "Flute_Length=22", "Material=HSS"]):
            self.assertEqual(self.ok("name", "FLAT_END_MILL", *words), name + "\n")
        heads = ",".join(self.db("add", "TAPPING_HEAD", "Min_Diameter=3")[1].strip() for _ in range(3))
        self.assertEqual(self.rows(f"SELECT Name FROM TAPPING_HEAD WHERE ID IN ({heads})"),
                         [["TH_3-12m"], ["TH_3-12m_1"], ["TH_3-12m_2"]])

    def test_defaults_never_cost_a_tool(self):
        before = self.rows("SELECT * FROM FLAT_END_MILL")
        defaults = self.json("defaults", "FLAT_END_MILL", "--all")
        self.assertEqual(self.rows("SELECT * FROM FLAT_END_MILL"), before)
        tool, = self.add("FLAT_END_MILL", "Name=x")
        self.assertEqual(self.json("show", "FLAT_END_MILL", tool, "--all"), {"ID": tool, "Name": "x", **defaults})
        self.sql("INSERT INTO TAPPING_HEAD (Name) VALUES ('AUX_TEMP_TOOLNAME_~*&^$%_'); CREATE TABLE ADDED (x)")
        self.refuses("interrupted", "defaults", "TAPPING_HEAD")
        for table, default, condition, trigger, words in (
                ("NEEDS", "", "", "", "none can be added"),
                ("HIDES", "DEFAULT 0", "WHERE Size > 0", "", "does not show it"),
                ("KEEPS", "DEFAULT 0", "", "CREATE TRIGGER KEEP BEFORE DELETE ON KEEPS BEGIN "
                 "SELECT RAISE(ABORT, 'kept'); END;", "cannot be deleted again"),
                ("ONCE", "DEFAULT 0", "", "CREATE TRIGGER FULL BEFORE INSERT ON ONCE WHEN (SELECT count(*) FROM "
                 "ADDED) > 2 BEGIN SELECT RAISE(ABORT, 'full'); END; CREATE TRIGGER LOG AFTER INSERT ON ONCE "
                 "BEGIN INSERT INTO ADDED VALUES (1); END;", "a moment ago")):
            self.sql(f"""CREATE TABLE {table} (ID INTEGER PRIMARY KEY AUTOINCREMENT, Name TEXT(50),
                Size LONG NOT NULL {default}); {trigger}
                CREATE VIEW Q_{table} AS SELECT * FROM {table} {condition};
                INSERT INTO {table} (Name, Size) VALUES ('a', 1), ('b', 2);
                INSERT INTO TOOL_TYPES_DATA (TOOLTABLE_NAME, TOOL_TYPE) VALUES ('Q_{table}', 'x')""")
            self.fails(1, words, "defaults", table)
            self.assertEqual(self.rows(f"SELECT Name FROM {table} WHERE Size > 0"), [["a"], ["b"]], table)

    def test_rules_of_tools_are_told(self):
        self.refuses("unique 'Description'", "add", "TAPPING_HEAD", "Name=synchro m1-m6")
        self.refuses("unique", "add", "TAPPING_HEAD", "-", input=b'[{"Name": "first"}, {"Name": "first"}]')
        self.sql("CREATE TRIGGER FULL BEFORE INSERT ON TAP WHEN NEW.Pitch = 9 BEGIN "
                 "SELECT RAISE(ABORT, 'full'); END")
        self.refuses("Full.", "add", "TAP", "-", input=json.dumps(
            [{"Name": "gone"}, {"Name": "refused", "Pitch": 9}]).encode())
        for verb in (("add", "TAP", "Name=x"), ("set", "TAP", 5, "Diameter=6.5")):
            code, output, error = self.db(*verb, "Approach_Height=77", "Extra_Depth=88")
            self.assertEqual((code, bool(output)), (1, True))
            self.assertIn("not written: Approach_Height, Extra_Depth.", error)
        self.assertEqual(self.rows("SELECT Diameter FROM TAP WHERE ID = 5"), [[6.5]])
        code, _, error = self.db("add", "TAP", "Name=y", "ID=3")
        self.assertEqual((code, error), (0, "ID is not used: the database numbers the tools.\n"))

    def test_looked_up_texts(self):
        self.sql("INSERT INTO COATING (Name) VALUES ('O''Neill')")
        fields = self.json("fields", "TAP")
        self.assertEqual([row["Name"] for row in fields if row["Lookup"]],
                         ["Material", "Coating", "Holder", "TappingHead"])
        self.assertEqual([row["Name"] for row in fields if row["Search"]],
                         ["Thread_Size", "Thread_Series", "Diameter", "Unit", "TappingHead"])
        for name, text, stored in (("Coating", "O'Neill", "O'Neill"), ("Coating", "tialn", "TiAlN"),
                                   ("TappingHead", "Absent", None), ("Holder", "", None)):
            self.assertEqual(self.json("set", "TAP", 5, f"{name}={text}"), {name: stored})
            tool, = self.add("TAP", "Name=x", f"{name}={text}")
            self.assertEqual(self.json("show", "TAP", tool)[name], stored)
        self.refuses("There are: AlCrN, AlTiN,", "set", "TAP", 5, "Coating=Cheese")
        self.refuses("no 'HSS''", "add", "TAP", "Name=x", "Material=HSS'")
