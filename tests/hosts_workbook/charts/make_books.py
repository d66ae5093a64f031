#!/usr/bin/env python3
"""Makes the workbooks of the chart tests with several producers.

    python3 make_books.py        (needs python3-openpyxl, python3-xlsxwriter and libreoffice-calc)

The books are kept beside this script, so that the tests need none of the producers.
"""
import pathlib
import struct
import subprocess
import tempfile
import zlib

import openpyxl
import openpyxl.chart
import openpyxl.chart.series
import xlsxwriter

BOOKS = pathlib.Path(__file__).parent / "books"

HEADERS = ["sepal length", "sepal width", "petal length", "petal width"]
PROFILES = [
    [-0.1433, 0.1181, -0.6105, -0.7955],
    [0.0158, -0.0958, 0.1689, 0.1951],
    [0.1723, 0.0059, 0.5281, 0.7297],
    None,
]
WEIGHTS = [0.3333, 0.4133, 0.2533, 0.0]


def picture(path):
    """A red square of 8 by 8 points."""
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))
    rows = b"".join(b"\0" + b"\xff\0\0" * 8 for _ in range(8))
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 8, 8, 8, 2, 0, 0, 0)) +
                     chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def plain():
    """The cells that the charts of a run are made from: headers in B1:E1, profiles in B7:E10, weights in E11:F14."""
    book = xlsxwriter.Workbook(str(BOOKS / "plain.xlsx"))
    sheet = book.add_worksheet("My Data")
    percent = book.add_format({"num_format": "0.00%"})
    sheet.write_row(0, 1, HEADERS)
    for i in range(5):
        sheet.write_row(1 + i, 1, [5.1 + i / 10, 3.5 - i / 10, 1.4 + i, 0.2 + i / 5])
    for k, profile in enumerate(PROFILES):
        for j in range(4):
            if profile is None:
                sheet.write_formula(6 + k, 1 + j, "=NA()", percent, "#N/A")
            else:
                sheet.write_number(6 + k, 1 + j, profile[j], percent)
        sheet.write_string(6 + k, 5, f"Cluster {k + 1} weighted average (%)")
        sheet.write_number(10 + k, 4, WEIGHTS[k], percent)
        sheet.write_string(10 + k, 5, f"Cluster {k + 1} weight (%)")
    book.add_worksheet("Other")
    book.close()


def foreign_xlsxwriter(folder):
    image = folder / "red.png"
    picture(image)
    book = xlsxwriter.Workbook(str(BOOKS / "xlsxwriter.xlsx"))
    sheet = book.add_worksheet("Data")
    sheet.write_column("A1", ["Heading cell", 1, 2, 3, 4])
    sheet.write_column("B1", ["Second", 4, 3, 2, 1])

    def chart(kind, title, names, cell):
        one = book.add_chart({"type": kind})
        for i, name in enumerate(names):
            column = "AB"[i]
            series = {"values": f"=Data!${column}$2:${column}$5"}
            if name:
                series["name"] = name
            one.add_series(series)
        if title is not None:
            one.set_title(title)
        sheet.insert_chart(cell, one, {"x_offset": 5, "y_offset": 3})
    chart("line", {"name": "Quarterly profit"}, ["=Data!$A$1", "=Data!$B$1"], "D2")
    chart("column", {"name": "=Data!$A$1"}, ["one", "two"], "D18")
    chart("bar", None, ["one", "two"], "D34")          # several series: no title
    chart("pie", None, ["Only series"], "M2")           # one named series: its name is the title
    chart("column", {"none": True}, ["Only series"], "M18")
    chart("column", {"name": "Clusters weights"}, ["one"], "M34")
    sheet.insert_image("A10", str(image))
    sheet.insert_textbox("A14", "A text box")
    book.close()


def foreign_openpyxl():
    book = openpyxl.Workbook()
    sheet = book.active
    sheet.title = "Data"
    for row in [("x", "y"), (1, 4), (2, 3), (3, 2)]:
        sheet.append(row)
    values = openpyxl.chart.Reference(sheet, min_col=1, max_col=2, min_row=1, max_row=4)
    titled = openpyxl.chart.BarChart()
    titled.title = "First line"
    titled.add_data(values, titles_from_data=True)
    sheet.add_chart(titled, "D2")
    untitled = openpyxl.chart.LineChart()
    untitled.add_data(values, titles_from_data=True)
    sheet.add_chart(untitled, "D20")
    profiles = openpyxl.chart.LineChart()
    profiles.title = "Clusters profiles"
    profiles.add_data(values, titles_from_data=True)
    sheet.add_chart(profiles, "M2")
    book.save(BOOKS / "openpyxl.xlsx")


def foreign_libreoffice(folder):
    subprocess.run(["soffice", f"-env:UserInstallation=file://{folder}/profile", "--headless", "--convert-to", "xlsx",
                    "--outdir", str(folder), str(BOOKS / "xlsxwriter.xlsx")], check=True, stdout=subprocess.DEVNULL)
    (BOOKS / "libreoffice.xlsx").write_bytes((folder / "xlsxwriter.xlsx").read_bytes())


if __name__ == "__main__":
    BOOKS.mkdir(exist_ok=True)
    with tempfile.TemporaryDirectory() as name:
        plain()
        foreign_xlsxwriter(pathlib.Path(name))
        foreign_openpyxl()
        foreign_libreoffice(pathlib.Path(name))
