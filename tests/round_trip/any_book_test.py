#!/usr/bin/python3
"""Shows that `any_book` takes every book of the corpus for kept, and that it finds harm, refusals and crashes."""

import importlib
import os
import pathlib
import stat
import subprocess
import sys
import tempfile
import unittest

import program

HERE = pathlib.Path(__file__).parent
PRODUCERS = ("by_hand", "by_hand_kinds", "by_dialects", "by_openpyxl", "by_xlsxwriter")

# A program between: it runs the real one and then harms what that has written.
SABOTEUR = """#!{python}
import subprocess, sys, zipfile
done = subprocess.run([{program!r}, *sys.argv[1:]])
if "-o" in sys.argv and done.returncode == 0:
    path = sys.argv[sys.argv.index("-o") + 1]
    with zipfile.ZipFile(path) as archive:
        parts = [(name, archive.read(name)) for name in archive.namelist()]
    with zipfile.ZipFile(path, "w") as archive:
        for name, content in parts:
{harm}
sys.exit(done.returncode)
"""
HARMS = {
    "            if 'theme' not in name: archive.writestr(name, content)\n": "theme1.xml",
    "            archive.writestr(name, content.replace(b'<v>333.5</v>', b'<v>333.25</v>'))\n": "the content of V41",
    "            archive.writestr(name, content.replace(b'<t>sample 3</t>', b'<t>sample 33</t>'))\n": "sharedStrings.xml is not the same",
    "            archive.writestr(name, content.replace(b'<v>52</v>', b'<v>53</v>'))\n": "",
}


def run(folder, mervane=program.PROGRAM):
    done = subprocess.run(
        [sys.executable, "-B", str(HERE / "any_book"), str(folder)], capture_output=True, text=True, env={**os.environ, "MERVANE_PROGRAM": mervane}
    )  # fmt: skip
    assert not done.stderr, done.stderr
    return done


class AnyBook(unittest.TestCase):
    def setUp(self):
        self.temporary = tempfile.TemporaryDirectory()
        self.addCleanup(self.temporary.cleanup)
        self.folder = pathlib.Path(self.temporary.name) / "books"
        self.folder.mkdir()

    def make(self, producer, *names):
        for recipe in importlib.import_module(producer).BOOKS:
            # Rows that are hidden cannot be sorted.
            if recipe.sorts and (not names or recipe.name in names):
                recipe.make(str(self.folder / f"{producer}_{recipe.name}"))

    def stand_in(self, text):
        path = pathlib.Path(self.temporary.name) / "stand-in"
        path.write_text(text)
        path.chmod(path.stat().st_mode | stat.S_IXUSR)
        return str(path)

    def test_every_book_of_the_corpus_is_kept(self):
        for producer in PRODUCERS:
            try:
                self.make(producer)
            except ModuleNotFoundError as error:
                print(f"without {error.name}")
        done = run(self.folder)
        self.assertEqual(done.returncode, 0, done.stdout)
        self.assertRegex(done.stdout, r"\d+ kept \(--no-sort\)")
        self.assertRegex(done.stdout, r"\d+ kept \(--sort\)")

    def test_harm_is_told_with_the_book_and_the_place(self):
        self.make("by_hand_kinds", "pivot_beside.xlsx")
        for harm, words in HARMS.items():
            with self.subTest(harm=harm):
                mervane = self.stand_in(SABOTEUR.format(python=sys.executable, program=program.PROGRAM, harm=harm))
                done = run(self.folder, mervane)
                self.assertEqual(done.returncode, 1, done.stdout)
                self.assertIn("by_hand_kinds_pivot_beside.xlsx: --sort: ", done.stdout)
                self.assertIn(words, done.stdout)
                self.assertIn("1 books, 1 with differences", done.stdout)

    def test_crashes_and_failures_are_told(self):
        self.make("by_dialects", "bare.xlsx")
        for text, words in (
            ("#!/bin/sh\n[ \"$2\" = --help ] && exit 0\nkill -SEGV $$\n", "ended by signal 11"),
            ("#!/bin/sh\n[ \"$2\" = --help ] && exit 0\necho 'mervane: error: internal failure: x' >&2; exit 4\n", "ended with 4: mervane: error: internal failure: x"),
        ):  # fmt: skip
            done = run(self.folder, self.stand_in(text))
            self.assertEqual(done.returncode, 1, done.stdout)
            self.assertIn(words, done.stdout)

    def test_what_is_no_workbook_is_counted_by_what_is_said(self):
        (self.folder / "text.xlsx").write_text("no zip at all")
        (self.folder / "empty.xlsm").write_bytes(b"")
        done = run(self.folder)
        self.assertEqual(done.returncode, 0, done.stdout)
        self.assertIn("2 books, 0 with differences", done.stdout)
        self.assertEqual(done.stdout.count("not opened: "), 2)

    def test_a_folder_without_books_is_a_mistake(self):
        self.assertEqual(run(self.folder).returncode, 2)


if __name__ == "__main__":
    unittest.main()
