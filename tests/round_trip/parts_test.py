#!/usr/bin/python3
"""Clusters every book of one producer and compares the package that comes out, part by part, with the one that went in.

usage: parts_test.py PRODUCER    (MERVANE_PROGRAM names the program)
"""

import importlib
import os
import pathlib
import re
import sys
import tempfile
import unittest

import kept
import program
import results
from package_reader import Node, PackageReader, relations_name
from recipe import FIRST_ROW, LAST_ROW


def without_their_users(before, gone):
    """The charts that go, with the parts that only they lead to and the relations of all of these."""
    result = set(gone)
    for part in gone:
        result |= {target for _, target, external in before.relations(part).values() if not external}
    return result | {relations_name(part) for part in result if relations_name(part) in before.parts}


def old_rows(before, part):
    cells, texts = before.cells(part), before.texts()
    numbers = range(FIRST_ROW, LAST_ROW + 1)
    return [tuple(before.value(cells[f"{column}{number}"], texts) for column in "ABCD") for number in numbers]


class Formats:
    """The cell formats of a package, each looked up in its lists."""

    def __init__(self, book):
        part = book.related(book.workbook(), "styles")
        self.has_any = part is not None
        # A book without formats has the plain one of each list.
        plain = {name: [Node(name, {})] for name in ("fonts", "fills", "borders", "cellXfs")}
        self.lists = {name: book.tree(part).first(name).elements() for name in plain} if part else plain

    def of(self, cell):
        return self.lists["cellXfs"][int(cell.get("s") or "0")]

    def fill(self, cell):
        node = self.lists["fills"][int(self.of(cell).get("fillId", "0"))].first("patternFill")
        solid = node is not None and node.get("patternType") == "solid"
        # A book with a palette of its own gets the colour itself instead of its number.
        color = node.first("fgColor") if solid else None
        return color.get("indexed", color.get("rgb")) if color is not None else None

    def is_bold(self, cell):
        node = self.lists["fonts"][int(self.of(cell).get("fontId", "0"))].first("b")
        return node is not None and node.get("val", "1") in ("1", "true")

    def besides_fill(self, cell):
        """The format without its fill, with the lists' numbers looked up, so that two packages can be compared."""
        node = self.of(cell)
        ours = {n: v for n, v in node.attributes.items() if n not in ("fillId", "applyFill", "fontId", "borderId")}
        looked_up = (self.lists["fonts"][int(node.get("fontId", "0"))], self.lists["borders"][int(node.get("borderId", "0"))])
        return ours, looked_up, node.children


def written_cells(before, after, recipe, clusters):
    part = before.sheet(recipe.sheet)
    wanted = results.expected_cells(old_rows(before, part), clusters, recipe.sorts)
    cells, texts, formats = after.cells(part), after.texts(), Formats(after)
    wrong = []
    for place, value in wanted.items():
        if place not in cells:
            wrong.append(f"{place} is missing")
            continue
        found = after.value(cells[place], texts)
        if not results.same(value, found):
            wrong.append(f"{place} should hold {value} and holds {found}")
        cluster = results.expected_fill(place, clusters, recipe.sorts)
        if cluster is not None and formats.fill(cells[place]) not in results.names_of(cluster):
            wrong.append(f"{place} should have the colour of cluster {cluster}, not {formats.fill(cells[place])}")
        if (place == "G4" or (place[0] == "E" and int(place[1:]) > LAST_ROW)) and not formats.is_bold(cells[place]):
            wrong.append(f"{place} should be bold")
        if results.is_share(place) and formats.of(cells[place]).get("numFmtId") != "10":
            wrong.append(f"{place} should be a percentage")
    return wrong + moved_formats(before, after, part, clusters, recipe.sorts)


def moved_formats(before, after, part, clusters, sorts):
    """A cell that moves with its row takes its format along; only the fill of the measures is new."""
    old, new = before.cells(part), after.cells(part)
    old_formats, new_formats = Formats(before), Formats(after)
    order = results.placed_rows(range(FIRST_ROW, LAST_ROW + 1), clusters, sorts)
    wrong = []
    for number, (origin, _) in enumerate(order, FIRST_ROW):
        for column in "ABCD":
            was, now = old[f"{column}{origin}"], new[f"{column}{number}"]
            if old_formats.has_any and old_formats.besides_fill(was) != new_formats.besides_fill(now):
                wrong.append(f"{column}{number} has not the format that {column}{origin} had")
        was, now = old[f"A{origin}"], new[f"A{number}"]
        if kept.cell_content(was) != kept.cell_content(now):
            wrong.append(f"A{number} has not the content that A{origin} had")
    return wrong


def charts_are_right(after, recipe):
    """The new charts by their titles, with references to cells of the sheet only."""
    drawing = after.related(after.sheet(recipe.sheet), "drawing")
    parts = [target for kind, target, _ in after.relations(drawing).values() if kind == "chart"]
    titles = []
    for part in parts:
        root = after.tree(part)
        title = root.first("chart").first("title")
        titles.append(title.text() if title is not None else None)
    ours = sorted(t for t in titles if t in ("Clusters profiles", "Clusters weights"))
    return kept.differing("the new charts", ["Clusters profiles", "Clusters weights"], ours)


class RoundTrip(unittest.TestCase):
    maxDiff = None

    def put_through(self, recipe):
        with tempfile.TemporaryDirectory() as folder:
            book, out = os.path.join(folder, recipe.name), os.path.join(folder, "out-" + recipe.name)
            recipe.make(book)
            original = pathlib.Path(book).read_bytes()
            clusters = program.cluster(book, out, recipe)
            self.assertEqual(pathlib.Path(book).read_bytes(), original, "the input was touched")
            before, after = PackageReader(book), PackageReader(out)
            self.assertEqual(kept.package_holds_together(before), [], "the corpus itself is wrong")
            gone = without_their_users(before, recipe.gone)
            # The chain of calculation is made anew by whoever opens the book; it may stay where no formula was touched.
            chain = before.related(before.workbook(), "calcChain")
            gone |= {chain} if chain and chain not in after.parts else set()
            wrong = kept.everything(before, after, recipe, gone)
            wrong += written_cells(before, PackageReader(out), recipe, clusters)
            wrong += charts_are_right(after, recipe)
            self.assertEqual(wrong, [])
            self.runs_again(out, recipe, clusters)

    def runs_again(self, out, recipe, clusters):
        """A second run on the result finds the same clusters and leaves two charts, and the same parts."""
        again = out + "-again" + os.path.splitext(out)[1]
        self.assertEqual(program.cluster(out, again, recipe), results.listed(clusters, recipe.sorts))
        first, second = PackageReader(out), PackageReader(again)
        self.assertEqual(kept.package_holds_together(second), [])
        self.assertEqual(sorted(first.plain_parts()), sorted(second.plain_parts()))
        self.assertEqual(charts_are_right(second, recipe), [])


def main():
    producer = sys.argv[1]
    try:
        books = importlib.import_module(producer).BOOKS
    except ModuleNotFoundError as error:
        print(f"SKIPPED: the Python module {error.name} is not installed")
        sys.exit(program.SKIPPED)
    for recipe in books:
        name = re.sub(r"\W", "_", os.path.splitext(recipe.name)[0])
        setattr(RoundTrip, f"test_{name}", lambda self, recipe=recipe: self.put_through(recipe))
    unittest.main(argv=[sys.argv[0], *sys.argv[2:]])


if __name__ == "__main__":
    main()
