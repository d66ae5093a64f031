"""The cells that a run may change: those that it writes, those that it sorts, and the columns that it fits."""

import dataclasses
import re

BLOCKS = 5  # averages, weighted averages, minimums, maximums, weights


def number_of(letters):
    result = 0
    for letter in letters:
        result = result * 26 + ord(letter) - 64
    return result


def cell(text):
    """Row and column of A1."""
    letters, row = re.fullmatch(r"([A-Z]+)(\d+)", text).groups()
    return int(row), number_of(letters)


def area(text):
    """First row, first column, last row, last column of A1:B2 or A1."""
    first, _, last = text.partition(":")
    return *cell(first), *cell(last or first)


@dataclasses.dataclass(frozen=True)
class Reach:
    """Of a run with the listing in one column and all blocks on."""

    inputs: tuple[int, int, int, int]
    outputs: tuple[int, int]  # the first cell of the listing, its heading above
    clusters: int
    sorts: bool = True

    def is_written(self, column, row):
        number = number_of(column)
        first_row, first_column, last_row, last_column = self.inputs
        below, beside = self.outputs
        listed = number == beside and below - 1 <= row <= below + last_row - first_row
        blocks = last_row < row <= last_row + BLOCKS * self.clusters and first_column <= number <= last_column + 1
        return listed or blocks

    def is_sorted(self, column, row):
        return self.sorts and number_of(column) <= self.inputs[3] and self.inputs[0] <= row <= self.inputs[2]

    def is_scratch(self, column, row):
        """The column beside the measures holds the clusters while the rows are sorted, and gets its values back."""
        return self.sorts and number_of(column) == self.inputs[3] + 1 and self.inputs[0] <= row <= self.inputs[2]

    def is_coloured(self, column, row):
        return self.inputs[0] <= row <= self.inputs[2] and self.inputs[1] <= number_of(column) <= self.inputs[3]

    @property
    def has_heading(self):
        """Above a listing in the first row there is no room for one, nor for filter arrows."""
        return self.outputs[0] > 1

    @property
    def fitted(self):
        return range(self.inputs[1], self.inputs[3] + 2)


class Nothing(Reach):
    """Of a run on another sheet."""

    def __init__(self):
        super().__init__((1, 1, 0, 0), (0, 0), 0, False)

    fitted = range(0)
