#!/usr/bin/python3
"""Shows that the comparison of packages finds fault: each harm done to a good result has to be told."""

import os
import tempfile
import unittest

import by_hand
import kept
import parts_test
import program
from package_reader import TYPES, PackageReader

SHEET = "xl/worksheets/sheet1.xml"
DRAWING = "xl/drawings/drawing1.xml"

# The book, the part, what is replaced, by what, and words of the answer. Nothing to replace removes the part.
HARMS = (
    ("rules.xlsx", "customXml/item1.xml", b"kept", b"lost", "customXml/item1.xml is not the same"),
    ("rules.xlsx", "xl/printerSettings/printerSettings1.bin", None, None, "printerSettings1.bin, which is missing"),
    ("rules.xlsx", SHEET, b'operator="greaterThan"', b'operator="lessThan"', "conditionalFormatting was"),
    ("rules.xlsx", SHEET, b"<x14:sparkline>", b"<x14:sparkline x=\"1\">", "extLst was"),
    ("rules.xlsx", SHEET, b'<mergeCell ref="M40:O42"/>', b"", "mergeCells was"),
    ("rules.xlsx", SHEET, b"<c r=\"M45\" s=\"4\"", b"<c r=\"M45\" s=\"5\"", "the format of M45"),
    ("rules.xlsx", SHEET, b"<t xml:space=\"preserve\"> inline</t>", b"<t>inline</t>", "the content of P44"),
    ("rules.xlsx", SHEET, b' ht="30"', b"", "row 1 was"),
    ("rules.xlsx", SHEET, b"<phoneticPr", b"<phoneticPR", "number of elements"),
    ("rules.xlsx", SHEET, b'mc:Ignorable="x14ac xr"', b'mc:Ignorable="xr"', "the head of the sheet"),
    ("rules.xlsx", SHEET, b'<c r="G4"', b'<c r="H4"', "H4 is new"),
    ("rules.xlsx", "xl/styles.xml", b"0.000&quot; mm", b"0.00&quot; mm", "numFmts"),
    ("rules.xlsx", "xl/styles.xml", b'<fill><patternFill patternType="gray125"/></fill>', b"", "fills"),
    ("rules.xlsx", "xl/workbook.xml", b'name="Lists"', b'name="List"', "sheets was"),
    ("rules.xlsx", "xl/workbook.xml", b' fullCalcOnLoad="1"', b"", "full calculation on load"),
    ("rules.xlsx", TYPES, b"/xl/customProperty1.bin", b"/xl/customProperty2.bin", "customProperty2.bin, which is missing"),
    ("rules.xlsx", "_rels/.rels", b"customXml/item1.xml", b"customXml/itemProps1.xml", "the relation"),
    ("formulas.xlsx", "xl/workbook.xml", b'name="Rate"', b'name="rate"', "the names"),
    ("charts.xlsx", DRAWING, b'descr="a red square"', b"", "the old anchors"),
    ("charts.xlsx", DRAWING, b'id="20"', b'id="13"', "the ids of the shapes"),
    ("charts.xlsx", "xl/media/image1.png", None, None, "image1.png, which is missing"),
    ("charts.xlsx", "xl/charts/chart1.xml", b"Sizes", b"sizes", "chart1.xml is not the same"),
    ("views.xlsx", SHEET, b'topLeftCell="B5"', b'topLeftCell="B6"', "the views was"),
    ("views.xlsx", SHEET, b'ref="A4:D16"', b'ref="A4:D15"', "the filter that was on"),
    ("views.xlsx", SHEET, b' hidden="1" customWidth', b" customWidth", "column"),
)


class Checks(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.recipes = {recipe.name: recipe for recipe in by_hand.BOOKS}
        cls.folder = tempfile.TemporaryDirectory()
        cls.paths = {}
        for name in {harm[0] for harm in HARMS}:
            book, out = (os.path.join(cls.folder.name, word + name) for word in ("", "out-"))
            cls.recipes[name].make(book)
            program.cluster(book, out, cls.recipes[name])
            cls.paths[name] = book, out

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def compare(self, name, harm=lambda after: None):
        before, after = (PackageReader(path) for path in self.paths[name])
        harm(after)
        recipe = self.recipes[name]
        return kept.everything(before, after, recipe, parts_test.without_their_users(before, recipe.gone))

    def test_a_good_result_is_told_to_be_good(self):
        for name in self.paths:
            self.assertEqual(self.compare(name), [], name)

    def test_every_harm_is_told(self):
        for name, part, old, new, words in HARMS:
            def harm(after):
                if old is None:
                    del after.parts[part]
                    return
                self.assertIn(old, after.parts[part], f"{part} of {name} has nothing to harm")
                after.parts[part] = after.parts[part].replace(old, new, 1)

            with self.subTest(part=part, old=old):
                self.assertTrue(any(words in one for one in self.compare(name, harm)), self.compare(name, harm))

    def test_an_untitled_chart_that_stays_is_told(self):
        def harm(after):
            before = PackageReader(self.paths["charts.xlsx"][0])
            after.parts["xl/charts/style3.xml"] = before.parts["xl/charts/style3.xml"]

        self.assertTrue(any("style3.xml is still there" in one for one in self.compare("charts.xlsx", harm)))


if __name__ == "__main__":
    unittest.main()
