"""Tools of other programs' files: understood, planned against what is there, and carried out."""
import csv
import io
import json
import random
import unittest
from concurrent.futures import ThreadPoolExecutor

from orxdb_host import Orxdb

OUTCOMES = ("Added", "Present", "Differs", "Updated", "Refused")


class Transfer(Orxdb):
    def file(self, text, name="in.csv"):
        path = self.folder / name
        path.write_text(text, encoding="utf-8", newline="")
        return path

    def imports(self, source, *arguments, **options):
        """Counts by outcome, which add up to the records; then code and messages."""
        code, output, error = self.db("import", source, "--json", *arguments, **options)
        self.assertNotIn("Sanitizer", error)
        counts = json.loads(output)
        found = [counts.pop(outcome) for outcome in OUTCOMES]
        self.assertEqual(counts, {"Records": sum(found)})
        return found, code, error

    def end_mill(self, columns, values, *arguments):
        """What one record of CSV makes of an end mill: its properties, or why it is refused."""
        self.sql("DELETE FROM FLAT_END_MILL")
        text = io.StringIO()
        csv.writer(text).writerows([["Name", *columns.split("|")], ["N", *values.split("|")]])
        path = self.file(text.getvalue())
        planned = self.imports(path, "--table", "flat_end_mill", "--dry-run", *arguments)[:2]
        self.assertEqual(self.rows("SELECT * FROM FLAT_END_MILL"), [])
        *done, error = self.imports(path, "--table", "FLAT_END_MILL", *arguments)
        self.assertEqual(tuple(done), planned, error)
        if done[1] != 0:
            self.assertEqual((done[0], self.rows("SELECT * FROM FLAT_END_MILL")), ([0, 0, 0, 0, 1], []), values)
            return error
        self.assertEqual(done[0], [1, 0, 0, 0, 0])
        return self.json("list", "FLAT_END_MILL", "--all")[0]

    def test_values_are_understood(self):
        for columns, values, expected in (
                ("Diameter|Unit", "6|mm", {"Diameter": 6, "Unit": "mm", "Flute_Length": 22}),
                ("Ø|Einheit|Schneiden|Gesamtlänge", "6,5|MM|3|50", {"Diameter": 6.5, "Flutes_#": 3, "Overall_Length": 50}),
                ("dia|units|No. of Flutes|OAL", "0.1234567890123456|Inches|2.00|2", {
                    "Diameter": 0.1234567890123456, "Unit": "in", "Flutes_#": 2, "Flute_Length": 220 / 254}),
                ("D1|Unit", "1/4|″", {"Diameter": 0.25, "Unit": "in"}),
                ("D|Unit", '1-1/2"|Zoll', {"Diameter": 1.5}), ("D|Unit", "1 1/2 in|mm", {"Diameter": 38.1}),
                ("D|Unit", "½|IN", {"Diameter": 0.5}), ("D|Unit", "10.00 µm|millimetre", {"Diameter": 0.01}),
                ("D|LOC", '3/8"|20 mm', {"Diameter": 0.375, "Unit": "in", "Flute_Length": 200 / 254}),
                ("Diameter (mm)|Unit", "6.35|in", {"Diameter": 0.25}), ("D [in]", "0.5", {"Unit": "in"}),
                ("D|Unit", "1.234,5|mm", {"Diameter": 1234.5}), ("Helix|D|Unit", "30 °|6|mm", {"Helix_Angle": 30}),
                ("Material|Coating", "VHM|ti-aln", {"Material": "Solid carbide", "Coating": "TiAlN"}),
                ("Material|Center Cutting", "Carbide|nein", {"Material": "Solid carbide", "Center_Cutting": False}),
                ("D|Comment|Unit", 'Ø 6|O\'Neill "x" ; 5|mm', {"Diameter": 6, "Comment": 'O\'Neill "x" ; 5'}),
                ("D|Diameter|Unit", "6|6.0|mm", {"Diameter": 6})):
            tool = self.end_mill(columns, values)
            self.assertIsInstance(tool, dict, (values, tool))
            self.assertEqual({name: tool[name] for name in expected}, expected, values)
        self.assertEqual(self.end_mill("Dm|Rest", "7|x", "--map", "dm=diameter", "--unit", "in")["Diameter"], 7)

    def test_what_is_not_understood_is_refused(self):
        for columns, values, words in (
                ("Flutes_#", "99999", "from -32768 to 32767"), ("Flutes_#", "2.5", "no whole number"),
                ("Flutes_#", "-2", "negative"), ("D|Unit", "0|mm", "zero"), ("D|Unit", "-6|mm", "negative"),
                ("D|Unit", "6|furlong", "'furlong' is no unit"), ("D|Unit", "1/4|mm", "fraction"),
                ("D|Unit", "1/0|in", "divides by zero"), ("D|Unit", "six|mm", "'six' is no number"),
                ("D|Unit", "6 stone|mm", "'stone', which is not known"), ("D|Unit", "1e999|mm", "range"),
                ("D|Unit", "6 °|mm", "angle"), ("Helix", "30 mm", "does not suit"), ("D|L", "1/4 in|50", "no unit, although"),
                ("Center_Cutting", "perhaps", "neither"), ("D|Diameter|Unit", "6|7|mm", "not the '6'"),
                ("Material", "Carbid", "Solid carbide (--add-values"), ("Foo", "1", "Columns that are no property, not taken: Foo"),
                ("Comment", "x" * 256, "Comment"), ("Unit|Einheit", "mm|in", "twice")):
            refusal = self.end_mill(columns, values) if columns != "Foo" else self.end_mill(columns + "|Flutes", "1|x")
            self.assertIsInstance(refusal, str, values)
            self.assertIn("in.csv, line 2: refused", refusal)
            self.assertIn(words, refusal)

    def test_the_same_is_added_once_and_what_differs_is_told(self):
        path = self.file("Name,Diameter,Unit\nA,6,mm\nB,0.1,in\nA,6,mm\n,7.5,mm\n,7.5,mm\n")
        for expected in ([3, 2, 0, 0, 0], [0, 5, 0, 0, 0]):
            for dry in (["--dry-run"], []):
                self.assertEqual(self.imports(path, "--table", "FLAT_END_MILL", *dry)[:2], (expected, 0))
        changed = self.file("Name,Diameter,Unit\na,6.5,mm\nB,0.1,in\nC,8,mm\n")
        found, code, error = self.imports(changed, "--table", "FLAT_END_MILL", "--dry-run")
        self.assertEqual((found, code), ([1, 1, 1, 0, 0], 1))
        self.assertIn("line 2: differs: Tool", error)
        self.assertIn("Diameter is '6' there and '6.5' here.", error)
        self.assertEqual(self.imports(changed, "--table", "FLAT_END_MILL", "--update")[:2], ([1, 1, 0, 1, 0], 0))
        self.assertEqual(self.rows("SELECT Name, Diameter FROM FLAT_END_MILL WHERE Name IN ('A', 'a', 'C')"),
                         [["a", 6.5], ["C", 8]])
        moved = self.file("Name,Diameter,Unit\nOther,8,mm\n")
        self.sql("DELETE FROM FLAT_END_MILL WHERE Name <> 'C'")
        self.assertEqual(self.imports(moved, "--table", "FLAT_END_MILL", "--match", "Unit,diameter", "--update")[0],
                         [0, 0, 0, 1, 0])
        self.sql("UPDATE FLAT_END_MILL SET Name = 'X'", "INSERT INTO FLAT_END_MILL (Name) VALUES ('x')")
        found, _, error = self.imports(self.file("Name,Diameter,Unit\nX,9,mm\n"), "--table", "FLAT_END_MILL", "--update")
        self.assertEqual(found, [0, 0, 0, 0, 1])
        self.assertIn("Several tools", error)

    def test_tools_survive_json_to_the_last_digit(self):
        chance = random.Random(4711)
        texts = ("", "x" * 40, "O'Neill", '1/4" "b"', "a\tb\\n", "Ø刀", "=1+2", " lead", "6,5", "TRUE", "null")
        number = lambda: chance.choice((chance.uniform(0.001, 400), chance.randrange(1, 99), 0.1 + 0.2, 1e-7, 1 / 3))
        for index in range(60):
            self.sql(("""INSERT INTO FLAT_END_MILL (Name, Diameter, Unit, [Flutes_#], Flute_Length, Overall_Length,
                         Shank_Diameter, Helix_Angle, Center_Cutting, Standard, Material, Coating, Holder, IsFavorite,
                         Comment) VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)""", (
                f"{chance.choice(texts)}{index}", number(), chance.choice(("mm", "in")),
                chance.choice((None, 0, 32767)), number(), number(), chance.choice((None, number())), chance.uniform(-60, 60),
                chance.choice((0, -1)), chance.choice(texts), chance.choice((None, 1, 11)),
                chance.choice((None, 1, 10)), chance.choice((None, 3)), chance.choice((0, -1)),
                chance.choice((*texts, None)))))
        listed = self.json("list", "FLAT_END_MILL", "--all")
        path = self.file(json.dumps(listed), "in.json")
        self.sql("DELETE FROM FLAT_END_MILL")
        self.assertEqual(self.imports(path, "--table", "FLAT_END_MILL")[:2], ([len(listed), 0, 0, 0, 0], 0))
        again = self.json("list", "FLAT_END_MILL", "--all")
        self.assertEqual([{**tool, "ID": 0} for tool in again], [{**tool, "ID": 0} for tool in listed])
        self.assertEqual(self.imports(path, "--table", "FLAT_END_MILL")[:2], ([0, len(listed), 0, 0, 0], 0))

    def test_bad_sources_and_options(self):
        good = self.file("Name,Diameter\nN,6\n")
        before = self.database.read_bytes()
        for code, words, *arguments in (
                (1, "No such file", self.folder / "none", "--table", "TAP"),
                (1, "no tool table 'NOPE'", good, "--table", "NOPE"),
                (1, "No kind of tool has a property 'Nope'", good, "--table", "TAP", "--map", "a=Nope"),
                (2, "COLUMN=PROPERTY", good, "--map", "a="), (2, "--unit", good, "--unit", "furlong")):
            done, _, error = self.db("import", *arguments)
            self.assertEqual((done, words in error), (code, True), (arguments, error))
        found, code, error = self.imports(good)
        self.assertEqual((found, code, "--table tells it" in error), ([0, 0, 0, 0, 1], 1, True))
        self.assertEqual(self.database.read_bytes(), before)


if __name__ == "__main__":
    unittest.main()
