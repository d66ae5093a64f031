"""What a book of the corpus is: who makes it, and the run that the tests put it through.

Every book has a sheet with the same table, so that the tests know what a run may change: headings in row 4, names in
A5:A16, three measures in B5:D16. A run with three clusters lists in G4:G16, stacks its blocks in B17:E31 and puts its charts
to the right of the listing. What a book is about stands elsewhere on the sheet or in other parts.
"""

import dataclasses
import typing

from reach import Reach

HEADER = ("Name", "Length", "Width", "Height")
FIRST_ROW = 5
# Three groups that lie far apart, dealt in turn, so that sorting by cluster moves rows.
ROWS = tuple(
    (f"sample {number}", *values)
    for number, values in enumerate(
        (
            (1.0, 10.5, 100.0),
            (5.25, 50.0, 300.0),
            (9.0, 20.0, 201.5),
            (1.5, 11.0, 104.0),
            (5.5, 52.0, 306.0),
            (9.25, 21.0, 205.0),
            (1.25, 12.0, 102.0),
            (5.0, 51.5, 303.0),
            (9.5, 22.5, 203.0),
            (1.75, 10.0, 101.0),
            (5.75, 53.0, 301.0),
            (9.75, 20.5, 204.0),
        ),
        1,
    )
)
LAST_ROW = FIRST_ROW + len(ROWS) - 1
REACH = Reach((FIRST_ROW, 2, LAST_ROW, 4), (FIRST_ROW, 7), 3)


@dataclasses.dataclass(frozen=True)
class Recipe:
    name: str  # of the file, with its ending
    make: typing.Callable[[str], None]  # writes the book to the path
    sheet: str = "Data"
    filter_option: str = "--autofilter"
    sorts: bool = True  # rows that a filter hides stand in the way
    gone: tuple[str, ...] = ()  # chart parts that the run has to remove, untitled ones or those of an earlier run
    rewritten: tuple[str, ...] = ()  # further parts that may differ, such as a table whose filter is switched off
    reach: Reach = REACH
    has_plain_columns: bool = True  # beside the listing: columns of the width that every new sheet has
