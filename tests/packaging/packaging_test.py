#!/usr/bin/env python3
"""Installs the build, uses it as hosts and people do, and packs it.

usage: packaging_test.py BUILD LANGUAGE_FOLDER COMPILER FLAGS
"""
import os
import re
import shlex
import shutil
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

HERE = Path(__file__).resolve().parent
BUILD = LANGUAGE = Path()
COMPILER = FLAGS = ""


def run(*command, **variables):
    clean = {key: value for key, value in os.environ.items()
             if not key.startswith(("XDG_", "AUTOMATION_", "LC_", "LANG"))}
    done = subprocess.run(list(map(str, command)), capture_output=True, check=False, timeout=300,
                          env={**clean, **variables})
    return done.returncode, done.stdout.decode(), done.stderr.decode()


class Packaging(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        temporary = tempfile.TemporaryDirectory()
        cls.addClassCleanup(temporary.cleanup)
        cls.folder = Path(temporary.name)
        cls.prefix = cls.folder / "prefix"
        cls.found = {"XDG_DATA_DIRS": f"/nowhere:{cls.prefix}/share"}
        code, _, error = run("cmake", "--install", BUILD, "--prefix", cls.prefix)
        assert code == 0, error
        cls.libraries = next(cls.prefix.rglob("libORXDB.so")).parent

    def ok(self, *command, **variables):
        code, output, error = run(*command, **variables)
        self.assertEqual(code, 0, (command, output, error))
        return output

    def show_words(self, program):
        self.assertEqual(self.ok(program, **self.found), "Yes\nNo\n")
        german = {"LC_ALL": "de_DE.UTF-8", "LD_LIBRARY_PATH": str(LANGUAGE), **self.found}
        self.assertEqual(self.ok(program, **german), "Ja\nNein\n")
        self.assertNotEqual(run(program, XDG_DATA_DIRS="/nowhere")[0], 0)

    def test_find_package(self):
        build = self.folder / "consumer"
        self.ok("cmake", "-G", "Ninja", "-S", HERE / "consumer", "-B", build, f"-DCMAKE_PREFIX_PATH={self.prefix}",
                f"-DCMAKE_CXX_COMPILER={COMPILER}", f"-DCMAKE_CXX_FLAGS={FLAGS}")
        self.ok("cmake", "--build", build)
        self.show_words(build / "consumer")

    @unittest.skipUnless(shutil.which("pkg-config"), "there is no pkg-config")
    def test_pkg_config(self):
        flags = self.ok("pkg-config", "--cflags", "--libs", "orxdb", PKG_CONFIG_PATH=f"{self.libraries}/pkgconfig")
        program = self.folder / "plain"
        self.ok(COMPILER, *shlex.split(FLAGS), HERE / "consumer/consumer.cpp", *shlex.split(flags),
                f"-Wl,-rpath,{self.libraries}", "-o", program)
        self.show_words(program)

    def test_program_finds_the_component_where_it_is_installed_and_by_name(self):
        database = self.folder / "tools.mdb"
        apart = self.folder / "apart/bin/orxdb"
        apart.parent.mkdir(parents=True)
        shutil.copy(self.prefix / "bin/orxdb", apart)
        self.ok(self.prefix / "bin/orxdb", "create", database)
        types = ("--db", database, "types")
        libraries = {"LD_LIBRARY_PATH": str(self.libraries)}
        self.assertEqual(self.ok(self.prefix / "bin/orxdb", *types, **self.found),
                         self.ok(apart, *types, **libraries, **self.found))
        code, _, error = run(apart, *types, HOME="/nowhere", **libraries)
        self.assertEqual((code, "is not registered" in error), (1, True), error)

    def test_registering_program(self):
        program = self.prefix / "bin/orxregsvr"
        library = self.libraries / "libORXDB.so"
        classes = self.folder / "new/classes"
        here = {"AUTOMATION_CLASS_PATH": f"{classes}:/other"}
        for verb, options in (("Registered", []), ("Unregistered", ["-u"])) * 2:
            # The class file names the library wherever the program was started.
            output = self.ok("env", "-C", library.parent, program, *options, library.name, **here)
            self.assertEqual(output, f"{verb} {library} in {classes}.\n")
            named = [f"Library = {library}\n" in path.read_text() for path in classes.iterdir()]
            self.assertEqual(named, [] if options else [True])
        (self.folder / "text.so").write_text("no library")
        for arguments, variables, expected, words in (
                ([], here, 2, "LIBRARY is required"), (["--wrong", library], here, 2, "--wrong"),
                ([library, "another"], here, 2, "another"), (["missing.so"], here, 1, "missing.so"),
                ([self.folder / "text.so"], here, 1, "text.so"),
                ([self.libraries / "libautomation.so"], here, 1, "does not register classes"),
                ([library], {"AUTOMATION_CLASS_PATH": ""}, 1, "names no class folder"),
                ([library], {"AUTOMATION_CLASS_PATH": f"{library}/x"}, 1, "cannot be used")):
            code, output, error = run(program, *arguments, **variables)
            self.assertEqual((code, output), (expected, ""), arguments)
            self.assertIn(words, error)
        self.assertIn("orxregsvr lib/libORXDB.so", self.ok(program, "--help"))

    @unittest.skipUnless(shutil.which("dpkg-deb"), "there is no dpkg-deb")
    def test_debian_package(self):
        self.ok("cpack", "--config", BUILD / "CPackConfig.cmake", "-B", self.folder / "pack")
        package, = (self.folder / "pack").glob("orxdb_*.deb")
        self.ok("dpkg-deb", "-x", package, self.folder / "root")
        self.assertIn("libsqlite3-0", self.ok("dpkg-deb", "-f", package, "Depends"))
        class_file, = (self.folder / "root/usr/share/automation/classes.d").iterdir()
        library, = re.findall("^Library = (/usr/lib.*)", class_file.read_text(), re.MULTILINE)
        self.assertTrue((self.folder / "root" / library[1:]).is_file())
        self.assertFalse(list((self.folder / "root").rglob("*LangExt*")))


if __name__ == "__main__":
    BUILD, LANGUAGE = Path(sys.argv[1]), Path(sys.argv[2])
    COMPILER, FLAGS = sys.argv[3:5]
    unittest.main(argv=sys.argv[:1])
