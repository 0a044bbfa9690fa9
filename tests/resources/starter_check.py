#!/usr/bin/env python3
"""Builds the starter tool database in memory from its scripts and checks what the data means."""

import re
import sqlite3
import struct
import sys
import unittest
import zlib
from fractions import Fraction
from pathlib import Path

STARTER = Path(sys.argv.pop(1) if len(sys.argv) > 1 else "resources/starter")
sys.path.insert(0, str(STARTER / "pictures"))
import make_pictures  # noqa: E402

NAMED = {"FLAT_END_MILL", "BALL_END_MILL", "TAP", "PIPE_TAP", "TAPPING_HEAD"}
SPEEDS = ["DRILLING_FS", "END_MILLING_FS", "FACE_MILLING_FS", "REAMING_FS", "RECOMMENDED_FS", "SLIT_MILLING_FS",
          "THREADING_FS"]
RANGES = SPEEDS + ["T24_27_30_31"]
FACTORS = ["T15b_15d_22", "T15c", "T25", "T33", "T34", "HARDNESS_BRC", "HARDNESS_RCB", "T5_DEPTH", "T5_FEED"]
WITHOUT_PICTURE = {"WOODRUFF_CUTTER", "DOVETAIL_CUTTER"}
FROM_HEAD = ["Approach_Height", "Retraction_Height", "Extra_Depth", "Retraction_Ratio"]
NOT_EXPORTED = ["ID", "AUX_", "Feed", "Speed", "IsFavorite"]
WHOLE = {"BYTE": (0, 255), "SHORT": (-2**15, 2**15 - 1), "LONG": (-2**31, 2**31 - 1), "BOOLEAN": (-1, 0)}
REALS = {"SINGLE", "DOUBLE", "CURRENCY"}
OTHERS = {"DATETIME", "LONGBINARY", "LONGTEXT", "GUID", "INTEGER"}
INCH = 25.4


def picture(name):
    return (STARTER / "pictures" / (name.lower() + ".png")).read_bytes()


def build():
    db = sqlite3.connect(":memory:")
    db.row_factory = sqlite3.Row
    db.create_function("picture", 1, picture)
    for script in sorted(STARTER.glob("*.sql")):
        db.executescript(script.read_text(encoding="utf-8"))
    return db


class Starter(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.db = build()
        cls.catalogue = cls.rows("TOOL_TYPES")
        cls.tools = [row["TOOLTABLE_NAME"][2:] for row in cls.catalogue]

    @classmethod
    def rows(cls, source):
        return cls.db.execute(f'SELECT * FROM "{source}"').fetchall()

    def objects(self, kind):
        return {row["name"]: row["sql"] for row in self.db.execute(
            "SELECT name, sql FROM sqlite_schema WHERE type = ? AND name NOT LIKE 'sqlite_%'", [kind])}

    def types(self, table):
        return {row["name"]: row["type"] for row in self.db.execute(f'PRAGMA table_info("{table}")')}

    def joins(self, table):
        """Lookup columns of a tool table's stored query: column -> (table, text column)."""
        sql = self.objects("view")["Q_" + table]
        tables = {alias: (name, column) for name, alias, column in
                  re.findall(r"LEFT JOIN (\w+) AS (\w+) ON \2\.ID = T\.(\w+)", sql)}
        shown = re.findall(r"(\w+)\.(\w+) AS (\w+)", sql)
        return {name: (tables[alias][0], text) for alias, text, name in shown
                if alias in tables and tables[alias][1] == name}

    def each(self, table, query=True):
        for row in self.rows("Q_" + table if query else table):
            with self.subTest(table=table, row=tuple(row)[:3]):
                yield row


class Shape(Starter):
    def test_scripts_leave_the_transaction_to_the_creator(self):
        for script in STARTER.glob("*.sql"):
            text = re.sub(r"--.*", "", script.read_text(encoding="utf-8"))
            self.assertIsNone(re.search(r"\b(PRAGMA|BEGIN|COMMIT|ATTACH|VACUUM)\b", text), script.name)

    def test_catalogue_names_tables_with_stored_queries(self):
        self.assertEqual(len(set(self.tools)), len(self.tools))
        self.assertLessEqual(NAMED, set(self.tools))
        self.assertGreaterEqual(len(self.tools), 15)
        tables, views = self.objects("table"), self.objects("view")
        for row, table in zip(self.catalogue, self.tools):
            self.assertEqual(row["TOOLTABLE_NAME"], "Q_" + table)
            self.assertIn(table, tables)
            self.assertIn("Q_" + table, views)
            self.assertTrue(row["TOOL_TYPE"] and row["TOOL_SUBTYPE"] and row["COMMENT"])
            self.assertIn(row["TEMPL_TAB_NAME"] or table, tables)
        stored = {"Q_" + name for name in self.tools + RANGES + FACTORS + ["DRILL_FEED", "STOCK_MATERIAL"]}
        self.assertEqual({name for name in views if name.startswith("Q_")}, stored)
        self.assertEqual(len(RANGES + FACTORS) + 1, 18)
        self.assertEqual([table for row, table in zip(self.catalogue, self.tools) if not row["PRIMARY_OP"]], ["TAPPING_HEAD"])
        parts = [{row["TOOLTABLE_NAME"] for row in self.rows(view)} for view in views
                 if view.endswith("_TYPES") and view != "TOOL_TYPES"]
        self.assertEqual(set().union(*parts), {"Q_" + name for name in self.tools} - {"Q_TAPPING_HEAD"})

    def test_every_view_column_is_named_and_the_key_comes_first(self):
        for name, sql in self.objects("view").items():
            head, tail = re.fullmatch(r"CREATE VIEW \w+ AS\s+SELECT (.*?)\s+FROM (.*)", sql, re.S).groups()
            items = [item.strip() for item in head.split(",")]
            for item in items:
                self.assertRegex(item, r'^\w+\.("[^"]+"|\w+) AS ("[^"]+"|\w+)$', name)
            shown = [item.split(" AS ")[1].strip('"') for item in items]
            self.assertEqual(len(set(map(str.lower, shown))), len(shown), name)
            self.assertEqual(shown[0], "TAPPING_HEAD.ID" if name == "Q_TAPPING_HEAD" else "ID")
            base = tail.split()[0]
            self.assertIn("ID INTEGER PRIMARY KEY AUTOINCREMENT", self.objects("table")[base])
            if name[2:] in self.tools:
                self.assertEqual(base, name[2:])
                self.assertNotRegex(tail, r"WHERE|ORDER BY")
                for column in set(self.types(base)) - {"ID"}:
                    self.assertIn(column, shown, name)
                self.assertEqual([row[0] for row in self.rows(name)],
                                 [row["ID"] for row in self.db.execute(f"SELECT ID FROM {base} ORDER BY ID")])

    def test_values_fit_their_declared_types(self):
        for table in self.objects("table"):
            types = self.types(table)
            for row in self.rows(table):
                for column, declared in types.items():
                    value, where = row[column], f"{table}.{column}"
                    text = re.fullmatch(r"TEXT\((\d+)\)", declared)
                    if value is None:
                        continue
                    if text:
                        self.assertIsInstance(value, str, where)
                        self.assertTrue(0 < len(value) <= int(text[1]), where)
                    elif declared in WHOLE:
                        low, high = WHOLE[declared]
                        self.assertTrue(isinstance(value, int) and low <= value <= high, where)
                    elif declared in REALS:
                        self.assertIsInstance(value, float, where)
                    else:
                        self.assertIn(declared, OTHERS, where)

    def test_search_parameters_and_name_formats_use_existing_columns(self):
        for row, table in zip(self.catalogue, self.tools):
            columns = set(self.rows("Q_" + table)[0].keys())
            search = row["SEARCH_PARAM"].split("\r\n")
            self.assertEqual(len(set(search)), len(search), table)
            self.assertLessEqual(set(search), columns, table)
            pieces = row["DEF_NAME_FORMAT"].split("%")
            self.assertTrue(len(pieces) > 2 and len(pieces) % 2 == 1, table)
            self.assertEqual(pieces[-1], "", f"{table}: text after the last sign is lost")
            self.assertLessEqual(set(pieces[1::2]), columns, table)
            for tool in self.each(table):
                name = "".join(str(tool[p] if tool[p] is not None else "") if i % 2 else p for i, p in enumerate(pieces))
                self.assertLessEqual(len(name), int(self.types(table)["Name"][5:-1]))

    def test_pictures_are_what_the_generator_draws(self):
        for row, table in zip(self.catalogue, self.tools):
            self.assertEqual(row["ICON"], None if table in WITHOUT_PICTURE else picture(table), table)
        self.assertEqual({name.upper() for name in make_pictures.PICTURES}, set(self.tools) - WITHOUT_PICTURE)
        pixels = {}
        for name, shapes in make_pictures.PICTURES.items():
            stored = self.pixels(picture(name))
            self.assertEqual(stored, self.pixels(make_pictures.png(shapes)), name)
            pixels[name] = stored
        self.assertEqual(len(set(pixels.values())), len(pixels))

    def pixels(self, data):
        self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n")
        at, chunks = 8, {}
        while at < len(data):
            size, kind = struct.unpack(">I4s", data[at:at + 8])
            body = data[at + 8:at + 8 + size]
            self.assertEqual(zlib.crc32(kind + body), struct.unpack(">I", data[at + 8 + size:at + 12 + size])[0])
            chunks[kind] = body
            at += 12 + size
        self.assertEqual((kind, struct.unpack(">II", chunks[b"IHDR"][:8])), (b"IEND", (64, 64)))
        return zlib.decompress(chunks[b"IDAT"])


class Tools(Starter):
    def test_sizes_and_names(self):
        for table in self.tools:
            names = [row["Name"] for row in self.rows(table)]
            self.assertTrue(15 <= len(names) <= 80, (table, len(names)))
            self.assertTrue(all(name and name == name.strip() for name in names), table)
            self.assertEqual(len(set(map(str.lower, names))), len(names), table)
            plan = f"EXPLAIN QUERY PLAN SELECT * FROM Q_{table} WHERE Name = '' COLLATE NOCASE"
            self.assertIn(f"{table}_Name", self.db.execute(plan).fetchone()["detail"])

    def test_a_new_tool_starts_with_defaults(self):
        db = build()
        for table in self.tools:
            db.execute(f"INSERT INTO {table} DEFAULT VALUES")
            row = db.execute(f'SELECT * FROM Q_{table} ORDER BY 1 DESC').fetchone()
            self.assertIn(row["Unit"], ("mm", "in"))
            self.assertEqual(row["IsFavorite"], 0)
            self.assertEqual(row[0], len(self.rows(table)) + 1)
            joined = self.joins(table)
            for column in set(joined) & {"Material", "Coating"}:
                self.assertTrue(row[column], (table, column))
            own = self.types(table)
            for column in set(own) - set(joined) - {"ID"}:
                if not own[column].startswith("TEXT") and not column.startswith("AUX_"):
                    self.assertIsNotNone(row[column], (table, column))

    def test_lookups_resolve_and_taps_get_fitting_heads(self):
        expected = {"Material": "TOOL_MATERIAL", "Coating": "COATING", "Holder": "HOLDER", "TappingHead": "TAPPING_HEAD"}
        for table in self.tools:
            joins = self.joins(table)
            for column in set(self.types(table)) & set(expected):
                self.assertEqual(joins[column], (expected[column], "Name"), table)
            for stored, shown in zip(self.rows(table), self.rows("Q_" + table)):
                for column in joins:
                    self.assertEqual(stored[column] is None, shown[column] is None, (table, column))
                self.assertTrue(table == "TAPPING_HEAD" or shown["Material"] and shown["Coating"], shown["Name"])
        for lookup in set(expected.values()):
            texts = [row["Name"].lower() for row in self.rows(lookup)]
            self.assertEqual(len(set(texts)), len(texts), lookup)
        heads = {row["Name"]: row for row in self.rows("Q_TAPPING_HEAD")}
        for table in ("TAP", "PIPE_TAP"):
            used = [row for row in self.each(table) if row["TappingHead"]]
            self.assertTrue(0 < len(used) < len(self.rows(table)), "some with a head, some without")
            for tap in used:
                head = heads[tap["TappingHead"]]
                self.assertTrue(head["AUX_Metric_Min_Diameter"] <= tap["AUX_Metric_Diameter"]
                                <= head["AUX_Metric_Max_Diameter"], tap["Name"])
                self.assertEqual([tap[c] for c in FROM_HEAD + ["Unit"]], [head[c] for c in FROM_HEAD + ["Unit"]])

    def test_metric_columns_agree_with_the_unit(self):
        for table in self.tools:
            columns = self.types(table)
            pairs = {aux: aux[len("AUX_Metric_"):] for aux in columns if aux.startswith("AUX_Metric_")}
            if table in ("CENTER_DRILL", "BORING_BAR"):
                pairs = {"AUX_Metric_Diameter": {"CENTER_DRILL": "Pilot_", "BORING_BAR": "Bar_"}[table] + "Diameter"}
            self.assertTrue(pairs, table)
            self.assertEqual({row["Unit"] for row in self.rows(table)}, {"mm", "in"})
            for row in self.each(table, query=False):
                scale = {"mm": 1, "in": INCH}[row["Unit"]]
                for aux, own in pairs.items():
                    self.assertAlmostEqual(row[aux], row[own] * scale, 5)
                    self.assertTrue(0.2 < row[aux] < 260)

    def test_exchange_files_can_carry_every_tool(self):
        """A null number, a real beyond six decimals, or a quotation mark would not come back from a file."""
        for table in self.tools:
            types = self.types(table)
            joined = self.joins(table)
            for row in self.each(table):
                for column in row.keys():
                    if any(text in column for text in NOT_EXPORTED) or column in FROM_HEAD and table != "TAPPING_HEAD":
                        continue
                    declared = "TEXT" if column in joined else types[column].split("(")[0]
                    self.assertNotIn(declared, {"CURRENCY", "DATETIME", "LONGBINARY", "GUID"})
                    if declared == "TEXT":
                        self.assertNotRegex(row[column] or "", "['\"]")
                    else:
                        self.assertIsNotNone(row[column], column)
                        self.assertEqual(float("%f" % row[column]), row[column], column)

    def test_dimensions_are_possible(self):
        smaller = [("Flute_Length", "Overall_Length"), ("Thread_Length", "Overall_Length"), ("Min_Diameter", "Max_Diameter"),
                   ("Tap_Drill", "Diameter"), ("Pilot_Diameter", "Diameter"), ("Pilot_Diameter", "Body_Diameter"),
                   ("Bar_Diameter", "Min_Bore"), ("Bore_Diameter", "Diameter"), ("Width", "Diameter"),
                   ("Tip_Diameter", "Diameter")]
        for table in self.tools:
            columns = set(self.rows("Q_" + table)[0].keys())
            for row in self.each(table):
                for less, more in smaller:
                    if {less, more} <= columns:
                        self.assertLess(row[less], row[more], (less, more))
                if {"Pitch", "Threads_Per_Inch"} <= columns:
                    inch = {"mm": INCH, "in": 1}[row["Unit"]]
                    self.assertAlmostEqual(row["Pitch"] * row["Threads_Per_Inch"], inch, 3)
        for row in self.each("TAP"):
            self.assertAlmostEqual(row["Tap_Drill"] / (row["Diameter"] - row["Pitch"]), 1, delta=0.05)
        for row in self.each("BALL_END_MILL"):
            self.assertEqual(row["Ball_Radius"] * 2, row["Diameter"])

    def test_holders_take_the_shank(self):
        holders = {row["ID"]: row for row in self.rows("HOLDER")}
        held = 0
        for table in self.tools:
            size = next((c for c in ("Shank_Diameter", "Body_Diameter", "Bar_Diameter", "Bore_Diameter")
                         if c in self.types(table)), None)
            for row in self.each(table, query=False):
                if size and row["Holder"]:
                    mm = row[size] * {"mm": 1, "in": INCH}[row["Unit"]]
                    holder = holders[row["Holder"]]
                    self.assertTrue(holder["Metric_Min_Shank"] - 0.01 <= mm <= holder["Metric_Max_Shank"] + 0.01)
                    held += 1
        self.assertGreater(held, 500)


class Machining(Starter):
    def test_hardness_ranges_cover_the_stock_materials(self):
        stock = self.rows("Q_STOCK_MATERIAL")
        self.assertGreaterEqual(len(stock), 40)
        self.assertEqual(len({row["DispType"].lower() for row in stock}), len(stock))
        for table in RANGES:
            rows = self.rows("Q_" + table)
            groups = {}
            for row in rows:
                groups.setdefault(row["Material"], []).append((row["MinHB"], row["MaxHB"]))
            self.assertEqual(set(groups), {row["Material"] for row in stock}, table)
            for row in stock:
                self.assertTrue(row["MinHB"] <= row["Typical_HB"] <= row["MaxHB"], row["DispType"])
                self.assertTrue(any(low <= row["Typical_HB"] <= high for low, high in groups[row["Material"]]),
                                (table, row["DispType"]))
            steps = []
            for ranges in groups.values():
                self.assertTrue(all(low < high for low, high in ranges) and ranges == sorted(ranges), table)
                steps += [after[0] - before[1] for before, after in zip(ranges, ranges[1:])]
            self.assertTrue(min(steps) < 0 in steps and max(steps) > 1, f"{table}: overlap, shared end and gap")

    def test_harder_material_is_cut_slower(self):
        for table in SPEEDS:
            speeds = [c for c in self.rows("Q_" + table)[0].keys() if c.endswith("_Speed")]
            self.assertTrue(speeds)
            last = {}
            for row in self.each(table):
                self.assertEqual((row["Speed_Unit"], row["Source"]), ("m/min", "Starting value"))
                for column in speeds:
                    self.assertTrue(0 < row[column] <= last.get((row["Material"], column), 1000), column)
                    last[row["Material"], column] = row[column]
                for slower, faster in (("HSS_Speed", "Carbide_Speed"), ("HSS_Tap_Speed", "Coated_Tap_Speed")):
                    if faster in speeds:
                        self.assertLess(row[slower], row[faster])
        for row in self.each("T24_27_30_31"):
            self.assertTrue(0.3 < row["Power_Constant"] < 4 and 0 < row["Efficiency"] <= 1)

    def test_drill_feed_ranges_join_without_gaps(self):
        rows = self.rows("Q_DRILL_FEED")
        self.assertGreater(len(rows), 10)
        for before, row in zip([None] + rows, rows):
            self.assertLess(row["MinDiameter"], row["MaxDiameter"])
            self.assertTrue(0 < row["Min_Feed"] < row["Feed"] < row["Max_Feed"])
            if before:
                self.assertEqual(before["MaxDiameter"], row["MinDiameter"])
                self.assertLess(before["Feed"], row["Feed"])

    def test_factor_tables_ascend_by_their_second_column(self):
        for table in FACTORS:
            rows = self.rows("Q_" + table)
            self.assertGreaterEqual(len(rows), 10, table)
            keys = [row[1] for row in rows]
            self.assertEqual(keys, sorted(set(keys)), table)
            for i, column in enumerate(rows[0].keys()[2:], 2):
                if self.types(table)[column] == "DOUBLE":
                    values = [row[i] for row in rows]
                    self.assertTrue(values in (sorted(values), sorted(values, reverse=True)), (table, column))
                    self.assertGreater(min(values), 0)

    def test_stored_order_survives_rows_added_out_of_order(self):
        db = build()
        db.execute("INSERT INTO DRILL_FEED (MinDiameter, MaxDiameter) VALUES (0.1, 0.5)")
        db.execute("INSERT INTO T25 (Feed) VALUES (0.01)")
        db.execute("INSERT INTO REAMING_FS (Material, MinHB, MaxHB) VALUES ('alloy steel', 100, 150)")
        for query, first in (("Q_DRILL_FEED", 0.1), ("Q_T25", 0.01), ("Q_REAMING_FS", "alloy steel")):
            self.assertEqual(db.execute(f"SELECT * FROM {query}").fetchone()[1], first)

    def test_hardness_conversions_agree_both_ways(self):
        back = [(row["HB"], row["HRC"]) for row in self.rows("Q_HARDNESS_BRC")]
        for row in self.each("HARDNESS_RCB"):
            (b0, c0), (b1, c1) = next(p for p in zip(back, back[1:]) if p[0][0] <= row["HB"] <= p[1][0])
            self.assertAlmostEqual(c0 + (c1 - c0) * (row["HB"] - b0) / (b1 - b0), row["HRC"], delta=0.2)

    def test_end_mill_template(self):
        rows = self.rows("T_FEM_TEMPL")
        standard = [row for row in rows if row["CCNO"] is not None or row["CCYES"] is not None]
        self.assertGreaterEqual(len(standard), 30)
        self.assertLess(len(standard), len(rows))
        self.assertEqual({row["LET_NUM_FRACT"] is None for row in standard}, {True, False})
        for row in rows:
            self.assertAlmostEqual(row["METRIC"], row["IMP_DECIM"] * INCH, 4)
            if row["LET_NUM_FRACT"]:
                self.assertEqual(Fraction(row["LET_NUM_FRACT"]), Fraction(row["IMP_DECIM"]))


if __name__ == "__main__":
    unittest.main()
