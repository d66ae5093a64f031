#!/usr/bin/python3
"""All figures of docs/speed.md about workbooks, as ratios in one run.

  workbook_report.py BUILD [DIRECTORY]

BUILD is the folder of a build with the preset `bench`; books are made in DIRECTORY, or in one that is removed again.
Times are processor seconds of user and system together, the least of several runs, so that a busy machine counts as
little as possible. The status is 1 where a goal is missed.
"""

import os
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
SCRIPT = os.path.join(HERE, "workbook_bench.py")
COMMAND_RUNS = 5

missed = []


def verdict(name, figure, goal):
    if figure <= goal:
        return "met"
    missed.append(name)
    return "MISSED"


def measured(arguments):
    """Processor seconds, peak MiB and output of one process."""
    # One thread each: processor time of idle helper threads would count against the script.
    environment = dict(os.environ, OPENBLAS_NUM_THREADS="1", OMP_NUM_THREADS="1")
    with tempfile.TemporaryFile("w+") as output:
        process = subprocess.Popen(arguments, stdout=output, env=environment)
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
        if process.returncode != 0:
            sys.exit(f"{' '.join(arguments)} ended with {process.returncode}")
        output.seek(0)
        return usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024.0, output.read()


def figures(text):
    return {name: float(value) for name, value in (line.split("\t") for line in text.splitlines())}


def made(directory, rows, columns):
    path = os.path.join(directory, f"{rows}x{columns}.xlsx")
    if not os.path.exists(path):
        subprocess.run(["/usr/bin/python3", SCRIPT, "make", str(rows), str(columns), path], check=True)
    return path


def letters(column):
    return chr(ord("A") + column - 1)


class Programs:
    def __init__(self, build, directory):
        self.mervane = os.path.join(build, "mervane")
        self.bench = os.path.join(build, "bench", "mervane_workbook_bench")
        self.directory = directory
        self.out = os.path.join(directory, "out.xlsx")

    def command(self, book, rows, columns, clusters, epochs):
        arguments = [
            self.mervane, "cluster", book, "--inputs", f"Data!A2:{letters(columns)}{rows + 1}",
            "--outputs", f"Data!{letters(columns + 2)}2", "--clusters", str(clusters), "--epochs", str(epochs),
            "--one-column", "--autofilter", "--charts", "--averages", "--weighted-averages", "--minimums",
            "--maximums", "--weights", "--colors", "--sort", "-o", self.out,
        ]
        runs = [measured(arguments) for _ in range(COMMAND_RUNS)]
        return min(run[0] for run in runs), max(run[1] for run in runs)

    def script(self, book, clusters, epochs):
        seconds, memory, text = measured(
            ["/usr/bin/python3", SCRIPT, "run", book, str(clusters), str(epochs), self.out])
        return seconds, memory, figures(text)

    def steps(self, book, clusters, epochs):
        return figures(measured([self.bench, "steps", book, str(clusters), str(epochs), self.out])[2])

    def rows(self, book):
        return figures(measured([self.bench, "rows", book, self.out])[2])


def whole(programs, rows, columns, clusters, epochs):
    name = f"{rows}x{columns}, {clusters} clusters, {epochs} epochs"
    book = made(programs.directory, rows, columns)
    seconds, memory = programs.command(book, rows, columns, clusters, epochs)
    steps = programs.steps(book, clusters, epochs)
    script_seconds, script_memory, script_steps = programs.script(book, clusters, epochs)

    floors = {step: time for step, time in steps.items() if step.startswith("floor: ")}
    floor = sum(floors.values())
    floor_of = {
        "open and read": "floor: inflate and parse",
        "train": "floor: training kernel",
        "print and pack the file": "floor: print and deflate",
    }
    print(f"\n### {name}\n")
    print("| step | seconds | of its floor |")
    print("|---|---|---|")
    for step, time in steps.items():
        base = steps.get(floor_of.get(step, ""), 0.0)
        print(f"| {step} | {time:.3f} | {f'{time / base:.2f} ' if base else ''}|")
    print(f"| the whole command | {seconds:.3f} | {seconds / floor:.2f} of their sum |")
    for step, time in script_steps.items():
        print(f"| script: {step} | {time:.2f} | |")
    print(f"| the whole script | {script_seconds:.2f} | |")

    print("\n| goal | measured | at most | |")
    print("|---|---|---|---|")
    ratios = [("command / script", seconds / script_seconds, 0.1)]
    if rows >= 65534:
        ratios += [
            ("command / sum of the floors", seconds / floor, 3.0),
            ("reading / inflating and parsing", steps["open and read"] / floors["floor: inflate and parse"], 3.0),
            ("peak memory, MiB", memory, 200.0),
        ]
    for goal, figure, most in ratios:
        print(f"| {goal} | {figure:.3g} | {most:g} | {verdict(f'{name}: {goal}', figure, most)} |")
    print(f"\nPeak memory: {memory:.0f} MiB; the script: {script_memory:.0f} MiB.", flush=True)


def growth(title, columns, sizes, measure, steps):
    """Microseconds a row at each size; linear where the largest is at most a quarter above the least."""
    print(f"\n### Microseconds a row: {title}\n")
    print("| rows | " + " | ".join(steps) + " |")
    print("|---|" + "---|" * len(steps))
    by_step = {step: [] for step in steps}
    for rows in sizes:
        times = measure(rows, columns)
        for step in steps:
            by_step[step].append(1e6 * times[step] / rows)
        print(f"| {rows} | " + " | ".join(f"{by_step[step][-1]:.2f}" for step in steps) + " |", flush=True)
    spreads = {step: values[-1] / min(values) for step, values in by_step.items()}
    words = [f"{spread:.2f} {verdict(f'{title}: {step}', spread, 1.25)}" for step, spread in spreads.items()]
    print("| last / least, at most 1.25 | " + " | ".join(words) + " |", flush=True)


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    with tempfile.TemporaryDirectory() as temporary:
        directory = sys.argv[2] if len(sys.argv) == 3 else temporary
        programs = Programs(sys.argv[1], directory)
        whole(programs, 10000, 10, 10, 100)
        whole(programs, 65534, 16, 16, 100)
        growth("16 columns, 16 clusters, 100 epochs", 16, (16384, 32768, 65534),
               lambda rows, columns: programs.steps(made(directory, rows, columns), 16, 100),
               ("open and read", "look at each cell", "cells into an array", "train", "all outputs",
                "print and pack the file"))
        growth("5 columns", 5, (125000, 250000, 500000, 1000000),
               lambda rows, columns: programs.rows(made(directory, rows, columns)),
               ("open and read", "print and pack the file"))
    for name in missed:
        print(f"missed: {name}", file=sys.stderr)
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
