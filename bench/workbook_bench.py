#!/usr/bin/python3
"""The job of `mervane cluster` on a workbook as a script by the usual Python libraries, and the files for both.

  workbook_bench.py make ROWS COLUMNS BOOK.xlsx            writes a book of numbers around five centres
  workbook_bench.py run BOOK.xlsx CLUSTERS EPOCHS OUT.xlsx  reads it, clusters by k-means, sorts the rows, writes
                                                           listing, fills, filter, five blocks and two charts
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


def k_means(rows, clusters, epochs):
    """Labels from 0 and the centres; ends as soon as no row changes its cluster."""
    import numpy

    centres = rows[numpy.linspace(0, len(rows) - 1, clusters).astype(int)].copy()
    labels = None
    for _ in range(epochs):
        distances = (centres * centres).sum(axis=1) - 2.0 * rows @ centres.T
        nearest = distances.argmin(axis=1)
        if labels is not None and (nearest == labels).all():
            break
        labels = nearest
        for k in range(clusters):
            members = rows[labels == k]
            if len(members):
                centres[k] = members.mean(axis=0)
    return labels


def run(path, clusters, epochs, out):
    import numpy
    import openpyxl
    from openpyxl.chart import BarChart, LineChart, Reference
    from openpyxl.styles import Font, PatternFill

    times = [time.process_time()]
    book = openpyxl.load_workbook(path)
    sheet = book["Data"]
    rows = numpy.array([[cell.value for cell in row] for row in sheet.iter_rows(min_row=2)], dtype=float)
    times.append(time.process_time())

    labels = k_means(rows, clusters, epochs)
    order = labels.argsort(kind="stable")
    rows, labels = rows[order], labels[order]
    times.append(time.process_time())

    count, columns = rows.shape
    bold = Font(bold=True)
    fills = [PatternFill("solid", fgColor=f"FF{40 + 13 * k:02X}C0{250 - 13 * k:02X}") for k in range(clusters)]
    sheet.cell(1, columns + 2, "Clusters").font = bold
    for at, (cluster, row) in enumerate(zip(labels.tolist(), rows.tolist()), 2):
        fill = fills[cluster]
        for column, value in enumerate(row, 1):
            cell = sheet.cell(at, column, value)
            cell.fill = fill
        cell = sheet.cell(at, columns + 2, cluster + 1)
        cell.fill = fill
    sheet.auto_filter.ref = f"A1:{sheet.cell(count + 1, columns + 2).coordinate}"

    members = [rows[labels == k] for k in range(clusters)]
    means = rows.mean(axis=0)
    blocks = (
        ("average", lambda own: own.mean(axis=0)),
        ("weighted average (%)", lambda own: (own.mean(axis=0) - means) / means),
        ("minimum", lambda own: own.min(axis=0)),
        ("maximum", lambda own: own.max(axis=0)),
        ("weight (%)", lambda own: numpy.array([len(own) / count])),
    )
    first = count + 2
    for block, (name, function) in enumerate(blocks):
        for k in range(clusters):
            at = first + block * clusters + k
            values = function(members[k]).tolist() if len(members[k]) else ["=NA()"] * columns
            for column, value in enumerate(values, 1):
                sheet.cell(at, column, value).fill = fills[k]
            label = sheet.cell(at, columns + 1, f"Cluster {k + 1} {name}")
            label.font = bold
            label.fill = fills[k]
    profiles, weights = LineChart(), BarChart()
    begin = first + clusters
    profiles.add_data(Reference(sheet, 1, begin, columns, begin + clusters - 1), from_rows=True)
    begin = first + 4 * clusters
    weights.add_data(Reference(sheet, 1, begin, 1, begin + clusters - 1))
    for chart, title, anchor in ((profiles, "Clusters profiles", "T12"), (weights, "Clusters weights", "T1")):
        chart.title = title
        sheet.add_chart(chart, anchor)
    times.append(time.process_time())
    book.save(out)
    times.append(time.process_time())
    for name, begin, end in zip(("read", "k-means", "listing, blocks and charts", "write"), times, times[1:]):
        print(f"{name}\t{end - begin:.4f}")


if __name__ == "__main__":
    if len(sys.argv) == 5 and sys.argv[1] == "make":
        make(int(sys.argv[2]), int(sys.argv[3]), sys.argv[4])
    elif len(sys.argv) == 6 and sys.argv[1] == "run":
        run(sys.argv[2], int(sys.argv[3]), int(sys.argv[4]), sys.argv[5])
    else:
        sys.exit(__doc__)
