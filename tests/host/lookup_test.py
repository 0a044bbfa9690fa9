"""Looking up machining data and what goes with tools: answers compared with plain SQL over the same file."""
import json
import math
import os
import shlex
import sqlite3
import unittest
from contextlib import closing

from orxdb_host import Orxdb


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
        code, output, error = self.db(*arguments, "--json")
        self.assertEqual((code, words in error), (0, True), (arguments, error))
        return json.loads(output)

    def test_materials_and_feeds(self):
        self.assertEqual(self.json("materials"), self.records("SELECT * FROM Q_STOCK_MATERIAL"))
        for text, condition in (
                ("42crmo", "DispType LIKE '%42CrMo%'"), ("1.0503", "Number_EN = '1.0503'"),
                ("alu* CAST", "Material LIKE '%aluminium%' AND (DispType LIKE '%cast%' OR Material LIKE '%cast%')"),
                ("steel normal*", "Material LIKE '%steel%' AND Condition = 'normalised'"), ("C?5", "Designation_EN LIKE 'C_5'"),
                ("a380", "Designation_US = 'A380'"), ("11SMn30 (1213), cold drawn", "DispType LIKE '11SMn30 %'")):
            found = self.records(f"SELECT * FROM Q_STOCK_MATERIAL WHERE {condition}")
            self.assertEqual((self.json("materials", text), bool(found)), (found, True), text)
        for table, material, named, hardnesses in (
                ("DRILLING_FS", "Alloy steel", "alloy STEEL", [-1, 149.9, 200.9, 1e9]),
                ("THREADING_FS", "Titanium", "Ti-6Al-4V (R56400), annealed", [299.9])):
            rows = self.records(f"SELECT * FROM Q_{table} WHERE Material = ?", material)
            for hardness in hardnesses:
                row, words = chosen(rows, "MinHB", "MaxHB", math.floor(hardness))
                self.assertEqual(self.told(words, "feeds", table.lower(), "--material", named,
                                           "--hardness", hardness), row, (table, hardness))
        self.told("R50400), annealed belongs to the group Titanium", "feeds", "REAMING_FS",
                  "--material", "Ti grade 2*", "--hardness", "165")
        self.sql("DELETE FROM DRILL_FEED WHERE MinDiameter = 4")
        rows = self.records("SELECT * FROM Q_DRILL_FEED")
        for diameter in (-1, 1.0000004, 4.0000006, 6, 1e300):
            row, words = chosen(rows, "MinDiameter", "MaxDiameter", round(diameter, 6))
            self.assertEqual(self.told(words, "drill-feed", diameter), row, diameter)

    def test_factor(self):
        for table, value, words in (
                ("T25", 0.22, "Feed 0.22 mm is between two rows"), ("t15B_15D_22", 0.123456, "between"),
                ("HARDNESS_RCB", 59.9999994, "between"), ("HARDNESS_RCB", 59.9999996, "exactly"),
                ("T5_FEED", 0.01, "below the first row"), ("T5_DEPTH", 16, "above the last row")):
            rows = self.records(f"SELECT * FROM Q_{table}")
            names, asked = list(rows[0]), round(value, 6)
            lower = [row for row in rows if row[names[1]] <= asked][-1:] or rows[:1]
            upper = [row for row in rows if row[names[1]] >= asked][:1] or rows[-1:]
            answer = self.told(words, "factor", table, value)
            mark = answer[-1].pop("Row")
            if lower == upper:
                self.assertEqual((mark, answer), ({"exa": "exact", "bel": "first", "abo": "last"}[words[:3]], lower))
                continue
            part = (asked - lower[0][names[1]]) / (upper[0][names[1]] - lower[0][names[1]])
            between = {name: float(f"{a + (b - a) * part:.9g}") if isinstance(a, float) else a
                       for name, a, b in zip(names, lower[0].values(), upper[0].values())} | {"ID": None}
            self.assertEqual((mark, answer), ("interpolated", [
                {"Row": "lower"} | lower[0], {"Row": "upper"} | upper[0], between]), (table, value))

    def test_values_and_heads(self):
        listed = [row[0] for row in self.rows("SELECT Name FROM COATING ORDER BY Name COLLATE NOCASE")]
        self.assertEqual([row["Value"] for row in self.json("values", "tap", "coating")], listed)
        fitting = ("SELECT ID, Name FROM TAPPING_HEAD WHERE {0:f} BETWEEN AUX_Metric_Min_Diameter AND "
                   "AUX_Metric_Max_Diameter ORDER BY Name COLLATE NOCASE")
        answer = self.told("no tapping head", "values", "PIPE_TAP", "TappingHead", "--tap-diameter", 12.7)
        self.assertEqual([row["Value"] for row in answer],
                         [row[1] for row in self.rows(fitting.format(12.7))] + [None])
        for diameter, unit, metric in ((8, "mm", 8), (0.25, "in", 6.35)):
            self.assertEqual([[row["ID"], row["Name"]] for row in self.json("heads", diameter, "--unit", unit)],
                             sorted(self.rows(fitting.format(metric))))
        answer = self.told("inches", "values", "BALL_END_MILL", "Diameter")
        self.assertEqual([[row["Value"], row["Display"]] for row in answer], self.rows(
            "SELECT IMP_DECIM, rtrim(format('%.6f', IMP_DECIM), '.0') || "
            "coalesce('(' || LET_NUM_FRACT || ')', '') "
            "FROM T_FEM_TEMPL WHERE CCNO IS NOT NULL OR CCYES IS NOT NULL ORDER BY IMP_DECIM"))
        for table, operation in self.rows("SELECT TOOLTABLE_NAME, PRIMARY_OP FROM TOOL_TYPES "
                                          "WHERE TOOL_TYPE = 'Threading'"):
            self.assertEqual(self.ok("operation", table[2:].lower()), operation + "\n")

    def test_picture(self):
        file = self.folder / "reamer.png"
        self.assertEqual(self.ok("picture", "REAMER", "-o", file), f"{file}\n")
        stored = self.rows("SELECT ICON FROM TOOL_TYPES WHERE TOOLTABLE_NAME = 'Q_REAMER'")[0][0]
        self.assertEqual(file.read_bytes(), stored)
        file.write_text("mine")
        os.mkfifo(self.folder / "pipe")
        for words, *arguments in (("is there already", "REAMER", "-o", file),
                                  ("is a folder", "REAMER", "-o", self.folder, "--force"),
                                  ("cannot be created", "REAMER", "-o", self.folder / "none" / "x.png"),
                                  ("is no file", "REAMER", "-o", self.folder / "pipe", "--force"),
                                  ("no picture", "DOVETAIL_CUTTER", "-o", self.folder / "x.png")):
            self.fails(1, words, "picture", *arguments)
        self.assertEqual(file.read_text(), "mine")
        self.ok("picture", "REAMER", "-o", file, "--force")
        self.assertEqual(file.read_bytes(), stored)

    def test_refusals(self):
        feeds = "feeds REAMING_FS --hardness 200 --material"
        self.sql("DROP VIEW Q_T5_FEED; DELETE FROM T34; DELETE FROM DRILL_FEED")
        for words, *lines in (
                ("no stock material", 'materials "O\'Brien"', "materials umin*", "materials '['"), ("no drill feed", "drill-feed 3"),
                ("no row for the material 'Wood'", f"{feeds} Wood"), ("apostrophe", f'{feeds} "O\'Brien"'),
                ("T15b_15d_22, T15c", "feeds TAP --hardness 200 --material Copper"),
                ("cannot be searched", "feeds T25 --hardness 200 --material Copper"),
                ("no table T5_FEED", "feeds T5_FEED --hardness 200 --material Copper", "factor T5_FEED 1"),
                ("empty", "factor T34 1"), ("second column is Material", "factor REAMING_FS 1"),
                ("drill-feed", "factor DRILL_FEED 3"), ("no primary operation", "operation TAPPING_HEAD"),
                ("no list of values", "values TAP Diameter"), ("have no property", 'values TAP "Tapping\'Head"'),
                ("of 600 mm", "values TAP TappingHead --tap-diameter 600"),
                ("of 0 mm", "values TAP TappingHead --tap-diameter 0"), ("of 90 in", "heads 90 --unit in"),
                ("TAP and PIPE_TAP", "values REAMER Material --tap-diameter 6")):
            for line in lines:
                self.fails(1, words, *shlex.split(line))
