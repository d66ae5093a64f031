#!/usr/bin/python3
"""The job of workbook_bench by the usual Python library, and the files for both.

  workbook_bench.py make ROWS COLUMNS BOOK.xlsx    writes a book of numbers around five centres
  workbook_bench.py run BOOK.xlsx CLUSTERS OUT     reads it, deals out clusters, writes listing, fills, blocks, charts
"""

import random
import sys
import time


def make(rows, columns, path):
    import xlsxwriter

    random.seed(1)
    book = xlsxwriter.Workbook(path, {"constant_memory": True})
    sheet = book.add_worksheet("Data")
    for column in range(columns):
        sheet.write_string(0, column, f"x{column + 1}")
    for row in range(1, rows + 1):
        centre = random.randrange(5) * 3
        for column in range(columns):
            sheet.write_number(row, column, round(centre + random.gauss(0, 1), 4))
    book.close()


def run(path, clusters, out):
    import openpyxl
    from openpyxl.chart import BarChart, LineChart, Reference
    from openpyxl.styles import PatternFill

    begin = time.perf_counter()
    book = openpyxl.load_workbook(path)
    sheet = book["Data"]
    rows = [[cell.value for cell in row] for row in sheet.iter_rows(min_row=2)]
    read = time.perf_counter()
    columns = len(rows[0])
    labelled = sorted(((i % clusters + 1, row) for i, row in enumerate(rows, 1)), key=lambda one: one[0])
    fills = [PatternFill("solid", fgColor=f"FF{40 + 13 * k:02X}C0{250 - 13 * k:02X}") for k in range(clusters)]
    for at, (cluster, row) in enumerate(labelled, 2):
        for column, value in enumerate(row, 1):
            cell = sheet.cell(at, column, value)
            cell.fill = fills[cluster - 1]
        sheet.cell(at, columns + 2, cluster).fill = fills[cluster - 1]
    first = len(rows) + 2
    for block, function in enumerate((lambda v: sum(v) / len(v), lambda v: sum(v) / len(v), min, max)):
        for k in range(clusters):
            members = [row for cluster, row in labelled if cluster == k + 1]
            for column in range(columns):
                sheet.cell(first + block * clusters + k, column + 1, function([row[column] for row in members]))
    for chart, anchor in ((LineChart(), "T1"), (BarChart(), "T20")):
        chart.add_data(Reference(sheet, 1, first, columns, first + clusters - 1))
        sheet.add_chart(chart, anchor)
    work = time.perf_counter()
    book.save(out)
    end = time.perf_counter()
    print(f"read {read - begin:.2f} s, work {work - read:.2f} s, write {end - work:.2f} s, all {end - begin:.2f} s")


if sys.argv[1] == "make":
    make(int(sys.argv[2]), int(sys.argv[3]), sys.argv[4])
else:
    run(sys.argv[2], int(sys.argv[3]), sys.argv[4])
