#!/usr/bin/env python3
"""Hosts that are killed while they edit lose nothing that was done and leave nothing by halves;
hosts that share a database neither lose nor double anything.

usage: kill_test.py EDIT_LOOP LIBRARY PROGRAM; ORXDB_KILL_ROUNDS sets how many are killed,
ORXDB_SHARING_SECONDS how long they share
"""
import json
import os
import random
import subprocess
import sys
import time
import unittest
from collections import Counter

from orxdb_host import Orxdb, run

EDIT_LOOP, LIBRARY = sys.argv[1:3]
del sys.argv[1:3]


class Kill(Orxdb):
    def setUp(self):
        super().setUp()
        self.before = self.rows("SELECT * FROM FLAT_END_MILL ORDER BY ID")
        self.tools, self.given = {}, {row[0] for row in self.before}

    def found_tools(self):
        """The tools that hosts made, each whole, by their numbers."""
        last = self.before[-1][0]
        self.assertEqual(self.rows("PRAGMA integrity_check"), [["ok"]])
        self.assertEqual(self.rows(f"SELECT * FROM FLAT_END_MILL WHERE ID <= {last} ORDER BY ID"),
                         self.before)
        found = {}
        for tool, name, diameter, comment in self.rows(
                f"SELECT ID, Name, Diameter, Comment FROM FLAT_END_MILL WHERE ID > {last}"):
            found[tool] = int(comment)
            self.assertEqual((name, diameter), (f"T{comment}", int(comment)))
        return found

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
        done = Counter()
        for turn in range(int(os.environ.get("ORXDB_KILL_ROUNDS", "10"))):
            lines = self.killed_host(turn * 100000)
            for (verb, *numbers), (_, tool) in zip(lines[::2], lines[1::2]):
                self.apply(verb, int(tool), numbers)
                done[verb] += 1
            found = self.found_tools()
            if len(lines) % 2 and found != self.tools:  # the last operation is there as a whole
                verb, *numbers = lines[-1]
                new = set(found) - set(self.tools)
                self.apply(verb, new.pop() if verb == "add" else int(numbers[0]), numbers)
            self.assertEqual(found, self.tools)
        self.assertTrue(all(done[verb] for verb in ("add", "set", "delete")), done)
        print(dict(done))

    def test_hosts_that_share_a_database(self):
        seconds = os.environ.get("ORXDB_SHARING_SECONDS", "4")
        reamers = len(self.rows("SELECT ID FROM REAMER"))
        file = self.folder / "reamers.txt"
        self.ok("export", "REAMER", file)
        self.sql("DELETE FROM REAMER")
        logs = [open(self.folder / f"host{number}", "w+") for number in range(4)]
        hosts = [subprocess.Popen([EDIT_LOOP, LIBRARY, self.database, str(number * 10**7), seconds],
                                  stdout=log) for number, log in enumerate(logs)]
        walks = 0
        while any(host.poll() is None for host in hosts):
            code, tools, _ = run("--db", self.database, "list", "FLAT_END_MILL", "--json", "--where",
                                 "Name LIKE 'T#*'")
            self.assertEqual(code, 0)
            for tool in json.loads(tools):
                self.assertEqual((tool["Name"], tool["Diameter"]),
                                 ("T" + tool["Comment"], int(tool["Comment"])))
            walks += 1
            if walks == 1:
                self.assertEqual(run("--db", self.database, "import", file)[0], 0)
        self.assertEqual([host.wait() for host in hosts], [0] * 4, "no operation failed")
        done = 0
        for log in logs:
            log.seek(0)
            lines = [line.split() for line in log]
            for (verb, *numbers), (_, tool) in zip(lines[::2], lines[1::2]):
                self.apply(verb, int(tool), numbers)
                done += 1
            log.close()
        self.assertEqual(self.found_tools(), self.tools)
        self.assertEqual(len(self.rows("SELECT ID FROM REAMER")), reamers)
        self.assertGreater(done, 40)
        print(f"{done} operations, {walks} walks")


if __name__ == "__main__":
    unittest.main()
