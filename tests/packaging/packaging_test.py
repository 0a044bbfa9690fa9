"""Installs the build, uses it as hosts and people do, and packs it."""
import os
import re
import shlex
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import unittest
from contextlib import closing
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
BUILD, LANGUAGE = Path(os.environ["ORXDB_BUILD"]), os.environ["ORXDB_LANGUAGE_FOLDER"]
COMPILER, FLAGS = os.environ["ORXDB_COMPILER"], os.environ["ORXDB_FLAGS"]
NOT_INSTALLED = {"HOME": "/nowhere", "XDG_DATA_DIRS": "/nowhere"}


def run(*command, **variables):
    clean = {key: value for key, value in os.environ.items()
             if not key.startswith(("XDG_", "AUTOMATION_", "LC_", "LANG"))}
    done = subprocess.run(list(map(str, command)), capture_output=True, check=False, timeout=300,
                          env={**clean, **variables})
    return done.returncode, done.stdout.decode(), done.stderr.decode()


class Packaging(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.prefix = cls.folder / "prefix"
        cls.program = cls.prefix / "bin/orxdb"
        cls.database = cls.folder / "shop.mdb"
        cls.found = {"XDG_DATA_DIRS": f"/nowhere:{cls.prefix}/share"}
        for command in (["cmake", "--install", BUILD, "--prefix", cls.prefix], [cls.program, "create", cls.database]):
            code, _, error = run(*command)
            assert code == 0, error
        cls.libraries = next(cls.prefix.rglob("libORXDB.so")).parent

    def ok(self, *command, **variables):
        code, output, error = run(*command, **variables)
        self.assertEqual(code, 0, (command, output, error))
        return output

    def fails(self, expected, words, *command, **variables):
        code, output, error = run(*command, **variables)
        self.assertEqual((code, output), (expected, ""), (command, error))
        self.assertIn(words, error)

    def sql(self, query):
        with closing(sqlite3.connect(self.database)) as connection:
            return ["\t".join(map(str, row)) for row in connection.execute(query)]

    def test_run_paths_never_name_the_current_folder(self):
        for folder in (BUILD, self.prefix):
            loaded = [path for path in folder.rglob("*") if ".so" in path.name or not path.suffix]
            paths = re.findall(r"\(R(?:UN)?PATH\).*\[(.*)\]", run("readelf", "-d", *loaded)[1])
            self.assertGreater(len(paths), 3, folder)
            self.assertEqual([path for path in paths if not all(
                entry.startswith("$ORIGIN") for entry in path.split(":"))], [], folder)

    def lists_taps(self, host):
        taps = self.sql("SELECT Name, 6 FROM Q_TAP WHERE Diameter = 6")
        self.assertEqual(self.ok(host, self.database, "TAP", "Diameter = 6", **self.found).splitlines(), taps)
        self.fails(1, "cannot list TAP", host, self.database, "TAP", "Nonsense <", **self.found)
        self.fails(1, "no table NO_SUCH", host, self.database, "NO_SUCH", "", **self.found)
        self.fails(1, "not installed", host, self.database, "TAP", **NOT_INSTALLED)

    def test_hosts_built_by_find_package(self):
        build = self.folder / "consumer"
        self.ok("cmake", "-G", "Ninja", "-S", ROOT / "tests/packaging/consumer", "-B", build,
                f"-DCMAKE_PREFIX_PATH={self.prefix}", f"-DCMAKE_CXX_COMPILER={COMPILER}", f"-DCMAKE_CXX_FLAGS={FLAGS}")
        self.ok("cmake", "--build", build)
        self.lists_taps(build / "EarlyBinding")
        late = build / "LateBinding"
        kinds = self.sql("SELECT TOOL_TYPE, TOOL_SUBTYPE, substr(TOOLTABLE_NAME, 3) FROM TOOL_TYPES")
        counted = [f"{kind}\t{self.sql('SELECT count(*) FROM Q_' + kind.split()[-1])[0]}" for kind in kinds]
        self.assertEqual(self.ok(late, self.database, **self.found).splitlines(), counted)
        self.fails(1, "", late, self.folder / "missing.mdb", **self.found)
        self.fails(1, "not installed", late, self.database, **NOT_INSTALLED)

    @unittest.skipUnless(shutil.which("pkg-config"), "there is no pkg-config")
    def test_host_built_by_pkg_config(self):
        flags = self.ok("pkg-config", "--cflags", "--libs", "orxdb", PKG_CONFIG_PATH=f"{self.libraries}/pkgconfig")
        program = self.folder / "plain"
        self.ok(COMPILER, *shlex.split(FLAGS), ROOT / "examples/EarlyBinding.cpp", *shlex.split(flags),
                f"-Wl,-rpath,{self.libraries}", "-o", program)
        self.lists_taps(program)

    def test_host_in_another_language(self):
        sanitizer = {}  # a program without it must load it before the libraries that have it
        if FLAGS:
            library = self.ok(COMPILER, "-print-file-name=libasan.so").strip()
            sanitizer = {"LD_PRELOAD": os.path.realpath(library), "ASAN_OPTIONS": "detect_leaks=0"}
        script = (sys.executable, ROOT / "examples/host.py", self.database, self.libraries / "libautomation.so")
        self.assertEqual(self.ok(*script, **self.found, **sanitizer).splitlines(),
                         self.sql("SELECT TOOL_TYPE, TOOL_SUBTYPE, substr(TOOLTABLE_NAME, 3) FROM TOOL_TYPES"))
        self.fails(1, "cannot create", *script, **NOT_INSTALLED, **sanitizer)

    def test_program_finds_the_component_where_it_is_installed_and_by_name(self):
        apart = self.folder / "apart/bin/orxdb"
        apart.parent.mkdir(parents=True)
        shutil.copy(self.program, apart)
        types = (apart, "--db", self.database, "types")
        libraries = {"LD_LIBRARY_PATH": str(self.libraries)}
        self.assertIn("Threading", self.ok(*types, **libraries, **self.found))
        self.fails(1, "is not registered", *types, **libraries, **NOT_INSTALLED)

    def test_default_database_is_the_persons_own(self):
        beside = self.prefix / "CAM/TOOLS/tools.mdb"
        for variables, folder in (({"HOME": f"{self.folder}/home"}, "home/.local/share"),
                                  ({"HOME": "/nowhere", "XDG_DATA_HOME": f"{self.folder}/data"}, "data")):
            default = self.folder / folder / "orxdb/tools.mdb"
            self.fails(1, f"database {default}.", self.program, "types", **variables)
            beside.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(self.database, beside)
            self.ok(self.program, "types", **variables)  # one that hosts of this place use
            beside.unlink()
            self.assertEqual(self.ok(self.program, "create", **variables), f"{default}\n")
            shutil.copy(self.database, beside)
            self.ok(self.program, "delete", "TAP", "1", **variables)
            self.assertNotIn("1", self.ok(self.program, "list", "TAP", "--columns", "ID", "--tsv", **variables).split())
            beside.unlink()
        self.fails(1, f"database {beside}.", self.program, "types", HOME="")

    def test_people_read_their_language(self):
        name, = self.sql("SELECT Name FROM TAPPING_HEAD WHERE ID = 1")
        add = (self.program, "--db", self.database, "add", "TAPPING_HEAD", f"Name={name}")
        self.fails(1, "You should use unique", *add)
        self.fails(1, "Gewindeschneidkopf", *add, LC_ALL="de_DE.UTF-8", LD_LIBRARY_PATH=LANGUAGE)

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
            self.assertEqual(named, [] if options else [True, True])
        (self.folder / "text.so").write_text("no library")
        for arguments, variables, expected, words in (
                ([], here, 2, "LIBRARY is required"), (["--wrong", library], here, 2, "--wrong"),
                ([library, "another"], here, 2, "another"), (["missing.so"], here, 1, "missing.so"),
                ([self.folder / "text.so"], here, 1, "text.so"),
                ([self.libraries / "libautomation.so"], here, 1, "does not register classes"),
                ([library], {"AUTOMATION_CLASS_PATH": ""}, 1, "names no class folder"),
                ([library], {"AUTOMATION_CLASS_PATH": f"{library}/x"}, 1, "cannot be used")):
            self.fails(expected, words, program, *arguments, **variables)
        self.assertIn("orxregsvr lib/libORXDB.so", self.ok(program, "--help"))

    @unittest.skipUnless(shutil.which("dpkg-deb"), "there is no dpkg-deb")
    def test_debian_package(self):
        self.ok("cpack", "--config", BUILD / "CPackConfig.cmake", "-B", self.folder / "pack")
        package, = (self.folder / "pack").glob("orxdb_*.deb")
        self.ok("dpkg-deb", "-x", package, self.folder / "root")
        self.assertIn("libsqlite3-0", self.ok("dpkg-deb", "-f", package, "Depends"))
        class_files = sorted((self.folder / "root/usr/share/automation/classes.d").iterdir())
        self.assertEqual([path.name for path in class_files],
                         ["ORXDB.OrxDbLibrary.1.class", "ORXDB.OrxDbObj.1.class"])
        for class_file in class_files:
            library, = re.findall("^Library = (/usr/lib.*)", class_file.read_text(), re.MULTILINE)
            self.assertTrue((self.folder / "root" / library[1:]).is_file())
        self.assertFalse(list((self.folder / "root").rglob("*LangExt*")))
        for place in ("bash-completion/completions/orxdb", "zsh/vendor-completions/_orxdb",
                      "fish/vendor_completions.d/orxdb.fish", "man/man1/orxdb.1"):
            text = (self.folder / "root/usr/share" / place).read_text()
            self.assertTrue("drill" in text and str(BUILD) not in text, place)

    def test_readme_quotes_the_examples(self):
        plain = lambda text: "\n".join(line.strip() for line in ["", *text.splitlines(), ""])
        sources = [plain(path.read_text()) for path in (ROOT / "examples").glob("*.cpp")]
        quotes = re.findall(r"```cpp\n(.*?)```", (ROOT / "README.md").read_text(), re.DOTALL)
        self.assertGreaterEqual(len(quotes), 2)
        for quote in map(plain, quotes):
            self.assertTrue(any(quote in source for source in sources), quote)
