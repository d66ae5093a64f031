#!/usr/bin/python3
"""Reads a clustered iris workbook with another library than the program's own and tells what is wrong with it."""

import collections
import sys

import openpyxl

original, result = (openpyxl.load_workbook(path)["Iris"] for path in sys.argv[1:3])
rows = range(2, 152)


def samples(sheet):
    return collections.Counter(tuple(sheet.cell(row, column).value for column in range(1, 6)) for row in rows)


def title(chart):
    return "".join(run.t for paragraph in chart.title.tx.rich.p for run in paragraph.r)


numbers = [result.cell(row, 7).value for row in rows]
blocks = ("average", "weighted average (%)", "minimum", "maximum", "weight (%)")
labels = [f"Cluster {cluster} {block}" for block in blocks for cluster in (1, 2, 3)]
checks = {
    "G1 is the heading": result["G1"].value == "Clusters" and result["G1"].font.b,
    "the numbers ascend from 1 to 3": numbers == sorted(numbers) and set(numbers) == {1, 2, 3},
    "each species stands beside its own measures": samples(original) == samples(result),
    "the header stays": [cell.value for cell in original[1]] == [cell.value for cell in result[1]][:5],
    "column F holds the labels": [result.cell(row, 6).value for row in range(152, 167)] == labels,
    "the rows behind the blocks are empty": result.max_row == 166,
    "rows have the colour of their cluster": all(
        result.cell(row, 2).fill.fgColor == result.cell(row, 7).fill.fgColor for row in rows
    ),
    "there are the two charts": sorted(map(title, result._charts)) == ["Clusters profiles", "Clusters weights"],
    "the filter is on": result.auto_filter.ref is not None,
}
for cluster in (1, 2, 3):
    members = [row for row in rows if result.cell(row, 7).value == cluster]
    for column in range(2, 6):
        values = [result.cell(row, column).value for row in members]
        mean = result.cell(151 + cluster, column).value
        checks[f"mean {cluster} {column}"] = abs(mean - sum(values) / len(values)) < 1e-6
        checks[f"least {cluster} {column}"] = abs(result.cell(157 + cluster, column).value - min(values)) < 1e-6
        checks[f"greatest {cluster} {column}"] = abs(result.cell(160 + cluster, column).value - max(values)) < 1e-6
    share = result.cell(163 + cluster, 5).value
    checks[f"weight {cluster}"] = abs(share - len(members) / 150) < 1e-9

wrong = [check for check, holds in checks.items() if not holds]
print("\n".join(wrong))
sys.exit(bool(wrong))
