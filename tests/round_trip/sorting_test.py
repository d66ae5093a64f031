#!/usr/bin/python3
"""Has LibreOffice sort the same rows as the program, and compares the formulas that both leave.

The program moves formulas as the big spreadsheet does, which moves them as it copies them; LibreOffice does the same.
"""

import json
import os
import re
import sys
import tempfile
import unittest

import office
import program
from package_writer import SHEET_TYPE, PackageWriter

FIRST, LAST = 3, 14
INPUTS, SCRATCH = f"Data!H{FIRST}:I{LAST}", "J"
# Three groups that lie far apart, dealt in turn, so that nearly every row moves.
NUMBERS = [(group * 100 + row, group * 40 - row) for row in range(1, 5) for group in (1, 2, 3)]

# By column, with {r} for the own row, {above} and {below} for its neighbours.
FORMULAS = {
    "A": "H{r}*2+$I{r}",  # the own row alone
    "B": "H{r}/SUM(H$3:H$14)+$I$2",  # all rows, and one outside of them
    "C": "H{r}-H{above}+SUM(H{above}:I{below})",  # the neighbours
    "D": "SUM(H$3:H{r})+SUM(I{r}:I$14)",  # totals that run
    "E": "SUM(H:H)+SUM($H:I)+SUM(1:1)+SUM({r}:{r})+SUM($3:{r})",  # whole columns and rows
    "F": "Other!A{r}+Other!$B{r}+SUM(Other!A:A)+SUM(Other!A1:A{r})+Tax*H{r}+Data!H{r}",  # another sheet and a name
    "G": 'IF(H{r}>1,"H{r}","it""s H{above}")&TEXT(I{r},"0.0")&LOG10(H{r})',  # texts and functions that look like cells
}


def texts_escaped(formula):
    return formula.replace("&", "&amp;").replace("<", "&lt;").replace(">", "&gt;")


def write_book(path):
    book = PackageWriter()
    sheets = {"Data": "", "Other": '<row r="1"><c r="A1"><v>1</v></c></row>'}
    for row, numbers in enumerate(NUMBERS, FIRST):
        cells = ""
        for column, formula in FORMULAS.items():
            text = texts_escaped(formula.format(r=row, above=row - 1, below=row + 1))
            cells += f'<c r="{column}{row}"><f>{text}</f></c>'
        cells += f'<c r="H{row}"><v>{numbers[0]}</v></c><c r="I{row}"><v>{numbers[1]}</v></c>'
        sheets["Data"] += f'<row r="{row}">{cells}</row>'
    main, r = book.spaces["main"], book.spaces["r"]
    listed = ""
    for number, (name, rows) in enumerate(sheets.items(), 1):
        part = f"worksheets/sheet{number}.xml"
        body = f'<worksheet xmlns="{main}"><sheetData>{rows}</sheetData></worksheet>'
        book.add(f"xl/{part}", body, f"{SHEET_TYPE}worksheet+xml")
        identifier = book.relate("xl/workbook.xml", "worksheet", part)
        listed += f'<sheet name="{name}" sheetId="{number}" r:id="{identifier}"/>'
    names = '<definedNames><definedName name="Tax">Other!$A$1</definedName></definedNames>'
    body = f'<workbook xmlns="{main}" xmlns:r="{r}"><sheets>{listed}</sheets>{names}</workbook>'
    book.add("xl/workbook.xml", body, f"{SHEET_TYPE}sheet.main+xml")
    book.relate("", "officeDocument", "xl/workbook.xml")
    book.write(path)


def sort_in_calc(sheet, clusters):
    """What the program does, by the office's own hands: the clusters beside the rows, sorted by them."""
    keys = sheet.getCellRangeByName(f"{SCRATCH}{FIRST}:{SCRATCH}{LAST}")
    keys.setDataArray(tuple((float(one),) for one in clusters))
    import uno

    field = uno.createUnoStruct("com.sun.star.table.TableSortField")
    field.Field, field.IsAscending = keys.getRangeAddress().StartColumn, True
    fields = uno.Any("[]com.sun.star.table.TableSortField", (field,))
    settings = (office.value("SortFields", fields), office.value("IsSortColumns", False), office.value("ContainsHeader", False))
    uno.invoke(sheet.getCellRangeByName(f"A{FIRST}:{SCRATCH}{LAST}"), "sort", (settings,))


def formulas(sheet):
    last = max(FORMULAS)
    rows = sheet.getCellRangeByName(f"A{FIRST}:{last}{LAST}").getFormulaArray()
    # Of a lost reference the office goes on showing the parts that are not lost.
    return [tuple(re.sub(r"(\$?[A-Z]*#REF!)(:\$?[A-Z]*#REF!)?", "#REF!", one) for one in row) for row in rows]


class SameSort(unittest.TestCase):
    maxDiff = None

    def test_formulas_move_as_in_libreoffice(self):
        with tempfile.TemporaryDirectory() as folder, office.Office() as calc:
            book, out = os.path.join(folder, "book.xlsx"), os.path.join(folder, "out.xlsx")
            write_book(book)
            listing = program.run(
                "cluster", book, "--inputs", INPUTS, "--outputs", f"Data!L{FIRST}", "--clusters", "3", "--sort", "--overwrite",
                "--no-charts", "-q", "-o", out, "--format", "ndjson",
            )  # fmt: skip
            clusters = [json.loads(line)["Cluster"] for line in listing.splitlines()]
            witness, result = calc.open(book).Sheets.getByName("Data"), calc.open(out).Sheets.getByName("Data")
            before = formulas(witness)
            sort_in_calc(witness, clusters)
            moved = sum(one != other for one, other in zip(before, formulas(witness)))
            self.assertGreater(moved, len(NUMBERS) // 2, "the sort has to move rows")
            for ours, theirs in zip(formulas(result), formulas(witness)):
                self.assertEqual(ours, theirs)


if __name__ == "__main__":
    if office.missing():
        print(f"SKIPPED: {office.missing()}")
        sys.exit(program.SKIPPED)
    unittest.main(verbosity=2)
