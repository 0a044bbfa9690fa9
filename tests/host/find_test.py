"""Finding tools of all kinds by what people call them."""
import unittest

from orxdb_host import Orxdb


class Find(Orxdb):
    def found(self, *words):
        code, output, error = self.db("find", *words, "--tsv")
        self.assertTrue(code == 0 and (not error or "best of" in error), (words, error))
        return [line.split("\t") for line in output.splitlines()[1:]]

    def test_words_and_sizes(self):
        self.sql("UPDATE REAMER SET Comment = 'für Böhler-Stahl, Kasten 17', Order_Code = 'AB-500' WHERE ID = 3",
                 "INSERT INTO TAP (Name, Thread_Size, Diameter) VALUES ('Big', 'M50', 50), ('Odd', 'M5.5', 5.5)")
        for text, table, name in (
                ("6 mm carbide", "FLAT_END_MILL", "End mill 6 mm 4 flutes carbide"),
                ("CARBIDE 6MM 3", "FLAT_END_MILL", "End mill 6 mm 3 flutes aluminium"),
                ("1/4 end mill", "FLAT_END_MILL", "End mill 1/4 in 4 flutes carbide"),
                ('1/4" endmills HSS', "FLAT_END_MILL", "End mill 1/4 in 2 flutes HSS"),
                ("0.25 inch ball", "BALL_END_MILL", "Ball mill 1/4 in 2 flutes carbide"),
                ("6.35 mm ball", "BALL_END_MILL", "Ball mill 1/4 in 2 flutes carbide"),
                ("M5 tap", "TAP", "Tap M5"), ("1/4-20", "TAP", "Tap 1/4-20 UNC"), ("drill 5", "TWIST_DRILL", "Drill 5 mm"),
                ("twist Drills Ø8.5", "TWIST_DRILL", "Drill 8.5 mm"), ("BÖHLER", "REAMER", None), ("ab-500", "REAMER", None),
                ("kasten 17 reamer", "REAMER", None), ("synchro m1-m6 head", "TAPPING_HEAD", "Synchro M1-M6")):
            for words in ([text], text.split()):
                best = self.found(*words)[0]
                self.assertEqual((best[0], best[2]), (table, name or self.rows("SELECT Name FROM REAMER WHERE ID = 3")[0][0]), text)
        self.assertEqual({row[2] for row in self.found("M5", "--type", "tap") if row[0] == "TAP"}, {"Tap M5", "Tap M5x0.5"})
        self.assertEqual({row[4] for row in self.found("6 mm", "--type", "flat end") if row[3] == "6"}, {"mm"})
        for type_, tables in (("threading", {"TAP", "PIPE_TAP", "THREAD_MILL"}), ("reamer", {"REAMER"})):
            self.assertEqual({row[0] for row in self.found(type_[:4], "--type", type_, "--limit", "999")}, tables)
        self.fails(1, "Like it are", "find", "6", "--type", "Q")
        self.fails(1, "No tool has all of 'carbide xyzzy'", "find", "carbide", "xyzzy")

    def test_the_best_are_the_same_however_few(self):
        """Of thousands of hits, a short list is the beginning of the long one, and no hit is missed."""
        self.sql("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 3000) "
                 "INSERT INTO TAP (Name, Diameter, Pitch) SELECT 'Probe ' || (i % 7), i % 5 + 0.35, i % 3 + 0.35 FROM n")
        every = self.found("probe", "2.35", "--limit", "100000")
        self.assertEqual(len(every), self.rows(
            "SELECT count(*) FROM TAP WHERE Name LIKE 'Probe%' AND 2.35 IN (Diameter, Pitch)")[0][0])
        sizes = [row[3] == "2.35" for row in every]
        self.assertEqual((sizes, sum(sizes)), (sorted(sizes, reverse=True), 600))
        for limit in (0, 1, 10, 700):
            self.assertEqual(self.found("probe", "2.35", "--limit", str(limit)), every[:limit])
