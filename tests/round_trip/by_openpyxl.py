"""Books made by the usual Python library."""

import datetime

import openpyxl
from openpyxl.chart import BarChart, LineChart, PieChart, Reference
from openpyxl.comments import Comment
from openpyxl.formatting.rule import CellIsRule, ColorScaleRule, DataBarRule, FormulaRule, IconSetRule
from openpyxl.styles import Alignment, Border, Font, GradientFill, NamedStyle, PatternFill, Protection, Side
from openpyxl.workbook.defined_name import DefinedName
from openpyxl.worksheet.datavalidation import DataValidation
from openpyxl.worksheet.table import Table, TableStyleInfo

from recipe import FIRST_ROW, HEADER, ROWS, Recipe


def book_with_table():
    book = openpyxl.Workbook()
    sheet = book.active
    sheet.title = "Data"
    for row, values in enumerate((HEADER, *ROWS), FIRST_ROW - 1):
        for column, value in enumerate(values, 1):
            sheet.cell(row, column, value)
    return book, sheet


def plain(path):
    """The library's own defaults, and values of every kind."""
    book, sheet = book_with_table()
    for row, value in enumerate((True, datetime.date(2024, 2, 29), datetime.time(13, 30), "=SUM(B5:B16)", "#N/A", "  blanks "), 40):
        sheet.cell(row, 13, value)
    book.save(path)


def formats(path):
    """Fonts, fills, borders, alignment, protection, named styles, and formats of the sorted cells themselves."""
    book, sheet = book_with_table()
    thin = Side(style="thin", color="FF0000")
    for row in range(FIRST_ROW, FIRST_ROW + len(ROWS)):
        sheet.cell(row, 1).font = Font(name="Courier New", size=8 + row % 5, italic=bool(row % 2))
        sheet.cell(row, 2).number_format = "0.000"
        sheet.cell(row, 3).border = Border(left=thin, bottom=Side(style="double"))
        sheet.cell(row, 4).alignment = Alignment(horizontal="right", indent=row % 3)
    sheet["M40"].fill = GradientFill(stop=("FFFFFF", "00FF00"))
    sheet["M41"].fill = PatternFill("lightGrid", fgColor="0000FF")
    sheet["M42"].protection = Protection(locked=False)
    book.add_named_style(NamedStyle(name="Loud", font=Font(bold=True, size=20)))
    sheet["M43"].style = "Loud"
    sheet["M43"] = "loud"
    sheet.row_dimensions[43].height = 40
    sheet.column_dimensions["C"].width = 30
    sheet.column_dimensions["M"].hidden = True
    book.save(path)


def rules(path):
    """Conditional formats, choices, notes, links, merged cells, frozen panes, page setup, names and a filter that is on."""
    book, sheet = book_with_table()
    sheet.conditional_formatting.add("B5:B16", ColorScaleRule(start_type="min", start_color="FFFFFF", end_type="max", end_color="FF0000"))  # fmt: skip
    sheet.conditional_formatting.add("C5:C16", DataBarRule("min", None, "max", None, "638EC6"))
    sheet.conditional_formatting.add("D5:D16", IconSetRule("3Arrows", "percent", [0, 33, 67]))
    sheet.conditional_formatting.add("B5:D16", CellIsRule(operator="greaterThan", formula=["300"], fill=PatternFill(bgColor="FFC7CE")))  # fmt: skip
    sheet.conditional_formatting.add("A5:D16", FormulaRule(formula=["$B5>9"], font=Font(bold=True)))
    choices = DataValidation(type="list", formula1='"yes,no"', allow_blank=True, showDropDown=False)
    choices.add("M40:M50")
    sheet.add_data_validation(choices)
    sheet["B5"].comment = Comment("a note", "Ann", width=300, height=80)
    sheet["M40"].comment = Comment("another", "Ben")
    sheet["M41"].hyperlink = "https://example.org/"
    sheet["M42"].hyperlink = "#Data!A1"
    sheet.merge_cells("A1:D2")
    sheet["A1"] = "Merged"
    sheet.freeze_panes = "B5"
    sheet.auto_filter.ref = "A4:D16"
    sheet.print_title_rows = "4:4"
    sheet.print_area = "A1:H40"
    sheet.page_setup.orientation = "landscape"
    sheet.oddHeader.center.text = "&A"
    sheet.sheet_properties.tabColor = "1072BA"
    names = getattr(book.defined_names, "append", None) or (lambda n: book.defined_names.add(n))
    names(DefinedName("Measures", attr_text="Data!$B$5:$D$16"))
    book.save(path)


def charts(path):
    """Charts with a text, with a reference and with none for a title; the last one goes, and so does one of ours."""
    book, sheet = book_with_table()
    for place, kind, title in (("M40", BarChart, "Own bars"), ("M60", LineChart, None), ("M80", PieChart, "Own pie"), ("V40", BarChart, "Clusters profiles")):  # fmt: skip
        chart = kind()
        chart.title = title
        chart.add_data(Reference(sheet, min_col=2, max_col=3, min_row=4, max_row=16), titles_from_data=True)
        sheet.add_chart(chart, place)
    page = book.create_chartsheet("Page")
    line = LineChart()
    line.add_data(Reference(sheet, min_col=2, min_row=5, max_row=16))
    page.add_chart(line)
    book.save(path)


def sheets(path):
    """Hidden and protected sheets, and a table on another sheet; the data stand on a sheet with an odd name."""
    book, sheet = book_with_table()
    sheet.title = "D'ata & Ünïcode 表"
    for name, state in (("Hidden", "hidden"), ("Very", "veryHidden"), ("Locked", "visible")):
        other = book.create_sheet(name)
        other.sheet_state = state
        other.append(["Item", "Price"])
        other.append(["bolt", 3])
    other.protection.sheet = True
    other.protection.password = "secret"
    table = Table(displayName="Prices", ref="A1:B2")
    table.tableStyleInfo = TableStyleInfo(name="TableStyleMedium9", showRowStripes=True)
    other.add_table(table)
    book.security.lockStructure = True
    book.properties.title = "Kept"
    book.save(path)


BOOKS = (
    Recipe("plain.xlsx", plain),
    Recipe("formats.xlsx", formats),
    Recipe("rules.xlsx", rules),
    Recipe("rules_without_filter.xlsx", rules, filter_option="--no-autofilter"),
    Recipe("charts.xlsx", charts, gone=("xl/charts/chart2.xml", "xl/charts/chart4.xml")),
    Recipe("sheets.xlsx", sheets, sheet="D'ata & Ünïcode 表"),
)
