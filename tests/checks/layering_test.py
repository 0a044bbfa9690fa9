#!/usr/bin/env python3
"""Plants includes in a small tree and looks which ones the layering check finds."""
import tempfile
import unittest
from pathlib import Path

from layering import violations

TREE = ["platform/automation/A.h", "platform/framework/F.h", "interface/I.h", "values/V.h",
        "database/engine/O.h", "database/D.h", "component/C.h", "host/library/H.h",
        "host/verbs/V.h", "tests/T.h"]
GOOD = [("platform/framework/x.h", "platform/automation/A.h"), ("component/x.cpp", "component/C.h"),
        ("database/deep/er/x.cpp", "database/engine/O.h"), ("component/x.cpp", "values/V.h"),
        ("host/verbs/x.cpp", "interface/I.h"), ("tests/component/x.cpp", "component/C.h"),
        ("host/verbs/x.cpp", "host/library/H.h"), ("build/generated.cpp", "nowhere.h"),
        ("database/engine/x.cpp", "<sqlite3.h>"), ("tests/x.h", "<sqlite3.h>")]
BAD = [("platform/automation/x.h", "platform/framework/F.h"), ("values/x.h", "database/D.h"),
       ("database/engine/x.cpp", "database/D.h"), ("component/x.cpp", "host/library/H.h"),
       ("benchmarks/x.cpp", "tests/T.h"), ("host/library/x.cpp", "component/C.h"),
       ("host/verbs/x.cpp", "values/V.h"), ("host/library/x.cpp", "host/verbs/V.h"),
       ("values/x.cpp", "V.h"), ("values/x.cpp", "../values/V.h"),
       ("values/x.cpp", "values/Missing.h"), ("misc/x.cpp", "values/V.h"),
       ("database/engine/x.h", "<sqlite3.h>"), ("host/library/x.cpp", "<sqlite3ext.h>")]


class Layering(unittest.TestCase):
    def planted(self, file, include):
        with tempfile.TemporaryDirectory() as folder:
            root = Path(folder)
            for name in TREE + [file]:
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                (root / name).write_text("#pragma once\n", encoding="utf-8")
            name = include if include.startswith("<") else f'"{include}"'
            (root / file).write_text(f"// x\n#  include {name}\n", encoding="utf-8")
            return violations(root)

    def test_finds_exactly_the_bad_ones(self):
        for file, include in GOOD:
            self.assertEqual(self.planted(file, include), [], (file, include))
        for file, include in BAD:
            self.assertEqual(len(self.planted(file, include)), 1, (file, include))


if __name__ == "__main__":
    unittest.main()
