"""Looking up machining data: answers compared with plain SQL over the same file."""
import json
import math
import os
import shlex
import sqlite3
import unittest
from contextlib import closing

from orxdb_host import Orxdb, run


def chosen(rows, low, high, value):
    """The row for a value, and the words that tell why."""
    holding = [row for row in rows if row[low] <= value <= row[high]]
    above = [row for row in rows if row[low] > value]
    if holding:
        return holding[0], "is the first range that holds"
    return (above[0], "is the next range above") if above else (rows[-1], "is the next range below")


class Lookup(Orxdb):
    def records(self, query, *values):
        with closing(sqlite3.connect(self.database)) as connection:
            connection.row_factory = sqlite3.Row
            return [dict(row) for row in connection.execute(query, values)]

    def told(self, words, *arguments):
        """What a verb answers that tells on standard error what it did."""
        code, output, error = run("--db", self.database, *arguments, "--json")
        self.assertEqual(code, 0, (arguments, error))
        self.assertIn(words, error, arguments)
        return json.loads(output)

    def test_materials(self):
        self.assertEqual(self.json("materials"), self.records("SELECT * FROM Q_STOCK_MATERIAL"))
        for name, words, like in (
                ("C45 *normalised", "first stock material", "C45 %normalised"),
                ("42crmo4*", "first stock material", "42CrMo4%"),
                ("CU-ETP?*", "first stock material", "Cu-ETP%"),
                ("AlSi9Cu3-Fe/ (A380), as cast", "first stock material", "AlSi9Cu3%"),
                ("11SMn30 (1213), cold drawn", "", "11SMn30%")):
            self.assertEqual(self.told(words, "materials", name),
                             self.records("SELECT * FROM Q_STOCK_MATERIAL WHERE DispType LIKE ?", like)[0])
        self.sql("DELETE FROM STOCK_MATERIAL")
        self.fails(1, "no stock materials", "--db", self.database, "materials")

    def test_feeds(self):
        for table, material, named, hardnesses in (
                ("DRILLING_FS", "Alloy steel", "alloy STEEL", [-1, 149.9, 150, 195, 200, 200.9, 345, 400, 1e9]),
                ("THREADING_FS", "Titanium", "Ti-6Al-4V (R56400), annealed", [241, 299.9, 330]),
                ("T24_27_30_31", "Copper", "Copper", [1, 40, 110.99, 111])):
            rows = self.records(f"SELECT * FROM Q_{table} WHERE Material = ?", material)
            for hardness in hardnesses:
                row, words = chosen(rows, "MinHB", "MaxHB", math.floor(hardness))
                answer = self.told(words, "feeds", table.lower(), "--material", named, "--hardness", hardness)
                self.assertEqual(answer, row, (table, hardness))
        self.told("R50400), annealed belongs to the group Titanium", "feeds", "REAMING_FS",
                  "--material", "Ti grade 2*", "--hardness", "165")

    def test_drill_feed(self):
        self.sql("DELETE FROM DRILL_FEED WHERE MinDiameter = 4")
        rows = self.records("SELECT * FROM Q_DRILL_FEED")
        for diameter in (-1, 0.1, 0.5, 1, 1.0000004, 1.1, 4.0000006, 5, 6, 50, 60, 1e300):
            row, words = chosen(rows, "MinDiameter", "MaxDiameter", round(diameter, 6))
            self.assertEqual(self.told(words, "drill-feed", diameter), row, diameter)
        self.told("mm", "drill-feed", 3)
        self.sql("DELETE FROM DRILL_FEED")
        self.fails(1, "no drill feed", "--db", self.database, "drill-feed", "3")

    def test_factor(self):
        for table, value, words in (
                ("T25", 0.22, "Feed 0.22 mm is between two rows"),
                ("T34", 7, "Diameter 7 mm is between"), ("t15B_15D_22", 0.123456, "between"),
                ("HARDNESS_RCB", 59.9999994, "between"), ("HARDNESS_RCB", 59.9999996, "exactly"),
                ("HARDNESS_BRC", 226, "exactly"), ("T5_FEED", 0.01, "below the first row"),
                ("T15c", -1e300, "below the first row"), ("T5_DEPTH", 16, "above the last row")):
            rows = self.records(f"SELECT * FROM Q_{table}")
            names = list(rows[0])
            key, asked = names[1], round(value, 6)
            lower = [row for row in rows if row[key] <= asked][-1:] or rows[:1]
            upper = [row for row in rows if row[key] >= asked][:1] or rows[-1:]
            expected = lower + upper
            marks = ["lower", "upper", "interpolated"]
            if lower == upper:
                expected = lower
                marks = ["exact" if lower[0][key] == asked else "first" if asked < lower[0][key] else "last"]
            else:
                part = (asked - lower[0][key]) / (upper[0][key] - lower[0][key])
                expected.append({name: float(f"{a + (b - a) * part:.9g}") if isinstance(a, float) else a
                                 for name, a, b in zip(names, lower[0].values(), upper[0].values())} | {"ID": None})
            self.assertEqual(self.told(words, "factor", table, value),
                             [{"Row": mark} | row for mark, row in zip(marks, expected)], (table, value))

    def test_values(self):
        listed = [row[0] for row in self.rows("SELECT Name FROM COATING ORDER BY Name COLLATE NOCASE")]
        self.assertEqual([row["Value"] for row in self.json("values", "tap", "coating")], listed)
        fitting = ("SELECT Name FROM TAPPING_HEAD WHERE {0:f} BETWEEN AUX_Metric_Min_Diameter AND "
                   "AUX_Metric_Max_Diameter ORDER BY Name COLLATE NOCASE")
        for diameter in (1, 6, 12.7):
            answer = self.told("no tapping head", "values", "PIPE_TAP", "TappingHead",
                               "--tap-diameter", diameter)
            self.assertEqual([row["Value"] for row in answer],
                             [row[0] for row in self.rows(fitting.format(diameter))] + [None])
        answer = self.told("inches", "values", "BALL_END_MILL", "Diameter")
        self.assertEqual([[row["Value"], row["Display"]] for row in answer], self.rows(
            "SELECT IMP_DECIM, rtrim(format('%.6f', IMP_DECIM), '.0') || "
            "coalesce('(' || LET_NUM_FRACT || ')', '') "
            "FROM T_FEM_TEMPL WHERE CCNO IS NOT NULL OR CCYES IS NOT NULL ORDER BY IMP_DECIM"))

    def test_heads_and_operations(self):
        for diameter, unit, factor in ((8, "mm", 1), (1, "mm", 1), (0.25, "in", 25.4), (3.5, "in", 25.4)):
            self.assertEqual(
                [[row["ID"], row["Name"]] for row in self.json("heads", diameter, "--unit", unit)],
                self.rows("SELECT ID, Name FROM TAPPING_HEAD WHERE AUX_Metric_Min_Diameter <= "
                          f"{diameter * factor} AND AUX_Metric_Max_Diameter >= {diameter * factor}"))
        for table, operation in self.rows("SELECT TOOLTABLE_NAME, PRIMARY_OP FROM TOOL_TYPES "
                                          "WHERE TOOL_TYPE IN ('Threading', 'Drilling')"):
            self.assertEqual(self.ok("operation", table[2:].lower()), operation + "\n")

    def test_picture(self):
        file = self.folder / "reamer.png"
        self.assertEqual(self.ok("picture", "REAMER", "-o", file), f"{file}\n")
        stored = self.rows("SELECT ICON FROM TOOL_TYPES WHERE TOOLTABLE_NAME = 'Q_REAMER'")[0][0]
        self.assertEqual(file.read_bytes(), stored)
        file.write_text("mine")
        os.mkfifo(self.folder / "pipe")
        for words, arguments in (("is there already", ["REAMER", "-o", file]),
                                 ("is a folder", ["REAMER", "-o", self.folder, "--force"]),
                                 ("cannot be created", ["REAMER", "-o", self.folder / "none" / "x.png"]),
                                 ("is no file", ["REAMER", "-o", self.folder / "pipe", "--force"]),
                                 ("no picture", ["DOVETAIL_CUTTER", "-o", self.folder / "x.png"])):
            self.fails(1, words, "--db", self.database, "picture", *arguments)
        self.assertEqual(file.read_text(), "mine")
        self.ok("picture", "REAMER", "-o", file, "--force")
        self.assertEqual(file.read_bytes(), stored)
        self.assertEqual({path.name.split("-")[0] for path in self.folder.iterdir()},
                         {"pipe", "reamer.png", "tools.mdb"})

    def test_refusals(self):
        feeds = "feeds REAMING_FS --hardness 200 --material"
        self.sql("DROP VIEW Q_T5_FEED; DELETE FROM T34")
        for code, words, *lines in (
                (1, "no stock material", 'materials "O\'Brien"', "materials ''"),
                (1, "no row for the material 'Wood'", f"{feeds} Wood"), (1, "apostrophe", f'{feeds} "O\'Brien"'),
                (1, "T15b_15d_22, T15c", "feeds TAP --hardness 200 --material Copper"),
                (1, "cannot be searched", "feeds T25 --hardness 200 --material Copper"),
                (1, "no table T5_FEED", "feeds T5_FEED --hardness 200 --material Copper", "factor T5_FEED 1"),
                (1, "empty", "factor T34 1"), (1, "HARDNESS_RCB", 'factor "T\'25" 1'),
                (1, "second column is Material", "factor REAMING_FS 1"), (1, "drill-feed", "factor DRILL_FEED 3"),
                (1, "no primary operation", "operation TAPPING_HEAD"), (1, "no tool table", 'operation "T\'P"'),
                (1, "no list of values", "values TAP Diameter"), (1, "have no property", 'values TAP "Tapping\'Head"'),
                (1, "of 600 mm", "values TAP TappingHead --tap-diameter 600"),
                (1, "of 0 mm", "values TAP TappingHead --tap-diameter 0"),
                (1, "TAP and PIPE_TAP", "values REAMER Material --tap-diameter 6"),
                (1, "of 90 in", "heads 90 --unit in"), (2, "unit", "heads 6 --unit MM"),
                (2, "no number", "heads 1e999", "drill-feed 3,5", "factor T25 nan",
                 "feeds REAMING_FS --hardness inf --material Copper"),
                (2, "material", "feeds REAMING_FS --hardness 200"), (2, "--output", "picture TAP")):
            for line in lines:
                self.fails(code, words, "--db", self.database, *shlex.split(line))


if __name__ == "__main__":
    unittest.main()
