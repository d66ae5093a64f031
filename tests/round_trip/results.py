"""What a run has to leave on the sheet, worked out from the old rows and the numbers that the program lists for them."""

from recipe import FIRST_ROW, LAST_ROW

CLUSTERS = (1, 2, 3)
LABELS = ("average", "weighted average (%)", "minimum", "maximum", "weight (%)")
# The first colours of the clusters, as the palette's numbers count them in files.
FILLS = {1: ("43", 0xFFFF99), 2: ("57", 0x339966), 3: ("45", 0xFF99CC)}


def names_of(cluster):
    """What a file may call the colour: its number, or itself."""
    number, color = FILLS[cluster]
    return number, f"FF{color:06X}"


def placed_rows(rows, clusters, sorts):
    """Each row with its cluster, in the order in which the run leaves them."""
    pairs = list(zip(rows, clusters))
    return sorted(pairs, key=lambda pair: pair[1]) if sorts else pairs


def listed(clusters, sorts):
    return sorted(clusters) if sorts else clusters


def expected_cells(rows, clusters, sorts):
    """By address: the value of every cell that the run writes or moves. Rows are name and three measures."""
    cells = {"G4": "Clusters"}
    placed = placed_rows(rows, clusters, sorts)
    for number, (row, cluster) in enumerate(placed, FIRST_ROW):
        cells.update({f"{column}{number}": value for column, value in zip("ABCD", row)})
        cells[f"G{number}"] = float(cluster)
    members = {k: [row[1:] for row, cluster in placed if cluster == k] for k in CLUSTERS}
    start = LAST_ROW + 1
    for block, label in enumerate(LABELS):
        for k in CLUSTERS:
            number = start + block * len(CLUSTERS) + k - 1
            cells[f"E{number}"] = f"Cluster {k} {label}"
            if label == "weight (%)":
                cells[f"D{number}"] = len(members[k]) / len(rows)
                continue
            for index, column in enumerate("BCD"):
                values = [row[index] for row in members[k]]
                mean = sum(row[index + 1] for row in rows) / len(rows)
                own = sum(values) / len(values)
                cells[f"{column}{number}"] = {
                    "average": own,
                    "weighted average (%)": (own - mean) / mean,
                    "minimum": min(values),
                    "maximum": max(values),
                }[label]
    return cells


def same(expected, found):
    if isinstance(expected, float):
        return isinstance(found, (int, float)) and abs(expected - found) <= 1e-6 * max(1.0, abs(expected))
    return expected == found


def expected_fill(place, clusters, sorts):
    """The cluster whose colour the cell has; None for a cell without one."""
    column, number = place[0], int(place[1:])
    if FIRST_ROW <= number <= LAST_ROW and column in "BCDG":
        return listed(clusters, sorts)[number - FIRST_ROW]
    if number > LAST_ROW and column in "BCDE":
        return (number - LAST_ROW - 1) % len(CLUSTERS) + 1
    return None


def is_share(place):
    """Whether the cell shows a percentage."""
    number = int(place[1:]) - LAST_ROW - 1
    return number >= 0 and place[0] in "BCD" and number // len(CLUSTERS) in (1, 4)
