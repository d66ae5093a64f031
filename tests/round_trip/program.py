"""The built program, and the run that every book is put through."""

import json
import os
import subprocess

from recipe import FIRST_ROW, LAST_ROW

PROGRAM = os.environ.get("MERVANE_PROGRAM", "mervane")
SKIPPED = 77  # the exit status that ctest takes for a test that was skipped
ALL_OUTPUTS = (
    "--averages", "--weighted-averages", "--minimums", "--maximums", "--weights", "--charts", "--colors", "--one-column",
)  # fmt: skip


def run(*arguments):
    done = subprocess.run([PROGRAM, *arguments], capture_output=True, text=True, timeout=120)
    assert done.returncode == 0, f"mervane {' '.join(arguments)} ended with {done.returncode}: {done.stderr}"
    return done.stdout


def choices(recipe):
    return *ALL_OUTPUTS, recipe.filter_option, "--sort" if recipe.sorts else "--no-sort"


def references(recipe):
    sheet = "'" + recipe.sheet.replace("'", "''") + "'"
    return "--inputs", f"{sheet}!B{FIRST_ROW}:D{LAST_ROW}", "--outputs", f"{sheet}!G{FIRST_ROW}", "--clusters", "3"


def cluster(book, out, recipe, *more):
    """Clusters the book into another; answers with the cluster of each row in the old order, as the program lists them."""
    listing = run(
        "cluster", book, *references(recipe), *choices(recipe), "--overwrite", "-q", "-o", out, "--format", "ndjson", *more,
    )  # fmt: skip
    return [json.loads(line)["Cluster"] for line in listing.splitlines()]
