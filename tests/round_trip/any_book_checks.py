"""What a run has to leave alone in a book of which nothing is known but its own parts."""

import collections
import dataclasses
import re

import kept
from package_reader import TYPES, relations_name
from reach import Nothing, Reach, area, cell, number_of

OUR_TITLES = ("Clusters profiles", "Clusters weights")


@dataclasses.dataclass(frozen=True)
class Run:
    """In the words of a recipe."""

    sheet: str
    reach: Reach
    filter_option: str = "--autofilter"
    gone: frozenset = frozenset()
    rewritten: tuple = ()


def title_of(book, part):
    """None for a chart that shows no title. One with a single named series shows that name unless somebody took it away."""
    chart = book.tree(part).first("chart")
    if chart is None:
        return None
    if chart.first("title") is not None:
        return chart.first("title").text()
    taken_away = chart.first("autoTitleDeleted")
    if taken_away is not None and taken_away.get("val", "1") in ("1", "true"):
        return None
    series = [node for node in chart.descendants() if node.local == "ser"]
    return "" if len(series) == 1 and series[0].first("tx") is not None and series[0].first("tx").text().strip() else None


def charts_that_go(before, after, sheet):
    """Those of the sheet without a title and those of an earlier run, with what only they lead to."""
    drawing = before.related(sheet, "drawing")
    if drawing is None or drawing not in before.parts:
        return set()
    charts = [target for kind, target, _ in before.relations(drawing).values() if kind == "chart" and target in before.parts]
    gone = {part for part in charts if title_of(before, part) in (None, *OUR_TITLES)}
    result = set(gone)
    for part in gone:
        result |= {target for _, target, external in before.relations(part).values() if not external}
    # A new chart may have taken a free name, and what others lead to as well stays.
    others = {
        target
        for source in before.parts
        if source not in result
        for _, target, external in before.relations(source).values()
        if not external
    }
    result = {part for part in result if part in gone or part not in others}
    return result | {relations_name(part) for part in result if relations_name(part) in before.parts}


def without_views_of_tabs(node):
    """Which sheet is the active one may change with the run."""
    for view in node.descendants():
        if view.local == "workbookView":
            view.attributes.pop("activeTab", None)
        if view.local == "sheetView":
            view.attributes.pop("tabSelected", None)


def rows_of(root, reach, book):
    """The rows that are sorted, as a count of what stands on each; formulas by their presence alone."""
    texts = book.texts()
    rows = collections.Counter()
    for row in root.first("sheetData").elements("row"):
        number = int(row.get("r", "0"))
        if not reach.inputs[0] <= number <= reach.inputs[2]:
            continue
        content = []
        for one in row.elements("c"):
            column = re.match(r"[A-Z]+", one.get("r")).group()
            if number_of(column) > reach.inputs[3]:
                continue
            value = "formula" if one.first("f") is not None else book.value(one, texts)
            if value not in (None, ""):
                content.append((column, value))
        rows[tuple(content)] += 1
    # Rows that hold nothing need not be there.
    rows.pop((), None)
    return rows


def scratch_of(root, reach, book):
    """The values of the column beside the measures, which do not move."""
    texts = book.texts()
    values = {}
    for row in root.first("sheetData").elements("row"):
        for one in row.elements("c"):
            place = one.get("r")
            column, number = re.fullmatch(r"([A-Z]+)(\d+)", place).groups()
            if reach.is_scratch(column, int(number)):
                value = book.value(one, texts)
                if value is not None:
                    values[place] = value
    return values


def sorted_rows_are_kept(before, after, sheet, reach):
    old, new = before.tree(sheet), after.tree(sheet)
    was, now = rows_of(old, reach, before), rows_of(new, reach, after)
    wrong = [] if was == now else [f"rows were lost or changed by sorting: {list((was - now).items())[:2]} became {list((now - was).items())[:2]}"]
    was, now = scratch_of(old, reach, before), scratch_of(new, reach, after)
    return wrong + kept.differing("the values beside the measures", was, now)


def differences(before, after, sheet, outputs, clusters, sorts):
    try:
        return list(dict.fromkeys(differing_parts(before, after, sheet, outputs, clusters, sorts)))
    except Exception as trouble:  # Of a book that breaks the checks the others shall be told all the same.
        return [f"the checks fail: {type(trouble).__name__}: {trouble}"]


def differing_parts(before, after, sheet, outputs, clusters, sorts):
    part, work = before.sheet(sheet["name"]), before.workbook()
    reach = Reach(area(sheet["numbers"]), cell(outputs), clusters, sorts)
    gone = charts_that_go(before, after, part)
    chain = before.related(work, "calcChain")
    gone |= {chain} if chain and chain not in after.parts else set()
    run = Run(sheet["name"], reach, gone=frozenset(gone))
    for book in (before, after):
        for other in book.worksheets():
            without_views_of_tabs(book.tree(other))
        without_views_of_tabs(book.tree(work))
    drawing, styles = before.related(part, "drawing"), before.related(work, "styles")
    changed = {TYPES, work, part, relations_name(part), styles, relations_name(work)}
    changed |= {drawing, relations_name(drawing)} if drawing else set()
    changed |= {target for kind, target, _ in before.relations(part).values() if kind == "table"}
    # The sheet that was active before is written anew with nothing but its view changed.
    touched = {other for other in before.worksheets() if other != part and before.parts[other] != after.parts.get(other)}
    old_faults = set(kept.package_holds_together(before))
    yield from (fault for fault in kept.package_holds_together(after) if fault not in old_faults)
    yield from kept.parts_are_kept(before, after, changed | touched, gone)
    yield from kept.styles_are_kept(before, after)
    yield from kept.workbook_is_kept(before, after, sheet["name"], gone)
    for other in touched:
        yield from (f"{other}: {fault}" for fault in kept.sheet_is_kept(before, after, Run("", Nothing()), other))
    yield from kept.sheet_is_kept(before, after, run)
    if sorts:
        yield from sorted_rows_are_kept(before, after, part, reach)
    yield from kept.drawing_is_kept(before, after, run)
