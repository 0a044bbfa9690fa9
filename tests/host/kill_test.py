#!/usr/bin/env python3
"""Hosts that are killed while they edit lose nothing that was done and leave nothing by halves.

usage: kill_test.py EDIT_LOOP LIBRARY PROGRAM; ORXDB_KILL_ROUNDS sets how many are killed
"""
import os
import random
import subprocess
import sys
import time
import unittest
from collections import Counter

from orxdb_host import Orxdb

EDIT_LOOP, LIBRARY = sys.argv[1:3]
del sys.argv[1:3]


class Kill(Orxdb):
    def killed_host(self, first):
        """The lines of a host that was killed at some moment after its first operation."""
        with subprocess.Popen([EDIT_LOOP, LIBRARY, self.database, str(first)],
                              stdout=subprocess.PIPE, text=True) as host:
            lines = [host.stdout.readline(), host.stdout.readline()]
            time.sleep(random.uniform(0, 0.1))
            host.kill()
            lines += host.stdout.readlines()
        self.assertEqual(host.returncode, -9, lines[-3:])
        return [line.split() for line in lines if line.endswith("\n")]

    def apply(self, verb, tool, numbers):
        if verb == "add":
            self.assertNotIn(tool, self.given)
            self.given.add(tool)
        if verb == "delete":
            del self.tools[tool]
        else:
            self.tools[tool] = int(numbers[-1])

    def test_killed_hosts(self):
        before = self.rows("SELECT * FROM FLAT_END_MILL ORDER BY ID")
        last = before[-1][0]
        self.tools, self.given = {}, {row[0] for row in before}
        done = Counter()
        for turn in range(int(os.environ.get("ORXDB_KILL_ROUNDS", "10"))):
            lines = self.killed_host(turn * 100000)
            for (verb, *numbers), (_, tool) in zip(lines[::2], lines[1::2]):
                self.apply(verb, int(tool), numbers)
                done[verb] += 1
            self.assertEqual(self.rows("PRAGMA integrity_check"), [["ok"]])
            found = {}
            for tool, name, diameter, comment in self.rows(
                    f"SELECT ID, Name, Diameter, Comment FROM FLAT_END_MILL WHERE ID > {last}"):
                found[tool] = int(comment)
                self.assertEqual((name, diameter), (f"T{comment}", int(comment)))
            if len(lines) % 2 and found != self.tools:  # the last operation is there as a whole
                verb, *numbers = lines[-1]
                new = set(found) - set(self.tools)
                self.apply(verb, new.pop() if verb == "add" else int(numbers[0]), numbers)
            self.assertEqual(found, self.tools)
        self.assertEqual(self.rows(f"SELECT * FROM FLAT_END_MILL WHERE ID <= {last} ORDER BY ID"),
                         before)
        self.assertTrue(all(done[verb] for verb in ("add", "set", "delete")), done)
        print(dict(done))


if __name__ == "__main__":
    unittest.main()
