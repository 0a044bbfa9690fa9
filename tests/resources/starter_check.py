#!/usr/bin/env python3
"""Builds the starter tool database in memory from its scripts and checks what the data means."""

import re
import sqlite3
import struct
import sys
import unittest
import zlib
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
LOOKUPS = {"Material": "TOOL_MATERIAL", "Coating": "COATING", "Holder": "HOLDER", "TappingHead": "TAPPING_HEAD"}
FROM_HEAD = ["Approach_Height", "Retraction_Height", "Extra_Depth", "Retraction_Ratio"]
WHOLE = {"BYTE": "0 AND 255", "SHORT": "-32768 AND 32767", "LONG": "-2147483648 AND 2147483647", "BOOLEAN": "-1 AND 0"}
REALS = {"SINGLE", "DOUBLE", "CURRENCY"}
OTHERS = {"DATETIME", "LONGBINARY", "LONGTEXT", "GUID", "INTEGER"}
MM = "iif([Unit] = 'mm', 1, 25.4)"

# What holds of every tool whose stored query has all the columns in brackets.
TOOL_RULES = [f"[{less}] < [{more}]" for less, more in (pair.split("<") for pair in (
    "Flute_Length<Overall_Length Thread_Length<Overall_Length Min_Diameter<Max_Diameter Tap_Drill<Diameter "
    "Pilot_Diameter<Diameter Pilot_Diameter<Body_Diameter Bar_Diameter<Min_Bore Bore_Diameter<Diameter "
    "Width<Diameter Tip_Diameter<Diameter").split())]
# Its holder takes its shank.
TOOL_RULES += [f"[Holder] IS NULL OR (SELECT [{size}_Diameter] * {MM} BETWEEN Metric_Min_Shank - 0.01 "
               "AND Metric_Max_Shank + 0.01 FROM HOLDER WHERE Name = T.[Holder])"
               for size in ("Shank", "Body", "Bar", "Bore")]
TOOL_RULES += [
    "[Unit] IN ('mm', 'in')",
    "[Name] = trim([Name]) AND [Name] <> ''",
    "(SELECT count(*) FROM {table} AS O WHERE O.Name = T.[Name] COLLATE NOCASE) = 1",
    "[Material] <> '' AND [Coating] <> ''",
    "abs([Pitch] * [Threads_Per_Inch] - iif([Unit] = 'mm', 25.4, 1)) < 0.0005",
    "'{table}' <> 'TAP' OR abs([Tap_Drill] / ([Diameter] - [Pitch]) - 1) <= 0.05",
    "[Ball_Radius] * 2 = [Diameter]",
    # Its tapping head is one for the diameter, and the head's values are shown.
    "[TappingHead] IS NULL OR EXISTS (SELECT 1 FROM TAPPING_HEAD AS H WHERE H.Name = T.[TappingHead] AND "
    "T.[AUX_Metric_Diameter] BETWEEN H.AUX_Metric_Min_Diameter AND H.AUX_Metric_Max_Diameter AND "
    + " AND ".join(f"T.{column} = H.{column}" for column in FROM_HEAD + ["Unit"]) + ")"]


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
        cls.tables, cls.views = ({row["name"]: row["sql"] for row in cls.rows("sqlite_schema") if row["type"] == kind
                                  and not row["name"].startswith("sqlite_")} for kind in ("table", "view"))
        cls.columns = {source: {row["name"]: row["type"] for row in cls.rows(f"pragma_table_info('{source}')")}
                       for source in (*cls.tables, *cls.views)}

    @classmethod
    def rows(cls, source, what="*"):
        return cls.db.execute(f"SELECT {what} FROM {source}").fetchall()

    def holds(self, source, *rules):
        """Each rule is true for every row of the source, aliased T."""
        for rule in rules:
            broken = self.rows(f"{source} AS T WHERE ({rule}) IS NOT TRUE LIMIT 3")
            self.assertFalse([tuple(row)[:3] for row in broken], f"{source}: {rule}")


class Shape(Starter):
    def test_catalogue_names_tables_with_stored_queries(self):
        self.assertEqual(len(set(self.tools)), len(self.tools))
        self.assertLessEqual(NAMED, set(self.tools))
        self.assertGreaterEqual(len(self.tools), 15)
        self.holds("TOOL_TYPES", "TOOLTABLE_NAME LIKE 'Q\\_%' ESCAPE '\\'", "TOOL_TYPE <> '' AND TOOL_SUBTYPE <> ''",
                   "COMMENT <> ''", "(PRIMARY_OP IS NULL) = (TOOLTABLE_NAME = 'Q_TAPPING_HEAD')",
                   "coalesce(TEMPL_TAB_NAME, substr(TOOLTABLE_NAME, 3)) IN (SELECT name FROM sqlite_schema)")
        named = {"Q_" + name for name in self.tools}
        stored = {"Q_" + name for name in RANGES + FACTORS + ["DRILL_FEED", "STOCK_MATERIAL"]}
        self.assertEqual({name for name in self.views if name.startswith("Q_")}, named | stored)
        parts = {row["TOOLTABLE_NAME"] for view in self.views if re.search("._TYPES$", view) and view != "TOOL_TYPES"
                 for row in self.rows(view)}
        self.assertEqual(parts, named - {"Q_TAPPING_HEAD"})

    def test_values_fit_their_declared_types(self):
        for table in self.tables:
            for column, declared in self.columns[table].items():
                if text := re.fullmatch(r"TEXT\((\d+)\)", declared):
                    rule = f"typeof([{column}]) = 'text' AND length([{column}]) BETWEEN 1 AND {text[1]}"
                elif declared in WHOLE:
                    rule = f"typeof([{column}]) = 'integer' AND [{column}] BETWEEN {WHOLE[declared]}"
                else:
                    self.assertIn(declared, REALS | OTHERS, (table, column))
                    rule = f"typeof([{column}]) = 'real'" if declared in REALS else "1"
                self.holds(table, f"[{column}] IS NULL OR {rule}")

    def test_search_parameters_and_name_formats_use_existing_columns(self):
        for row, table in zip(self.catalogue, self.tools):
            columns = set(self.columns["Q_" + table])
            search = row["SEARCH_PARAM"].split("\r\n")
            self.assertEqual(len(set(search)), len(search), table)
            pieces = row["DEF_NAME_FORMAT"].split("%")
            self.assertTrue(len(pieces) > 2 and len(pieces) % 2 == 1, table)
            self.assertEqual(pieces[-1], "", f"{table}: text after the last sign is lost")
            self.assertLessEqual(set(search + pieces[1::2]), columns, table)
            name = " || ".join(f"coalesce([{p}], '')" if i % 2 else f"'{p}'" for i, p in enumerate(pieces))
            self.holds("Q_" + table, f"length({name}) <= {self.columns[table]['Name'][5:-1]}")

    def test_pictures_are_what_the_generator_draws(self):
        def parts(data):
            self.assertEqual(struct.unpack(">I", data[-16:-12])[0], zlib.crc32(data[37:-16]))
            return data[:33], data[37:41], zlib.decompress(data[41:-16]), data[-12:]
        for row, table in zip(self.catalogue, self.tools):
            self.assertEqual(row["ICON"], None if table in WITHOUT_PICTURE else picture(table), table)
        self.assertEqual({name.upper() for name in make_pictures.PICTURES}, set(self.tools) - WITHOUT_PICTURE)
        drawn = {name: parts(make_pictures.png(shapes)) for name, shapes in make_pictures.PICTURES.items()}
        self.assertEqual({name: parts(picture(name)) for name in drawn}, drawn)
        self.assertEqual(len(set(drawn.values())), len(drawn))


class Tools(Starter):
    def test_every_tool_is_possible(self):
        used = set()
        for table in self.tools:
            self.assertTrue(15 <= len(self.rows(table)) <= 80, table)
            self.assertEqual({row["Unit"] for row in self.rows(table)}, {"mm", "in"})
            applying = [rule for rule in TOOL_RULES
                        if set(re.findall(r"\[(\w+)\]", rule)) <= set(self.columns["Q_" + table])]
            used.update(applying)
            self.holds("Q_" + table, *(rule.replace("{table}", table) for rule in applying))
            plan = self.db.execute(f"EXPLAIN QUERY PLAN SELECT * FROM Q_{table} WHERE Name = '' COLLATE NOCASE")
            self.assertIn(f"{table}_Name", plan.fetchone()["detail"])
        self.assertEqual(used, set(TOOL_RULES))
        for table in ("TAP", "PIPE_TAP"):  # some with a head, some without
            self.holds(f"(SELECT count(TappingHead) AS N, count(*) AS M FROM {table})", "N BETWEEN 1 AND M - 1")
        self.assertGreater(sum(len(self.rows(f"Q_{table} WHERE Holder <> ''")) for table in self.tools
                               if "Holder" in self.columns[table]), 500)

    def test_a_new_tool_starts_with_defaults(self):
        db = build()
        for table in self.tools:
            db.execute(f"INSERT INTO {table} DEFAULT VALUES")
            row = db.execute(f'SELECT * FROM Q_{table} ORDER BY 1 DESC').fetchone()
            self.assertEqual((row[0], row["IsFavorite"]), (len(self.rows(table)) + 1, 0))
            self.assertIn(row["Unit"], ("mm", "in"))
            for column, declared in self.columns[table].items():
                if column not in ("ID", "Holder", "TappingHead") and not column.startswith("AUX_") and (
                        not declared.startswith("TEXT")):
                    self.assertIsNotNone(row[column], (table, column))

    def test_lookups_resolve(self):
        for table in self.tools:
            for column, lookup in LOOKUPS.items():
                if column in self.columns[table]:
                    key = next(iter(self.columns["Q_" + table]))
                    self.holds(f"(SELECT T.[{column}] AS Stored, Q.[{column}] AS Shown FROM {table} AS T "
                               f'JOIN Q_{table} AS Q ON Q."{key}" = T.ID)', "(Stored IS NULL) = (Shown IS NULL)",
                               f"Shown IS (SELECT Name FROM {lookup} WHERE ID = Stored)")
            self.assertTrue(table == "TAPPING_HEAD" or {"Material", "Coating"} <= set(self.columns[table]), table)
        for lookup in LOOKUPS.values():
            self.holds(lookup, f"(SELECT count(*) FROM {lookup} AS O WHERE O.Name = T.Name COLLATE NOCASE) = 1")

    def test_metric_columns_agree_with_the_unit(self):
        special = {"CENTER_DRILL": "Pilot_Diameter", "BORING_BAR": "Bar_Diameter"}
        for table in self.tools:
            pairs = {aux: special.get(table, aux[len("AUX_Metric_"):]) for aux in self.columns[table]
                     if aux.startswith("AUX_Metric_")}
            self.assertTrue(pairs, table)
            for aux, own in pairs.items():
                self.holds(table, f"abs({aux} - {own} * {MM}) < 0.000005 AND {aux} > 0.2 AND {aux} < 260")



class Machining(Starter):
    def test_hardness_ranges_cover_the_stock_materials(self):
        self.assertGreaterEqual(len(self.rows("Q_STOCK_MATERIAL")), 40)
        self.holds("STOCK_MATERIAL", "Typical_HB BETWEEN MinHB AND MaxHB",
                   "(SELECT count(*) FROM STOCK_MATERIAL AS O WHERE O.DispType = T.DispType COLLATE NOCASE) = 1")
        for table in RANGES:
            self.holds("Q_" + table, "Material IN (SELECT Material FROM STOCK_MATERIAL)", "MinHB < MaxHB")
            self.holds("STOCK_MATERIAL", f"EXISTS (SELECT 1 FROM {table} AS R WHERE R.Material = T.Material "
                       "AND T.Typical_HB BETWEEN R.MinHB AND R.MaxHB)")
            steps = [row[0] for row in self.rows(
                table, "lead(MinHB) OVER (PARTITION BY Material ORDER BY MinHB, MaxHB) - MaxHB") if row[0] is not None]
            self.assertTrue(min(steps) < 0 in steps and max(steps) > 1, f"{table}: overlap, shared end and gap")

    def test_harder_material_is_cut_slower(self):
        for table in SPEEDS:
            self.holds("Q_" + table, "Speed_Unit = 'm/min' AND Source = 'Starting value'")
            speeds = [column for column in self.columns["Q_" + table] if column.endswith("_Speed")]
            self.assertTrue(speeds)
            for column in speeds:
                before = f"lag({column}, 1, 1000) OVER (PARTITION BY Material ORDER BY MinHB, MaxHB)"
                self.holds(f"(SELECT {column}, {before} AS Softer FROM {table})", f"{column} > 0 AND {column} <= Softer")
            for slower, faster in (("HSS_Speed", "Carbide_Speed"), ("HSS_Tap_Speed", "Coated_Tap_Speed")):
                if faster in speeds:
                    self.holds(table, f"{slower} < {faster}")
        self.holds("T24_27_30_31", "Power_Constant > 0.3 AND Power_Constant < 4", "Efficiency > 0 AND Efficiency <= 1")

    def test_drill_feed_ranges_join_without_gaps(self):
        self.assertGreater(len(self.rows("DRILL_FEED")), 10)
        self.holds("DRILL_FEED", "MinDiameter < MaxDiameter", "0 < Min_Feed AND Min_Feed < Feed AND Feed < Max_Feed")
        self.holds("(SELECT *, lag(MaxDiameter, 1, MinDiameter) OVER W AS Ended, lag(Feed, 1, 0) OVER W AS Less "
                   "FROM DRILL_FEED WINDOW W AS (ORDER BY MinDiameter))", "MinDiameter = Ended", "Feed > Less")

    def test_factor_tables_ascend_by_their_second_column(self):
        for table in FACTORS:
            rows = self.rows("Q_" + table)
            self.assertGreaterEqual(len(rows), 10, table)
            self.assertEqual([row[1] for row in rows], sorted({row[1] for row in rows}), table)
            for column in list(self.columns[table])[2:]:
                if self.columns[table][column] == "DOUBLE":
                    values = [row[column] for row in rows]
                    self.assertIn(values, (sorted(values), sorted(values, reverse=True)), (table, column))
                    self.assertGreater(min(values), 0)

    def test_end_mill_template(self):
        self.holds("(SELECT count(coalesce(CCNO, CCYES)) AS Standard, count(LET_NUM_FRACT) AS Named, count(*) AS N "
                   "FROM T_FEM_TEMPL)", "30 <= Standard AND Standard < N AND 0 < Named AND Named < N")
        self.holds("T_FEM_TEMPL", "abs(METRIC - IMP_DECIM * 25.4) < 0.00005", "LET_NUM_FRACT IS NULL OR IMP_DECIM = "
                   "CAST(LET_NUM_FRACT AS REAL) / substr(LET_NUM_FRACT, instr(LET_NUM_FRACT, '/') + 1)")


if __name__ == "__main__":
    unittest.main()
