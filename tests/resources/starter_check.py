"""Builds the starter tool database in memory from its scripts and checks what the data means."""

import math
import re
import sqlite3
import sys
import unittest
import zlib
from pathlib import Path

STARTER = Path(__file__).resolve().parents[2] / "resources/starter"
sys.path.insert(0, str(STARTER / "pictures"))
import make_pictures  # noqa: E402

NAMED = {"FLAT_END_MILL", "BALL_END_MILL", "TAP", "PIPE_TAP", "TAPPING_HEAD", "V_BIT", "ENGRAVING_CUTTER",
         "SINGLE_FLUTE_ROUTER", "COMPRESSION_ROUTER"}
BOUGHT = {"Vendor": "TEXT(60)", "Order_Code": "TEXT(60)", "Link": "TEXT(255)",
          **dict.fromkeys(["Tool_Number", "Pocket", "Stock", "Min_Stock"], "LONG")}
SPEEDS = "DRILLING_FS END_MILLING_FS FACE_MILLING_FS REAMING_FS RECOMMENDED_FS SLIT_MILLING_FS THREADING_FS".split()
RANGES = SPEEDS + ["T24_27_30_31"]
FACTORS = ["T15b_15d_22", "T15c", "T25", "T33", "T34", "HARDNESS_BRC", "HARDNESS_RCB", "T5_DEPTH", "T5_FEED"]
WITHOUT_PICTURE = {"WOODRUFF_CUTTER", "DOVETAIL_CUTTER"}
LOOKUPS = {"Material": "TOOL_MATERIAL", "Coating": "COATING", "Holder": "HOLDER", "TappingHead": "TAPPING_HEAD"}
FROM_HEAD = ["Approach_Height", "Retraction_Height", "Extra_Depth", "Retraction_Ratio"]
WHOLE = {"BYTE": "0 AND 255", "SHORT": "-32768 AND 32767", "LONG": "-2147483648 AND 2147483647", "BOOLEAN": "-1 AND 0"}
VALUES = ({kind: f"typeof([{{0}}]) = 'integer' AND [{{0}}] BETWEEN {span}" for kind, span in WHOLE.items()}
          | dict.fromkeys(["SINGLE", "DOUBLE", "CURRENCY"], "typeof([{0}]) = 'real'")
          | dict.fromkeys(["DATETIME", "LONGBINARY", "LONGTEXT", "GUID", "INTEGER"], "1"))
MM = "iif([Unit] = 'mm', 1, 25.4)"

TEXT = "typeof([{0}]) = 'text' AND length([{0}]) BETWEEN 1 AND "

# What holds of every tool whose stored query has all the columns in brackets.
TOOL_RULES = [f"[{less}] < [{more}]" for less, more in (pair.split("<") for pair in (
    "Flute_Length<Overall_Length Thread_Length<Overall_Length Min_Diameter<Max_Diameter Tap_Drill<Diameter "
    "Pilot_Diameter<Diameter Pilot_Diameter<Body_Diameter Bar_Diameter<Min_Bore Bore_Diameter<Diameter "
    "Width<Diameter Tip_Diameter<Diameter Upcut_Length<Flute_Length").split())]
# Its holder takes its shank.
TOOL_RULES += [f"[Holder] IS NULL OR (SELECT [{size}_Diameter] * {MM} BETWEEN Metric_Min_Shank - 0.01 "
               "AND Metric_Max_Shank + 0.01 FROM HOLDER WHERE Name = T.[Holder])"
               for size in ("Shank", "Body", "Bar", "Bore")]
# What the database computes: a size in millimetres.
TOOL_RULES += [f"{all_but} OR abs([AUX_Metric_{size}] - [{own}] * {MM}) < 5e-6 AND [{own}] * {MM} BETWEEN 0.2 AND 260"
               for all_but, size, own in (("0", "Diameter", "Diameter"), ("0", "Min_Diameter", "Min_Diameter"),
                                        ("0", "Max_Diameter", "Max_Diameter"), ("0", "Diameter", "Bar_Diameter"),
                                        ("'{table}' <> 'CENTER_DRILL'", "Diameter", "Pilot_Diameter"))]
TOOL_RULES += [
    "[Unit] IN ('mm', 'in')",
    "[Name] = trim([Name]) AND [Name] <> ''",
    "(SELECT count(*) FROM {table} AS O WHERE O.Name = T.[Name] COLLATE NOCASE) = 1",
    "[Material] <> '' AND [Coating] <> ''",
    "abs([Pitch] * [Threads_Per_Inch] - iif([Unit] = 'mm', 25.4, 1)) < 0.0005",
    "'{table}' <> 'TAP' OR abs([Tap_Drill] / ([Diameter] - [Pitch]) - 1) <= 0.05",
    "[Ball_Radius] * 2 = [Diameter]",
    "([Diameter] - [Tip_Diameter]) / 2 / tan(radians([Point_Angle] / 2)) <= [Flute_Length]",  # the cone has edges
    "[Cut_Direction] IN ('Upcut', 'Downcut')",
    # A thread mill comes back out of the thread: the hole less some room.
    "[Internal] AND [Diameter] <= (SELECT Diameter - 1.23 * Pitch FROM TAP WHERE Thread_Size = T.[Thread_Size])",
    # Sizes of the standards that tools name.
    "[Helix_Angle] = 0 OR ([Standard] = 'Miniature series') >= (T.[AUX_Metric_Diameter] < 2)",
    "[Helix_Angle] = 0 OR [Standard] <> 'ASME B94.19' OR [Material] LIKE 'HSS%' AND [Shank_Diameter] >= 0.375 AND "
    "abs([Overall_Length] - [Flute_Length] - [Shank_Diameter] - 1.5) <= 0.125",
    "[Standard] <> 'ASME B94.19' OR [Bore_Diameter] >= 0.875 AND [Diameter] IN (2.5, 3, 4, 5, 6, 8) AND "
    "[Diameter] / [Teeth_#] BETWEEN 0.08 AND 0.16 AND [Width] < 0.2",
    "[Taper] = 0 OR [Thread_Series] NOT LIKE 'NPT%' OR "
    "[Flutes_#] = 4 + ([Diameter] > 1) + 2 * ([Diameter] > 1.8) + ([Diameter] > 2.5)",
    "[Taper] = 0 OR [Thread_Series] <> 'NPTF' OR [Tap_Drill] <= (SELECT Tap_Drill - (Thread_Size <> '1/4-18') * 0.005 "
    "FROM PIPE_TAP WHERE Thread_Series = 'NPT' AND Thread_Size = T.[Thread_Size])",
    # Its tapping head is one for the diameter, and the head's values are shown.
    "[TappingHead] IS NULL OR EXISTS (SELECT 1 FROM TAPPING_HEAD AS H WHERE H.Name = T.[TappingHead] AND "
    "T.[AUX_Metric_Diameter] BETWEEN H.AUX_Metric_Min_Diameter AND H.AUX_Metric_Max_Diameter AND "
    + " AND ".join(f"T.{column} = H.{column}" for column in FROM_HEAD + ["Unit"]) + ")"]


def picture(name):
    return (STARTER / "pictures" / (name.lower() + ".png")).read_bytes()


class Starter(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.db = sqlite3.connect(":memory:")
        cls.db.row_factory = sqlite3.Row
        cls.db.create_function("picture", 1, picture)
        cls.db.create_function("tan", 1, math.tan)
        cls.db.create_function("radians", 1, math.radians)
        for script in sorted(STARTER.glob("*.sql")):
            cls.db.executescript(script.read_text(encoding="utf-8"))
        cls.catalogue = cls.rows("TOOL_TYPES")
        cls.tools = [row["TOOLTABLE_NAME"][2:] for row in cls.catalogue]
        cls.tables, cls.views = ({row["name"]: row["sql"] for row in cls.rows("sqlite_schema") if row["type"] == kind
                                  and not row["name"].startswith("sqlite_")} for kind in ("table", "view"))
        cls.columns = {source: {row["name"]: row["type"] for row in cls.rows(f"pragma_table_xinfo('{source}')")}
                       for source in (*cls.tables, *cls.views)}

    @classmethod
    def rows(cls, source, what="*"):
        return cls.db.execute(f"SELECT {what} FROM {source}").fetchall()

    def holds(self, source, *rules):
        """Each rule is true for every row of the source, aliased T."""
        for rule in rules:
            broken = self.rows(f"{source} AS T WHERE ({rule}) IS NOT TRUE LIMIT 3")
            self.assertFalse([tuple(row)[:3] for row in broken], f"{source}: {rule}")

    def test_catalogue_names_tables_with_stored_queries(self):
        self.assertEqual(len(set(self.tools)), len(self.tools))
        self.assertLessEqual(NAMED, set(self.tools))
        self.assertGreaterEqual(len(self.tools), 23)
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
                text = re.fullmatch(r"TEXT\((\d+)\)", declared)
                rule = TEXT + text[1] if text else VALUES[declared]
                self.holds(table, f"[{column}] IS NULL OR {rule.format(column)}")

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
            self.assertEqual(data[-16:-12], zlib.crc32(data[37:-16]).to_bytes(4, "big"))
            return data[:33], data[37:41], zlib.decompress(data[41:-16]), data[-12:]
        for row, table in zip(self.catalogue, self.tools):
            self.assertEqual(row["ICON"], None if table in WITHOUT_PICTURE else picture(table), table)
        self.assertEqual({name.upper() for name in make_pictures.PICTURES}, set(self.tools) - WITHOUT_PICTURE)
        drawn = {name: parts(make_pictures.png(shapes)) for name, shapes in make_pictures.PICTURES.items()}
        self.assertEqual({name: parts(picture(name)) for name in drawn}, drawn)
        self.assertEqual(len(set(drawn.values())), len(drawn))

    def test_every_tool_is_possible(self):
        used = set()
        for table in self.tools:
            self.assertTrue(15 <= len(self.rows(table)) <= 80, table)
            self.assertEqual({row["Unit"] for row in self.rows(table)}, {"mm", "in"})
            self.assertTrue(any(column.startswith("AUX_Metric_") for column in self.columns["Q_" + table]), table)
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
        self.addCleanup(self.db.rollback)
        for table in self.tools:
            self.db.execute(f"INSERT INTO {table} DEFAULT VALUES")
            row = self.rows(f"Q_{table} ORDER BY 1 DESC")[0]
            self.assertEqual((row[0], row["IsFavorite"]), (len(self.rows(table)), 0))
            self.assertIn(row["Unit"], ("mm", "in"))
            self.assertEqual([row[column] for column in BOUGHT], [None] * 3 + [0] * 4)
            given = [f"{column} 7" if "TEXT" in kind else i for i, (column, kind) in enumerate(BOUGHT.items())]
            self.db.execute(f"UPDATE {table} SET {' = ?, '.join(BOUGHT)} = ? WHERE ID = ?", (*given, row[0]))
            row = self.rows(f"Q_{table} ORDER BY 1 DESC")[0]
            self.assertEqual([row[column] for column in BOUGHT], given, table)
            self.assertLessEqual(BOUGHT.items(), self.columns[table].items())
            for column, declared in self.columns[table].items():
                if column not in ("ID", "Holder", "TappingHead") and not declared.startswith("TEXT"):
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
                self.holds(f"(SELECT {column}, {before} AS Soft FROM {table})", f"0 < {column} AND {column} <= Soft")
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
