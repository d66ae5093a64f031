#!/usr/bin/python3
"""Makes iris.xlsx from iris.csv: the sheet "Iris" with the species in column A and the four measures beside it."""

import csv
import datetime
import pathlib

import openpyxl
from openpyxl.styles import Font

folder = pathlib.Path(__file__).parent
with open(folder / "iris.csv", newline="", encoding="utf-8") as file:
    rows = list(csv.reader(file))

header, samples = rows[0], rows[1:]
species = header.index("species")
measures = [i for i in range(len(header)) if i != species]

book = openpyxl.Workbook()
book.properties.created = book.properties.modified = datetime.datetime(2020, 1, 1)
sheet = book.active
sheet.title = "Iris"
sheet.append([header[species].capitalize()] + [header[i].replace("_", " ").capitalize() for i in measures])
for cell in sheet[1]:
    cell.font = Font(name="Calibri", size=11, bold=True)
for sample in samples:
    sheet.append([sample[species]] + [float(sample[i]) for i in measures])
for column, width in zip("ABCDE", (12, 14, 14, 14, 14)):
    sheet.column_dimensions[column].width = width
book.save(folder / "iris.xlsx")
