"""Books made by the library that writes every feature of the big spreadsheet."""

import datetime
import io
import os
import tempfile

import xlsxwriter

from package_writer import png
from recipe import FIRST_ROW, HEADER, ROWS, Recipe


def book_with_table(path, options=None, formats=False):
    book = xlsxwriter.Workbook(path, options or {})
    sheet = book.add_worksheet("Data")
    style = book.add_format({"num_format": "0.00", "bg_color": "#DDEBF7"}) if formats else None
    for row, values in enumerate((HEADER, *ROWS), FIRST_ROW - 2):
        for column, value in enumerate(values):
            sheet.write(row, column, value, style if row >= FIRST_ROW - 1 else None)
    return book, sheet


def pictures(path):
    """Sparklines, a text box, pictures on the sheet and in the header, a background, and buttons with macros."""
    with tempfile.TemporaryDirectory() as folder:
        project = os.path.join(folder, "vbaProject.bin")
        with open(project, "wb") as file:
            file.write(bytes(range(256)) * 5)
        image = os.path.join(folder, "image.png")
        with open(image, "wb") as file:
            file.write(png(20, 20))
        book, sheet = book_with_table(path)
        for row in range(FIRST_ROW - 1, FIRST_ROW + 3):
            sheet.add_sparkline(row, 13, {"range": f"Data!B{row + 1}:D{row + 1}", "markers": True})
        sheet.insert_textbox("M40", "a text & more", {"fill": {"color": "#FFFF00"}})
        sheet.insert_image("Q40", image, {"url": "https://example.org/", "description": "red"})
        sheet.insert_image("Q50", "memory.png", {"image_data": io.BytesIO(png(8, 8, (0, 0, 255))), "object_position": 3})
        sheet.set_header("&C&G", {"image_center": image})
        sheet.insert_button("M50", {"macro": "Run", "caption": "Run"})
        sheet.write_comment("B5", "a note", {"visible": True})
        book.add_vba_project(project)
        book.set_vba_name("Workbook")
        sheet.set_vba_name("First")
        book.close()


def charts(path):
    """Charts with titles from a text, from a cell and without one, combined charts, and a sheet of a chart."""
    book, sheet = book_with_table(path)
    for place, kind, title in (
        ("M40", "column", {"name": "Own columns", "name_font": {"italic": True}}),
        ("M60", "line", {"name": "=Data!$B$4"}),
        ("M80", "scatter", {"none": True}),
        ("V40", "area", {"name": "Clusters weights"}),
    ):
        chart = book.add_chart({"type": kind})
        for column in (1, 2):
            chart.add_series({"values": ["Data", 4, column, 15, column], "categories": ["Data", 4, 0, 15, 0], "name": ["Data", 3, column]})  # fmt: skip
        chart.set_title(title)
        sheet.insert_chart(place, chart)
    first, second = book.add_chart({"type": "column"}), book.add_chart({"type": "line"})
    first.add_series({"values": "=Data!$B$5:$B$16"})
    second.add_series({"values": "=Data!$D$5:$D$16", "y2_axis": True})
    first.combine(second)
    first.set_title({"name": "Combined"})
    sheet.insert_chart("V60", first)
    page = book.add_chartsheet("Page")
    own = book.add_chart({"type": "pie"})
    own.add_series({"values": "=Data!$B$5:$B$7"})
    page.set_chart(own)
    book.close()


def rules(path):
    """Conditional formats of the newer kinds, rich texts, arrays, outlines, choices, and a password on another sheet."""
    book, sheet = book_with_table(path, formats=True)
    sheet.conditional_format("B5:B16", {"type": "data_bar", "data_bar_2010": True, "bar_negative_color_same": True})
    sheet.conditional_format("C5:C16", {"type": "icon_set", "icon_style": "3_traffic_lights", "reverse_icons": True})
    sheet.conditional_format("D5:D16", {"type": "3_color_scale"})
    sheet.conditional_format("A5:D16", {"type": "formula", "criteria": "=$B5>9", "format": book.add_format({"bold": True})})
    sheet.write_rich_string("M40", "one ", book.add_format({"bold": True}), "bold", " word")
    sheet.write_array_formula("M41:M42", "{=B5:B6*2}")
    sheet.write_dynamic_array_formula("N41", "=UNIQUE(B5:B16)")
    sheet.write_formula("O41", "=B5&\" text\"", None, "1 text")
    sheet.write_url("M44", "external:other.xlsx#Sheet1!A1")
    sheet.write_url("M45", "internal:'Other sheet'!A1", string="inside")
    sheet.write_datetime("M46", datetime.datetime(2024, 2, 29, 12), book.add_format({"num_format": "yyyy-mm-dd hh:mm"}))
    sheet.data_validation("M47", {"validate": "list", "source": ["a", "b"], "input_title": "Pick", "input_message": "one"})
    sheet.set_row(50, 30, None, {"level": 1, "hidden": True})
    sheet.set_column("X:Z", 4, None, {"level": 2, "collapsed": True})
    sheet.ignore_errors({"number_stored_as_text": "M40:M50"})
    sheet.freeze_panes(4, 1)
    sheet.merge_range("A1:D1", "Merged", book.add_format({"align": "center", "border": 2}))
    sheet.set_landscape()
    sheet.repeat_rows(3)
    other = book.add_worksheet("Other sheet")
    other.protect("secret", {"sort": True})
    other.add_table("A1:C4", {"total_row": True, "columns": [{"header": "A", "total_string": "Sum"}, {"header": "B", "total_function": "sum"}, {"header": "C", "formula": "=1+1"}]})  # fmt: skip
    book.define_name("Measures", "=Data!$B$5:$D$16")
    book.define_name("Data!Local", "=Data!$B$5")
    book.set_custom_property("Checked", True)
    book.close()


def in_one_pass(path):
    """Rows written one by one with their texts in the cells, days counted from 1904, packed for large files."""
    book, sheet = book_with_table(path, {"constant_memory": True, "default_date_format": "dd/mm/yy", "date_1904": True, "use_zip64": True})  # fmt: skip
    sheet.write(40, 12, datetime.date(2024, 2, 29), book.add_format({"num_format": "dd/mm/yy"}))
    book.close()


def filtered(path):
    """A filter that is on and hides rows."""
    book, sheet = book_with_table(path)
    sheet.autofilter("A4:D16")
    sheet.filter_column("B", "x < 9.3")
    for row in (12, 15):
        sheet.set_row(row, None, None, {"hidden": True})
    book.close()


BOOKS = (
    Recipe("pictures.xlsm", pictures),
    Recipe("charts.xlsx", charts, gone=("xl/charts/chart3.xml", "xl/charts/chart4.xml")),
    Recipe("rules.xlsx", rules),
    Recipe("in_one_pass.xlsx", in_one_pass),
    Recipe("filtered.xlsx", filtered, sorts=False),
    Recipe("filtered_without_filter.xlsx", filtered, filter_option="--no-autofilter", sorts=False),
)
