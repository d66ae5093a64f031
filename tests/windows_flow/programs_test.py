#!/usr/bin/env python3
"""Uses the package for Windows as a user does, in a new Windows of its own, and compares with the Linux programs.

usage: programs_test.py 32|64 PACKAGE.zip TEST_SPREADSHEET.dll PRESS_CLUSTERIZE.exe RESULTS.xml

Needs a display. The Linux programs are those of build/release (MERVANE_LINUX_BUILD names another folder); where they are
missing they are built.
"""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
import xml.etree.ElementTree as xml
import zipfile

source = pathlib.Path(__file__).resolve().parents[2]
examples = source / "examples"
width, package, spreadsheet, presser, results = sys.argv[1:]
linux = pathlib.Path(os.environ.get("MERVANE_LINUX_BUILD", source / "build/release"))
linux_program = linux / "mervane"
linux_client = linux / "examples/example_cpp_client"

# A folder with a blank and letters of two scripts in its name, as users have them.
work = pathlib.Path(tempfile.mkdtemp(prefix="mervane-package-"))
unpacked = work / "Mervane für Таня"
files = work / "Файлы é"
windows = dict(os.environ, MERVANE_WINE_PREFIX=str(work / "prefixes"))
className = "MervaneClass3.Classifier3"


def emulated(*command, cwd=None, stdin=subprocess.DEVNULL):
    # Helpers that the emulator leaves behind hold what they inherit: the end of a pipe would not come.
    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as errors:
        run = subprocess.run([source / "scripts/wine_run", width, *map(str, command)], env=windows, cwd=cwd or files, stdin=stdin,
                             stdout=out, stderr=errors, timeout=120)
        out.seek(0)
        errors.seek(0)
        return subprocess.CompletedProcess(run.args, run.returncode, out.read(), errors.read())


def program(*arguments, **options):
    return emulated(unpacked / "mervane.exe", *arguments, **options)


def native(*arguments, **options):
    options.setdefault("stdin", subprocess.DEVNULL)
    return subprocess.run([linux_program, *map(str, arguments)], capture_output=True, timeout=120, **options)


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def lines(run):
    return run.stdout.decode("utf-8", "replace").replace("\r", "").splitlines()


def parts(path):
    with zipfile.ZipFile(path) as book:
        return [(name, book.read(name)) for name in book.namelist()]


def as_script(module):
    """A macro module in the script host's language: without types, names of arguments and jumps at errors, and otherwise the same."""
    text = re.sub(r" As (Object|String|Long|Range)\b", "", module.replace("\r", ""))
    text = re.sub(r"(?m)^Attribute .*\n", "", text).replace("Private Const", "Const")
    return text.replace("    On Error GoTo Leave\n", "").replace("Leave:\n", "")


def is_registered(key):
    return emulated("reg", "query", "HKEY_CLASSES_ROOT\\" + key).returncode == 0


def setUpModule():
    if not (linux_program.exists() and linux_client.exists()):
        subprocess.run(["cmake", "--preset", "release"], cwd=source, check=True, stdout=subprocess.DEVNULL)
        subprocess.run(["cmake", "--build", linux, "--target", "mervane_cli", "example_cpp_client"], check=True, stdout=subprocess.DEVNULL)
    unpacked.mkdir()
    files.mkdir()
    with zipfile.ZipFile(package) as contents:
        for name in contents.namelist():
            inside = pathlib.PurePosixPath(name).relative_to(pathlib.PurePosixPath(name).parts[0])
            if name.endswith("/"):
                continue
            target = unpacked / inside
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(contents.read(name))
    global keeper
    emulated("wineboot", "-i", cwd=work).check_returncode()
    # Something that runs all the time keeps the emulator from starting anew for each program.
    keeper = subprocess.Popen([source / "scripts/wine_run", width, "cmd"], env=windows, stdin=subprocess.PIPE, stdout=subprocess.DEVNULL,
                              stderr=subprocess.DEVNULL)


def endEmulator():
    emulated("wineboot", "-k", cwd=work)
    keeper.stdin.close()
    keeper.wait(timeout=60)


def tearDownModule():
    if keeper.poll() is None:
        endEmulator()
    shutil.rmtree(work, ignore_errors=True)


class ThePackage(unittest.TestCase):
    """The tests of this class run in the order of their letters: they register first and take that back last."""

    def test_a_holds_what_its_readme_lists(self):
        listed = {line.split()[0] for line in (unpacked / "README.txt").read_text("utf-8").splitlines() if line.startswith("  ")}
        there = {path.name for path in unpacked.iterdir()}
        self.assertEqual(there - {"README.txt"}, listed | {"unregister.cmd", "cluster_array.cpp"})
        self.assertGreaterEqual(len(list((unpacked / "licenses").iterdir())), 9)

    def test_b_registers_the_component(self):
        self.assertFalse(is_registered(className))
        run = emulated("cmd", "/c", "register.cmd", "/q", cwd=unpacked)
        self.assertEqual(run.returncode, 0, run)
        self.assertIn("Registered: MervaneCls31.dll", "\n".join(lines(run)))
        self.assertTrue(is_registered(className))

    def test_c_runs_its_sample_script(self):
        run = emulated("cscript", "//nologo", "sample.vbs", cwd=unpacked)
        self.assertEqual(lines(run), ["rows: 4, columns: 2", "first column: 1 to 9.5", "together: True, apart: True", "refused: 80044589 Invalid argument", "done"])

    def test_d_has_a_client_that_prints_what_its_linux_sibling_prints(self):
        run = emulated(unpacked / "cluster_array.exe")
        expected = subprocess.run([linux_client], capture_output=True, timeout=60).stdout.decode().splitlines()
        self.assertEqual(lines(run), expected)
        self.assertEqual(len(expected), 17)

    def test_d2_has_all_that_its_client_is_made_of(self):
        compiler = {"32": "i686", "64": "x86_64"}[width] + "-w64-mingw32-g++-posix"
        made = files / "made.exe"
        subprocess.run([compiler, "-std=c++20", "-static", "-Iinclude", "cluster_array.cpp", "-o", made, "-lole32", "-loleaut32", "-luuid"],
                       cwd=unpacked, check=True, timeout=120)
        self.assertEqual(lines(emulated(made)), lines(emulated(unpacked / "cluster_array.exe")))
        self.assertEqual((unpacked / "mervane_class3.tlb").read_bytes()[:4], b"MSFT")

    def test_d3_says_company_product_and_version_in_every_file(self):
        for name in ("MervaneCls31.dll", "MervaneEngine.dll", "mervane.exe", "cluster_array.exe"):
            content = (unpacked / name).read_bytes()
            for key, text in (("CompanyName", "Tarvik"), ("ProductName", "MervaneClass"), ("FileVersion", "3.00.0057")):
                with self.subTest(f"{name} {key}"):
                    at = content.find(key.encode("utf-16-le"))
                    self.assertGreater(at, 0)
                    self.assertIn(text.encode("utf-16-le"), content[at : at + 80])

    def test_d4_says_why_a_file_cannot_be_registered(self):
        broken = files / "broken"
        broken.mkdir()
        shutil.copy(unpacked / "register.cmd", broken)
        for name in ("MervaneCls31.dll", "MervaneEngine.dll"):
            (broken / name).write_text("no library")
        run = emulated("cmd", "/c", "register.cmd", "/q", cwd=broken)
        self.assertEqual(run.returncode, 1, run)
        said = "\n".join(lines(run))
        self.assertIn("MervaneCls31.dll could not be registered, regsvr32 ended with 3.", said)
        self.assertIn("Windows cannot load it", said)
        self.assertNotIn("Registered:", said)

    def test_e_clusters_a_workbook_by_a_script_and_a_press_of_the_button(self):
        expected = work / "expected.xlsx"
        self.assertEqual(native("cluster", examples / "iris.xlsx", "-i", "Iris!B2:E151", "--outputs", "Iris!G2", "-q", "-o", expected).returncode, 0)
        self.assertEqual(emulated("regsvr32", "/s", windows_path(spreadsheet)).returncode, 0)
        user = subprocess.Popen([source / "scripts/wine_run", width, presser], env=windows, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
        try:
            result = files / "ergebnis.xlsx"
            run = emulated("cscript", "//nologo", "cluster_iris.vbs", windows_path(unpacked / "iris.xlsx"), windows_path(result),
                           "MervaneTest.Spreadsheet", cwd=unpacked)
            self.assertEqual(lines(run), ["CLOSE", "saved"], run)
            self.assertEqual(user.wait(timeout=30), 0)
        finally:
            if user.poll() is None:
                user.terminate()
                user.wait(timeout=30)
        self.assertEqual(parts(result), parts(expected))
        self.assertEqual(emulated("regsvr32", "/u", "/s", windows_path(spreadsheet)).returncode, 0)
        self.assertFalse(is_registered("MervaneTest.Spreadsheet"))

    def test_e2_clusters_what_is_picked_in_its_macro_module(self):
        """The module itself runs here, between the real component and an application that counts columns by number."""
        book, result, expected = files / "picked.xlsx", files / "picked out.xlsx", work / "picked expected.xlsx"
        with zipfile.ZipFile(examples / "iris.xlsx") as source_book, zipfile.ZipFile(book, "w") as target:
            for name in source_book.namelist():
                target.writestr(name, source_book.read(name).replace(b'name="Iris"', b'name="It\'s 1"'))
        self.assertEqual(native("cluster", book, "-i", "'It''s 1'!B2:E151", "--outputs", "'It''s 1'!G2", "-q", "-o", expected).returncode, 0)
        script = files / "picked.vbs"
        script.write_text(as_script((unpacked / "MervaneClustering.bas").read_text("utf-8")) + """
Dim Application, book, other
Set Application = CreateObject("MervaneTest.Spreadsheet")
Set book = Application.Workbooks.Open(WScript.Arguments(0))
Set other = CreateObject("MervaneClass3.Classifier3")
OfferSelection other
WScript.Echo "nothing selected [" & other.CellInputs & "]"
Application.Selects "'It''s 1'!A1:AAA3"
OfferSelection other
Application.Selects "'It''s 1'!A1:D65536"
OfferSelection other
WScript.Echo "too much selected [" & other.CellInputs & "]"
other.UnloadfrmMain
Application.Selects "'It''s 1'!B2:E151"
WScript.Echo Application.Selection.Address & " " & ReferenceOf(Application.Selection)
WScript.Echo Picked("Where?", "as before")
Application.Selects "'It''s 1'!B2:E9"
Application.Picks "'It''s 1'!B2:E151"
Application.Picks "'It''s 1'!G2"
Application.ReferenceStyle = -4150
ClusterRows
WScript.Echo Application.Asked
WScript.Echo Application.ReferenceStyle
book.SaveAs WScript.Arguments(1)
WScript.Echo "end"
""", "utf-8")
        self.assertEqual(emulated("regsvr32", "/s", windows_path(spreadsheet)).returncode, 0)
        user = subprocess.Popen([source / "scripts/wine_run", width, presser, "Browse for Inputs", "Browse for Outputs", "Clusterize"],
                                env=windows, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
        try:
            run = emulated("cscript", "//nologo", "picked.vbs", windows_path(book), windows_path(result))
            self.assertEqual(lines(run), [
                "nothing selected []", "too much selected []", "$B$2:$E$151 'It''s 1'!B2:E151", "as before",
                "Where?[as before]Select the rows of numbers to cluster:['It''s 1'!B2:E9]Select the first cell of the results:[]",
                "-4150", "end"], run)
            self.assertEqual(user.wait(timeout=30), 0)
        finally:
            if user.poll() is None:
                user.terminate()
                user.wait(timeout=30)
        self.assertEqual(parts(result), parts(expected))
        self.assertEqual(emulated("regsvr32", "/u", "/s", windows_path(spreadsheet)).returncode, 0)

    def test_f_takes_its_registration_back(self):
        run = emulated("cmd", "/c", "unregister.cmd", "/q", cwd=unpacked)
        self.assertEqual(run.returncode, 0, run)
        self.assertFalse(is_registered(className))
        endEmulator()
        text = ""
        for _ in range(200):  # The registry is on the disk once the emulator has ended; the user's part comes last.
            saved = [work / f"prefixes/prefix{width}" / name for name in ("system.reg", "user.reg")]
            text = "".join(path.read_text("utf-8", "replace") for path in saved if path.exists())
            # What the dialog remembers stays, as for every program of the user's.
            if "Tarvik" in text:
                break
            time.sleep(0.1)
        self.assertNotIn("MervaneCls31", text)
        self.assertNotIn(className, text)
        self.assertIn("Tarvik", text)


class TheCommandLineProgram(unittest.TestCase):
    def same(self, *arguments):
        here, there = program(*arguments), native(*arguments)
        # The emulator's own helpers speak on the same stream.
        errors = b"".join(line for line in here.stderr.splitlines(keepends=True) if not line.startswith(b"wine:"))
        self.assertEqual((here.returncode, here.stdout, errors), (there.returncode, there.stdout, there.stderr))
        return here

    def test_clusters_example_data_as_on_linux(self):
        for name in ("iris", "data/air_quality", "data/ill_scaled", "data/one_column", "data/quakes", "data/wide"):
            with self.subTest(name):
                self.assertEqual(self.same("cluster", examples / f"{name}.csv").returncode, 0)

    def test_saves_the_same_workbook_as_on_linux(self):
        arguments = ("cluster", examples / "iris.xlsx", "-i", "Iris!B2:E151", "--outputs", "Iris!G2", "-q", "-o")
        self.assertEqual(program(*arguments, files / "here.xlsx").returncode, 0)
        self.assertEqual(native(*arguments, work / "there.xlsx").returncode, 0)
        self.assertEqual(parts(files / "here.xlsx"), parts(work / "there.xlsx"))

    def test_prints_the_same_help_and_lists_the_same_sheets(self):
        self.assertEqual(self.same("cluster", "--help").returncode, 0)
        self.assertEqual(self.same("sheets", examples / "iris.xlsx").returncode, 0)

    def test_refuses_with_the_same_words_and_status(self):
        self.assertEqual(self.same("cluster", "nothing here.csv").returncode, 3)
        self.assertEqual(self.same("cluster", examples / "iris.csv", "--clusters", "0").returncode, 2)
        self.assertEqual(self.same("cluster", examples / "iris.csv", "-o", examples / "data").returncode, 3)

    def test_takes_names_of_files_in_any_script(self):
        table = files / "данные 表 €.csv"
        shutil.copy(examples / "iris.csv", table)
        result = files / "итог 結果 é.csv"
        run = program("cluster", table.name, "-o", result.name)
        self.assertEqual(run.returncode, 0, run)
        self.assertEqual(result.read_bytes(), native("cluster", examples / "iris.csv").stdout)
        self.assertIn(result.name, run.stderr.decode("utf-8"))

    def test_replaces_an_old_file_and_leaves_nothing_beside_it(self):
        folder = files / "replaced"
        folder.mkdir()
        (folder / "old.csv").write_text("old")
        self.assertEqual(program("cluster", examples / "iris.csv", "-o", "old.csv", cwd=folder).returncode, 0)
        self.assertEqual((folder / "old.csv").read_bytes(), native("cluster", examples / "iris.csv").stdout)
        self.assertEqual([path.name for path in folder.iterdir()], ["old.csv"])

    def test_leaves_a_file_that_may_not_be_written_as_it_was(self):
        folder = files / "kept"
        folder.mkdir()
        (folder / "kept.csv").write_text("kept")
        self.assertEqual(emulated("attrib", "+r", "kept.csv", cwd=folder).returncode, 0)
        run = program("cluster", examples / "iris.csv", "-o", "kept.csv", cwd=folder)
        self.assertEqual(run.returncode, 3, run)
        self.assertEqual((folder / "kept.csv").read_text(), "kept")
        self.assertEqual([path.name for path in folder.iterdir()], ["kept.csv"])

    def test_reads_standard_input_byte_for_byte(self):
        with open(examples / "iris.csv", "rb") as here, open(examples / "iris.csv", "rb") as there:
            self.assertEqual(program("cluster", "-", stdin=here).stdout, native("cluster", "-", stdin=there).stdout)

    def test_remembers_settings_in_the_registry(self):
        self.assertEqual(program("settings", "set", "CLUSTERS", "7").returncode, 0)
        self.assertIn("CLUSTERS=7", lines(program("settings", "list")))
        # The other tests begin with a dialog that remembers nothing.
        self.assertEqual(program("settings", "clear").returncode, 0)
        self.assertIn("CLUSTERS", lines(program("settings", "list")))



def save(result, path):
    """The counts and cases in the form that the totals are made of."""
    bad = {test.id().split(" ")[0] for test, _ in result.failures + result.errors}
    root = xml.Element("testsuites", tests=str(max(result.testsRun, len(bad))), failures=str(len(bad)), errors="0")
    for name in sorted(bad):
        xml.SubElement(root, "testcase", name=name, result="completed")
    path.parent.mkdir(parents=True, exist_ok=True)
    xml.ElementTree(root).write(path)


if __name__ == "__main__":
    outcome = unittest.main(argv=[sys.argv[0], "-v"], exit=False).result
    save(outcome, pathlib.Path(results))
    sys.exit(0 if outcome.wasSuccessful() else 1)
