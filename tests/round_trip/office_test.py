#!/usr/bin/python3
"""Has LibreOffice read every result, and compares what it sees with what the rows and the program say.

It also saves some of the results itself, for the program to read again. One LibreOffice serves all books.
"""

import importlib
import json
import os
import sys
import tempfile
import unittest

import kept
import office
import office_reading as reading
import parts_test
import program
import results
from package_reader import PackageReader
from recipe import FIRST_ROW, LAST_ROW

PRODUCERS = ("by_hand", "by_hand_kinds", "by_dialects", "by_openpyxl", "by_xlsxwriter", "by_libreoffice")
POINT = 2540 / 72  # in hundredths of a millimetre
TOLERANCE = 60  # of a place; widths of columns are rounded to pixels there and to twips here
# What the count of all else may say otherwise, by book, because the run is meant to change it.
COUNTED_OTHERWISE = {"filtered_rows_without_filter.xlsx": {"hidden"}}
# Books that differ from others in little that LibreOffice would see; each book takes the better part of a second.
LEFT_OUT = (
    "views_without_filter.xlsx", "rules_without_filter.xlsx", "filtered_without_filter.xlsx", "strict_charts.xlsx",
    # Without formats each reader takes a font of its own, and with it other widths of columns.
    "bare.xlsx",
)  # fmt: skip
# Books that LibreOffice saves for the program to read again.
SAVED_AGAIN = (
    "by_hand-charts.xlsx", "by_hand-formulas.xlsx", "by_hand-strict.xlsx", "by_openpyxl-sheets.xlsx",
    "by_xlsxwriter-rules.xlsx", "by_libreoffice-libreoffice_rules.xlsx",
)  # fmt: skip


def books():
    for producer in PRODUCERS:
        try:
            for recipe in importlib.import_module(producer).BOOKS:
                if recipe.name not in LEFT_OUT:
                    yield producer, recipe
        except ModuleNotFoundError as error:
            print(f"SKIPPED: the books of {producer}, since the Python module {error.name} is not installed")


def borders(place):
    """Top, bottom, left, right of a cell of a block: thin around the block, hair inside."""
    number = int(place[1:]) - LAST_ROW - 1
    block, row = divmod(number, len(results.CLUSTERS))
    first = "D" if block == len(results.LABELS) - 1 else "B"
    edges = [reading.THIN if at else reading.HAIR for at in (row == 0, row == 2, place[0] == first, place[0] == "E")]
    # Where blocks touch, both draw the line, and the thin one is seen.
    if row == 0 and block == len(results.LABELS) - 1:
        edges[0] = reading.THIN
    return tuple(edges)


class Witness(unittest.TestCase):
    maxDiff = None

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.office = office.Office().__enter__()

    @classmethod
    def tearDownClass(cls):
        cls.office.__exit__()
        cls.folder.cleanup()

    def opened(self, path):
        document = self.office.open(path)
        self.addCleanup(document.close, True)
        return document

    def witness(self, producer, recipe):
        book, out = (os.path.join(self.folder.name, f"{word}{producer}-{recipe.name}") for word in ("", "out-"))
        recipe.make(book)
        clusters = program.cluster(book, out, recipe)
        before, after = self.opened(book), self.opened(out)
        self.cells_are_read(before, after, recipe, clusters)
        self.only_the_told_cells_changed(before, after, recipe, book)
        self.filter_is_read(before, after, recipe)
        self.charts_are_read(before, after, recipe, clusters, PackageReader(out))
        self.all_else_is_counted_alike(before, after, recipe)
        if f"{producer}-{recipe.name}" in SAVED_AGAIN:
            self.program_reads_it_again(after, out, recipe, clusters)

    def cells_are_read(self, before, after, recipe, clusters):
        rows = reading.rows(before, recipe.sheet, f"A{FIRST_ROW}:D{LAST_ROW}")
        wanted_cells = results.expected_cells(rows, clusters, recipe.sorts)
        read = reading.rows(after, recipe.sheet, "A1:G31")
        looks = reading.looks(after, recipe.sheet, wanted_cells)
        for place, wanted in wanted_cells.items():
            found, cell = read[int(place[1:]) - 1]["ABCDEFG".index(place[0])], looks[place]
            self.assertTrue(results.same(wanted, found), f"{place}: {wanted!r} is read as {found!r}")
            cluster = results.expected_fill(place, clusters, recipe.sorts)
            if cluster is not None:
                self.assertEqual(cell.fill, results.FILLS[cluster][1], f"the fill of {place}")
            in_block = place[0] in "BCDE" and int(place[1:]) > LAST_ROW
            if place == "G4" or place[0] == "E":
                self.assertTrue(cell.bold, f"{place} is not bold")
            if in_block:
                self.assertEqual(cell.number_format == "0.00%", results.is_share(place), f"{place}: {cell.number_format}")
                self.assertEqual(cell.borders, borders(place), f"the borders of {place}")

    def only_the_told_cells_changed(self, before, after, recipe, book):
        """The cells that LibreOffice reads otherwise than before are those that the program names beforehand."""
        told = json.loads(program.run("cluster", book, *program.references(recipe), *program.choices(recipe), "-q", "--dry-run", "--format", "json"))  # fmt: skip
        sheet = reading.sheet_of(before, recipe.sheet)
        areas = [sheet.getCellRangeByName(block["range"]).RangeAddress for block in told["blocks"]]
        areas.append(sheet.getCellRangeByName(f"A{FIRST_ROW}:E{LAST_ROW}").RangeAddress)
        pages = [reading.rows(document, recipe.sheet, "A1:Z60") for document in (before, after)]
        formulas = reading.sheet_of(after, recipe.sheet).getCellRangeByName("A1:Z60").getFormulaArray()
        for number, lines in enumerate(zip(*pages)):
            for column, (old, new) in enumerate(zip(*lines)):
                is_told = any(a.StartRow <= number <= a.EndRow and a.StartColumn <= column <= a.EndColumn for a in areas)
                # What formulas make of moved rows, and of the time, is theirs.
                is_formula = formulas[number][column].startswith(("=", "{="))
                self.assertTrue(old == new or is_told or is_formula, f"row {number + 1}, column {column + 1}: {old!r}, {new!r}")
        for title in ("Clusters profiles", "Clusters weights"):
            self.assertTrue(any(f'chart "{title}" is added' in note for note in told["notes"]), told["notes"])

    def filter_is_read(self, before, after, recipe):
        had, has = (reading.filter_area(document, recipe.sheet) for document in (before, after))
        if recipe.filter_option == "--no-autofilter":
            self.assertIsNone(has)
        elif had is not None:
            self.assertEqual(has, had)
        else:
            self.assertEqual(has, (6, FIRST_ROW - 2, 6, LAST_ROW - 1))

    def charts_are_read(self, before, after, recipe, clusters, package):
        old, new = (reading.charts(document, recipe.sheet) for document in (before, after))
        self.assertEqual(len(new), len(old) - len(recipe.gone) + 2, [chart.title for chart in new])
        rows = reading.rows(before, recipe.sheet, f"A{FIRST_ROW}:D{LAST_ROW}")
        cells = results.expected_cells(rows, clusters, recipe.sorts)
        listing = reading.sheet_of(after, recipe.sheet).getCellRangeByName(f"G{FIRST_ROW}:G{LAST_ROW}")
        left, top = listing.Position.X + listing.Size.Width, listing.Position.Y
        ours = {chart.title: chart for chart in new if chart.title in ("Clusters profiles", "Clusters weights")}
        profiles, weights = ours["Clusters profiles"], ours["Clusters weights"]
        header = list(reading.rows(after, recipe.sheet, f"B{FIRST_ROW - 1}:D{FIRST_ROW - 1}")[0])

        self.assertEqual((profiles.types, weights.types), (["LineChartType"], ["ColumnChartType"]))
        self.assertEqual((profiles.has_legend, weights.has_legend), (True, False))
        self.assertEqual((profiles.axis_titles, weights.axis_titles), ([None] * 2, [None] * 2))
        self.assertEqual(profiles.categories, header)
        self.assertEqual(weights.categories, [f"Cluster {k} weight (%)" for k in results.CLUSTERS])
        self.assertEqual([name for name, _, _ in profiles.series], [f"Cluster {k}" for k in results.CLUSTERS])
        first = LAST_ROW + 1 + len(results.CLUSTERS)
        for row, (_, values, color) in enumerate(profiles.series, first):
            self.values_are(values, [cells[f"{column}{row}"] for column in "BCD"])
            self.assertEqual(color, results.FILLS[row - first + 1][1])
        first += 3 * len(results.CLUSTERS)
        self.values_are(weights.series[0][1], [cells[f"D{first + k - 1}"] for k in results.CLUSTERS])
        width = self.width_by_columns(after, recipe.sheet, package)
        if recipe.has_plain_columns:
            self.assertLessEqual(abs(width - 350 * POINT), TOLERANCE)
        self.place_is(weights.place, (left, top, width, 200 * POINT))
        self.place_is(profiles.place, (left, top + 200 * POINT, width, 200 * POINT))

    def width_by_columns(self, document, name, package):
        """The width of the new charts by the corners that the drawing gives, in the columns as they are wide here.

        LibreOffice makes a column as wide as so many digits, the big spreadsheet rounds that to pixels.
        """
        drawing = package.tree(package.related(package.sheet(name), "drawing"))
        anchor = drawing.elements()[-1]
        edges = []
        for corner in ("from", "to"):
            node = anchor.first(corner)
            column = reading.sheet_of(document, name).Columns.getByIndex(int(node.first("col").text()))
            offset = int(node.first("colOff").text()) / 360
            edges.append(column.getCellByPosition(0, 0).Position.X + min(offset, column.Width))
        return edges[1] - edges[0]

    def values_are(self, found, wanted):
        self.assertEqual(len(found), len(wanted))
        for one, other in zip(found, wanted):
            self.assertAlmostEqual(one, other, 6)

    def place_is(self, found, wanted):
        for one, other in zip(found, wanted):
            self.assertLessEqual(abs(one - other), TOLERANCE, f"{found} is not {wanted}")

    def all_else_is_counted_alike(self, before, after, recipe):
        old, new = (reading.census(document, recipe.sheet) for document in (before, after))
        for name in COUNTED_OTHERWISE.get(recipe.name, ()):
            del old[name], new[name]
        self.assertEqual(old, new)

    def program_reads_it_again(self, after, out, recipe, clusters):
        """LibreOffice saves the result; the program clusters what it saved, finds the same and replaces its two charts."""
        saved, again = (f"{out}-{word}.xlsx" for word in ("saved", "again"))
        self.office.save(after, saved)
        self.assertIn(recipe.sheet.replace("'", "''"), program.run("sheets", saved))
        found = program.cluster(saved, again, recipe)
        self.assertEqual(found, results.listed(clusters, recipe.sorts))
        package = PackageReader(again)
        self.assertEqual(kept.package_holds_together(package), [])
        self.assertEqual(parts_test.charts_are_right(package, recipe), [])


def main():
    reason = office.missing()
    if reason:
        print(f"SKIPPED: {reason}")
        sys.exit(program.SKIPPED)
    for producer, recipe in books():
        name = f"test_{producer}_{os.path.splitext(recipe.name)[0]}"
        setattr(Witness, name, lambda self, producer=producer, recipe=recipe: self.witness(producer, recipe))
    unittest.main()


if __name__ == "__main__":
    main()
