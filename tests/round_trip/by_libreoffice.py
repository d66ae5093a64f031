#!/usr/bin/python3
"""Books saved by LibreOffice. They are kept in corpus/, since making them takes longer than all the tests on them.

usage: by_libreoffice.py    makes the books of corpus/ anew
"""

import functools
import os
import shutil

from recipe import FIRST_ROW, HEADER, ROWS, Recipe

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "corpus")


def fill(document):
    sheet = document.Sheets.getByIndex(0)
    sheet.Name = "Data"
    last = FIRST_ROW - 1 + len(ROWS)
    sheet.getCellRangeByName(f"A{FIRST_ROW - 1}:D{last}").setDataArray((HEADER, *ROWS))
    return sheet


def rules(document):
    """Conditional formats, choices, notes, merged cells, a frozen pane, formats, names and formulas."""
    import uno
    from com.sun.star.sheet.ConditionEntryType import CONDITION, DATABAR  # noqa: F401
    from com.sun.star.table import CellAddress

    sheet = fill(document)
    title = sheet.getCellRangeByName("A1:D1")
    title.merge(True)
    cell = sheet.getCellRangeByName("A1")
    cell.String, cell.CharWeight, cell.CellBackColor = "Three measures", 150.0, 0xDDEBF7
    formats = sheet.getCellRangeByName("B5:B16").ConditionalFormat
    from office import value

    formats.addNew((value("Operator", uno.Enum("com.sun.star.sheet.ConditionOperator", "GREATER")), value("Formula1", "9"), value("StyleName", "Good")))  # fmt: skip
    sheet.getCellRangeByName("B5:B16").ConditionalFormat = formats
    validation = sheet.getCellRangeByName("M40:M44").Validation
    validation.Type = uno.Enum("com.sun.star.sheet.ValidationType", "LIST")
    validation.setFormula1('"yes";"no"')
    sheet.getCellRangeByName("M40:M44").Validation = validation
    for place, text in (("B5", "a note"), ("M40", "another")):
        address = sheet.getCellRangeByName(place).CellAddress
        sheet.Annotations.insertNew(address, text)
    sheet.getCellRangeByName("M41").Formula = "=SUM(B5:B16)"
    sheet.getCellRangeByName("M42").Formula = '=A5&" <"'
    sheet.getCellRangeByName("M43").Formula = "=1/0"
    sheet.getCellRangeByName("N41:N42").setArrayFormula("=B5:B6*2")
    locale = uno.createUnoStruct("com.sun.star.lang.Locale", "en", "US", "")
    key = document.NumberFormats.addNew("0.000", locale)
    sheet.getCellRangeByName("D5:D16").NumberFormat = key
    document.NamedRanges.addNewByName("Measures", "$Data.$B$5:$D$16", CellAddress(0, 0, 0), 0)
    sheet.Columns.getByName("N").IsVisible = False
    sheet.Rows.getByIndex(44).Height = 1500
    other = document.Sheets
    other.insertNewByName("Hidden", 1)
    document.Sheets.getByName("Hidden").IsVisible = False
    other.insertNewByName("Locked", 2)
    document.Sheets.getByName("Locked").protect("secret")


def charts(document):
    """A chart with a title, one without, and a shape with a text."""
    import uno

    sheet = fill(document)
    for name, top, title in (("Own", 20000, "Own chart"), ("Bare", 30000, None)):
        place = uno.createUnoStruct("com.sun.star.awt.Rectangle", 2000, top, 9000, 6000)
        area = sheet.getCellRangeByName("B4:D16").RangeAddress
        sheet.Charts.addNewByName(name, place, (area,), True, False)
        chart = sheet.Charts.getByName(name).EmbeddedObject
        chart.HasMainTitle = title is not None
        if title:
            chart.Title.String = title
    shape = document.createInstance("com.sun.star.drawing.EllipseShape")
    shape.Position = uno.createUnoStruct("com.sun.star.awt.Point", 14000, 22000)
    shape.Size = uno.createUnoStruct("com.sun.star.awt.Size", 3000, 2000)
    sheet.DrawPage.add(shape)
    shape.String = "a & b"


def filtered(document):
    """A filter that is on."""
    sheet = fill(document)
    ranges = document.getPropertyValue("UnnamedDatabaseRanges")
    ranges.setByTable(sheet.getCellRangeByName("A4:D16").RangeAddress)
    ranges.getByTable(0).AutoFilter = True


def table(document):
    """A range of a database, which LibreOffice saves as a table."""
    sheet = fill(document)
    document.DatabaseRanges.addNewByName("Samples", sheet.getCellRangeByName("A4:D16").RangeAddress)
    document.DatabaseRanges.getByName("Samples").AutoFilter = True


def copy(name, path):
    shutil.copyfile(os.path.join(FOLDER, name), path)


MAKERS = {"libreoffice_rules.xlsx": rules, "libreoffice_charts.xlsx": charts, "libreoffice_filtered.xlsx": filtered, "libreoffice_table.xlsx": table}
BOOKS = tuple(
    Recipe(name, functools.partial(copy, source or name), has_plain_columns=False, **more)
    for name, source, more in (
        ("libreoffice_rules.xlsx", None, {}),
        ("libreoffice_charts.xlsx", None, {"gone": ("xl/charts/chart2.xml",)}),
        ("libreoffice_filtered.xlsx", None, {}),
        ("libreoffice_table.xlsx", None, {}),
        ("libreoffice_unfiltered.xlsx", "libreoffice_filtered.xlsx", {"filter_option": "--no-autofilter"}),
    )
)


def main():
    from office import Office

    os.makedirs(FOLDER, exist_ok=True)
    with Office() as office:
        for name, make in MAKERS.items():
            document = office.new()
            make(document)
            office.save(document, os.path.join(FOLDER, name))
            document.close(True)


if __name__ == "__main__":
    main()
