#!/usr/bin/python3
"""How long a clustering takes inside LibreOffice Calc, beside the command line program on the same numbers.

    calc_bench.py OXT MERVANE FOLDER [ROWS COLUMNS CLUSTERS]

Installs the add-in into a private profile in FOLDER and runs it there without a window, by an ordinary user. All outputs are
on, 100 epochs. Prints the seconds of both and their ratio; leaves with 1 where the ratio is above its goal of 3.
"""

import pathlib
import random
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests/calc_extension"))
from office import Office  # noqa: E402

GOAL = 3.0
ALL_OUTPUTS = ("AutoFilter", "DrawCharts", "Averages", "WeightedAverages", "Minimums", "Maximums", "ClusterWeights", "SetColors",
               "SortClusters")


def numbers(rows, columns):
    random.seed(1)
    for _ in range(rows):
        centre = random.randrange(5) * 3
        yield tuple(round(centre + random.gauss(0, 1), 4) for _ in range(columns))


def letters(column):
    text = ""
    while column > 0:
        column, rest = divmod(column - 1, 26)
        text = chr(65 + rest) + text
    return text


def main():
    oxt, mervane, folder = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3])
    rows, columns, clusters = (int(one) for one in (sys.argv[4:7] or ("65535", "16", "5")))
    subprocess.run(["unopkg", "add", "-f", "--suppress-license", oxt, f"-env:UserInstallation={(folder / 'profile').as_uri()}"],
                   check=True, capture_output=True)
    office = Office(folder, "--headless")
    try:
        document = office.load("private:factory/scalc")
        sheet = document.Sheets.getByIndex(0)
        sheet.getCellRangeByPosition(0, 0, columns - 1, rows - 1).setDataArray(tuple(numbers(rows, columns)))
        inputs = f"{sheet.Name}!A1:{letters(columns)}{rows}"
        outputs = f"{sheet.Name}!{letters(columns + 2)}1"
        from office import properties
        book = folder / "numbers.xlsx"
        document.storeToURL(book.as_uri(), properties(FilterName="Calc MS Excel 2007 XML"))

        begin = time.monotonic()
        answer = office.dispatch(document, Inputs=inputs, Outputs=outputs, Clusters=clusters, Epochs=100,
                                 SplitOne=True, **{name: True for name in ALL_OUTPUTS})
        inside = time.monotonic() - begin
        if answer.State != 1:
            raise SystemExit(f"the clustering in Calc failed: {answer.Result}")
    finally:
        office.kill()

    begin = time.monotonic()
    subprocess.run([mervane, "cluster", str(book), "--inputs", inputs, "--outputs", outputs, "--clusters", str(clusters),
                    "--epochs", "100", "-o", str(folder / "clustered.xlsx")], check=True, capture_output=True)
    alone = time.monotonic() - begin
    ratio = inside / alone
    print(f"{rows} x {columns}, {clusters} clusters: {inside:.2f} s in Calc, {alone:.2f} s by the program, "
          f"ratio {ratio:.2f} (goal: at most {GOAL})")
    return 0 if ratio <= GOAL else 1


if __name__ == "__main__":
    sys.exit(main())
