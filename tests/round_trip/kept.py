"""What a run has to leave as it was, package against package. Each function answers with a list of what is wrong."""

import re

from package_reader import TYPES, relations_name
from reach import number_of

SHEET_ORDER = (
    "sheetPr dimension sheetViews sheetFormatPr cols sheetData sheetCalcPr sheetProtection protectedRanges scenarios autoFilter"
    " sortState dataConsolidate customSheetViews mergeCells phoneticPr conditionalFormatting dataValidations hyperlinks printOptions"
    " pageMargins pageSetup headerFooter rowBreaks colBreaks customProperties cellWatches ignoredErrors smartTags drawing"
    " legacyDrawing legacyDrawingHF drawingHF picture oleObjects controls webPublishItems tableParts extLst"
).split()
STYLE_ORDER = "numFmts fonts fills borders cellStyleXfs cellXfs cellStyles dxfs tableStyles colors extLst".split()
BOOK_ORDER = (
    "fileVersion fileSharing workbookPr workbookProtection bookViews sheets functionGroups externalReferences definedNames calcPr"
    " oleSize customWorkbookViews pivotCaches smartTagPr smartTagTypes webPublishing fileRecoveryPr webPublishObjects extLst"
).split()

def in_order(old, root, order):
    """A book whose children stand in another order from the start keeps them so."""
    def ranks(node):
        return [order.index(child.local) for child in node.elements() if child.local in order]

    return [] if ranks(root) == sorted(ranks(root)) or ranks(old) != sorted(ranks(old)) else [f"the children of {root.name} are out of order: {[c.local for c in root.elements()]}"]  # fmt: skip


def differing(what, before, after, limit=300):
    return [] if before == after else [f"{what} was {str(before)[:limit]} and is {str(after)[:limit]}"]


def package_holds_together(book):
    wrong = []
    reachable = book.reachable()
    wrong += [f"something refers to {part}, which is missing" for part in sorted(reachable - set(book.parts))]
    defaults, overrides = book.content_types()
    wrong += [f"a content type is given for {part}, which is missing" for part in overrides if part not in book.parts]
    for part in sorted(set(book.parts) - {TYPES}):
        if part not in overrides and part.rpartition(".")[2].lower() not in defaults:
            wrong.append(f"{part} has no content type")
    for part in book.parts:
        source = re.sub(r"_rels/([^/]*)\.rels$", r"\1", part)
        if source != part and source not in ("", *book.parts):
            wrong.append(f"{part} holds the relations of a part that is missing")
    return wrong


def parts_are_kept(before, after, changed, gone):
    """Entries in their order, bytes of all parts but those named, relations and content types."""
    wrong = []
    kept = [name for name in before.entries if name not in gone]
    wrong += differing("the order of the entries", kept, [name for name in after.entries if name in kept])
    for name in before.parts:
        if name in gone:
            # A new chart may have taken the free name.
            is_old = name in after.parts and before.parts[name] == after.parts[name]
            wrong += [f"{name} is still there"] if is_old else []
        elif name not in after.parts:
            wrong.append(f"{name} is lost")
        elif name not in changed and before.parts[name] != after.parts[name]:
            wrong.append(f"{name} is not the same byte for byte")
    lost = (before.reachable() & set(after.parts)) - after.reachable()
    wrong += [f"nothing refers to {part} any more" for part in sorted(lost)]
    wrong += [f"nothing refers to the new {part}" for part in sorted(after.plain_parts() - set(before.parts) - after.reachable())]  # fmt: skip
    for source in ("", *before.parts):
        if source in gone:
            continue
        now = after.relations(source)
        for identifier, relation in before.relations(source).items():
            if relation[1] not in gone or relation[2]:
                wrong += differing(f"the relation {identifier} of {source or 'the package'}", relation, now.get(identifier))  # fmt: skip
            elif identifier in now and now[identifier][1] in gone and now[identifier][1] not in after.parts:
                wrong.append(f"the relation {identifier} of {source} still leads to {relation[1]}")
    for table_before, table_after in zip(before.content_types(), after.content_types()):
        for name, kind in table_before.items():
            if name not in gone:
                wrong += differing(f"the content type of {name}", kind, table_after.get(name))
    return wrong


def styles_are_kept(before, after):
    """Formats are added behind those that were there; nothing else changes."""
    part = before.related(before.workbook(), "styles")
    if part not in before.parts:
        return [] if after.related(after.workbook(), "styles") in after.parts else ["there are no formats"]
    old, new = before.tree(part), after.tree(part)
    wrong = differing("the head of the formats", old.attributes, new.attributes) + in_order(old, new, STYLE_ORDER)
    for child in old.elements():
        now = new.first(child.local)
        if now is None:
            wrong.append(f"{child.local} is lost from the formats")
        elif child.local in ("fonts", "fills", "borders", "cellXfs", "numFmts"):
            items = child.elements()
            wrong += differing(f"the old {child.local}", items, now.elements()[: len(items)])
            if child.get("count", str(len(items))) == str(len(items)):
                wrong += differing(f"the count of {child.local}", now.get("count", str(len(now.elements()))), str(len(now.elements())))  # fmt: skip
        else:
            wrong += differing(child.local, child, now)
    formats = new.first("cellXfs").elements() if new.first("cellXfs") is not None else []
    for child, attribute in (("fonts", "fontId"), ("fills", "fillId"), ("borders", "borderId")):
        count = len(new.first(child).elements()) if new.first(child) is not None else 0
        wrong += [f"a format refers to {child} {x.get(attribute)}" for x in formats if int(x.get(attribute, "0")) >= count]
    return wrong


def workbook_is_kept(before, after, sheet, gone):
    """Only the hidden name of the filter, full calculation on load and the selected tab may differ."""
    old, new = before.tree(before.workbook()), after.tree(before.workbook())
    wrong = differing("the head of the workbook", old.attributes, new.attributes) + in_order(old, new, BOOK_ORDER)
    for child in new.elements():
        if old.first(child.local) is None and child.local not in ("definedNames", "calcPr", "bookViews"):
            wrong.append(f"the workbook has a new {child.local}")
    for child in old.elements():
        now = new.first(child.local)
        if child.local == "definedNames":
            def others(node):
                return [n for n in node.elements() if n.get("name") != "_xlnm._FilterDatabase"] if node else []

            wrong += differing("the names", others(child), others(now))
        elif now is None:
            wrong.append(f"{child.local} is lost from the workbook")
        elif child.local == "calcPr":
            # A book that is computed by hand stays so; it is told that its values are not the last ones.
            manual = child.get("calcMode") == "manual"
            mark, value = ("calcCompleted", "0") if manual else ("fullCalcOnLoad", "1")
            attributes = {**now.attributes}
            wrong += differing("calculation by hand" if manual else "full calculation on load", value, attributes.pop(mark, None))
            rest = {n: v for n, v in child.attributes.items() if n != mark}
            wrong += differing("calcPr", rest, attributes)
        else:
            wrong += differing(child.local, child, now)
    return wrong


def columns_of(node):
    columns = {}
    for column in node.elements("col") if node else []:
        # Some writers say true where others say 1.
        rest = {n: {"true": "1", "false": "0"}.get(v, v) for n, v in column.attributes.items() if n not in ("min", "max")}
        rest = {n: v for n, v in rest.items() if v != "0"}
        if "width" in rest:
            rest["width"] = float(rest["width"])
        for number in range(int(column.get("min")), int(column.get("max")) + 1):
            columns[number] = rest
    return columns


def columns_are_kept(old, new, reach):
    before, after = columns_of(old), columns_of(new)
    wrong = []
    for number in sorted({*before, *after}):
        was, now = dict(before.get(number, {})), dict(after.get(number, {}))
        if number in reach.fitted:
            was.pop("hidden", None)  # A column is shown when it is fitted.
            for node in (was, now):
                for name in ("width", "customWidth", "bestFit"):
                    node.pop(name, None)
        wrong += differing(f"column {number}", was, now)
    return wrong[:5]


def without_selection(views):
    """The run leaves the user on the output cell, so a selection may stand elsewhere; its pane stays."""
    for view in views.elements():
        view.children = [c for c in view.children if c.local != "selection"]
    return views


def is_blank(cell, row):
    """Whether the cell says no more than a cell that is left out; a value may be there and be empty."""
    plain = set(cell.attributes) <= {"r", "t"} or (set(cell.attributes) <= {"r", "t", "s"} and cell.get("s") in ("", "0"))
    return not any(child.local != "v" or child.children for child in cell.elements()) and plain and row.get("customFormat") != "1"


def format_around(column, row, columns):
    """Of a cell that is left out."""
    if row.get("customFormat") in ("1", "true"):
        return row.get("s", "0")
    return columns.get(number_of(column), {}).get("style", "0")


def number_or_text(node):
    try:
        return float(node.text())
    except ValueError:
        return node.text()


def cell_content(cell, shared=()):
    """Attributes but the format's, and all below; numbers as numbers; formulas that were shared by their presence alone."""
    attributes = {n: v for n, v in cell.attributes.items() if n not in ("r", "s") and (n, v) not in (("t", "n"), ("t", ""))}
    below = []
    if cell.get("t") == "str" and cell.first("f") is None and cell.first("v") is not None:
        return {**attributes, "t": "inlineStr"}, [cell.first("v").text()]
    if cell.get("t") == "inlineStr" and [c.local for c in cell.elements()] == ["is"] and [c.local for c in cell.first("is").elements()] == ["t"]:
        return attributes, [cell.first("is").text()]
    for child in cell.elements():
        if child.local == "v" and not child.children:
            continue  # Some writers put an empty value behind a formula that they have not computed.
        if child.local == "v" and (cell.get("t") or "n") == "n":
            below.append(("v", number_or_text(child)))
        elif child.local == "v":
            below.append(("v", child.text()))
        elif child.local == "f" and cell.get("r") in shared:
            below.append("formula")  # NB: sorting gives each cell of a shared formula its own text.
        else:
            below.append(child)
    return attributes, below


def row_attributes(row, shown):
    left_out = {"spans", "hidden"} if int(row.get("r")) in shown else {"spans"}
    return {name: value for name, value in row.attributes.items() if name not in left_out and value}


def shown_rows(root, option):
    """The rows that come to light when the filter that hid some of them is switched off."""
    node = root.first("autoFilter")
    if option != "--no-autofilter" or node is None or node.first("filterColumn") is None:
        return range(0)
    first, last = re.findall(r"\d+", node.get("ref"))
    return range(int(first), int(last) + 1)


def rows_are_kept(old, new, shown, columns, reach):
    """Rows with their attributes, and cells outside of what is written and sorted."""
    wrong = []
    rows = {row.get("r"): row for row in new.elements("row")}
    numbers = [int(number) for number in rows]
    wrong += differing("the order of the rows", sorted(numbers), numbers)
    for row in old.elements("row"):
        now = rows.get(row.get("r"))
        if now is None:
            wrong.append(f"row {row.get('r')} is lost")
            continue
        wrong += differing(f"row {row.get('r')}", row_attributes(row, shown), row_attributes(now, shown))
        wrong += cells_are_kept(row, now, columns, reach)
    wrong += [f"row {number} is still hidden" for number in shown if rows[str(number)].get("hidden") == "1"]
    return wrong


def cells_are_kept(row, now, columns, reach):
    wrong = []
    shared = [c.get("r") for c in row.elements("c") if c.first("f") is not None and c.first("f").get("t") == "shared"]
    cells = {cell.get("r"): cell for cell in now.elements("c")}
    for cell in row.elements("c"):
        place = cell.get("r")
        column, number = re.fullmatch(r"([A-Z]+)(\d+)", place).groups()
        if reach.is_written(column, int(number)) or reach.is_sorted(column, int(number)) or is_blank(cell, row):
            cells.pop(place, None)
            continue
        if place not in cells:
            wrong.append(f"{place} is lost")
            continue
        other = cells.pop(place)
        if not reach.is_coloured(column, int(number)):
            wrong += differing(f"the format of {place}", cell.get("s", "0"), other.get("s", "0"))
        if not reach.is_scratch(column, int(number)):
            wrong += differing(f"the content of {place}", cell_content(cell, shared), cell_content(other, shared))
    for place, cell in cells.items():
        column, number = re.fullmatch(r"([A-Z]+)(\d+)", place).groups()
        # What was empty is empty again, in the format of its column.
        if reach.is_scratch(column, int(number)) and not cell.children and cell.get("s", "0") == format_around(column, row, columns):
            continue
        if not reach.is_written(column, int(number)) and not reach.is_sorted(column, int(number)):
            wrong.append(f"{place} is new")
    wrong += differing("what stands beside the cells", [c for c in row.elements() if c.local != "c"], [c for c in now.elements() if c.local != "c"])  # fmt: skip
    return wrong


def filter_is_right(old, new, option, reach):
    had, has = old.first("autoFilter"), new.first("autoFilter")
    if option == "--no-autofilter":
        return [] if has is None else ["the filter is still on"]
    if had is not None or not reach.has_heading:
        return differing("the filter that was on", had, has)
    return [] if has is not None or new.first("tableParts") is not None else ["the filter is not on"]


def without_places(links):
    return [str(sorted((n, v) for n, v in link.attributes.items() if n != "ref")) for link in links.elements()]


def sheet_is_kept(before, after, recipe, part=None):
    part = part or before.sheet(recipe.sheet)
    old, new = before.tree(part), after.tree(part)
    wrong = differing("the head of the sheet", (old.name, old.attributes), (new.name, new.attributes))
    wrong += in_order(old, new, SHEET_ORDER)
    special = {"dimension", "sheetViews", "cols", "sheetData", "autoFilter"}
    if old.first("drawing") is None:
        special.add("drawing")
    plain = [[c for c in root.elements() if c.local not in special] for root in (old, new)]
    wrong += differing("the number of elements", [c.name for c in plain[0]], [c.name for c in plain[1]])
    for was, now in zip(*plain):
        if was.local == "sheetPr" and recipe.filter_option == "--no-autofilter":
            for node in (was, now):
                node.attributes.pop("filterMode", None)
        if was.local == "hyperlinks" and recipe.reach.sorts:
            was, now = (sorted(without_places(node)) for node in (was, now))  # They go with their cells.
            wrong += differing("the links", was, now)
            continue
        wrong += differing(was.name, was, now)
    if old.first("sheetViews") is not None:
        wrong += differing("the views", *(without_selection(root.first("sheetViews")) for root in (old, new)))
    wrong += columns_are_kept(old.first("cols"), new.first("cols"), recipe.reach)
    shown = shown_rows(old, recipe.filter_option)
    wrong += rows_are_kept(old.first("sheetData"), new.first("sheetData"), shown, columns_of(old.first("cols")), recipe.reach)
    wrong += filter_is_right(old, new, recipe.filter_option, recipe.reach)
    return wrong


def ids_of_shapes(drawing):
    """The stand-ins for readers that lack a feature have none of their own."""
    return [n.get("id") for n in drawing.descendants() if n.local == "cNvPr" and n.get("id") != "0"]


def drawing_is_kept(before, after, recipe):
    """Old anchors in their order but for the charts that go, and two new ones behind them."""
    part = before.sheet(recipe.sheet)
    old_part, new_part = before.related(part, "drawing"), after.related(part, "drawing")
    if new_part is None:
        return ["the sheet has no drawing"]
    new = after.tree(new_part).elements()
    wrong = []
    if old_part is not None:
        wrong += differing("the drawing's part", old_part, new_part)
        targets = {i: t for i, (_, t, _) in before.relations(old_part).items()}
        old = before.tree(old_part)
        wrong += differing("the head of the drawing", old.attributes, after.tree(new_part).attributes)
        kept = [a for a in old.elements() if not any(targets.get(n.get("id")) in recipe.gone for n in a.descendants() if n.local == "chart")]  # fmt: skip
        wrong += differing("the old anchors", kept, new[: len(kept)], 2000)
        new = new[len(kept) :]
    wrong += differing("the number of new anchors", len(new), 2)
    shapes = ids_of_shapes(after.tree(new_part))
    twice = [one for one in shapes if shapes.count(one) > 1]
    if old_part is None or len(set(ids_of_shapes(before.tree(old_part)))) == len(ids_of_shapes(before.tree(old_part))):
        wrong += differing("the ids of the shapes that stand there twice", [], twice)
    relations = after.relations(new_part)
    for anchor in new:
        for node in anchor.descendants():
            if node.local == "chart" and relations[node.get("id")][0] != "chart":
                wrong.append("an anchor leads to no chart")
    return wrong


def everything(before, after, recipe, gone):
    """All of the above for one run."""
    part, work = before.sheet(recipe.sheet), before.workbook()
    drawing = before.related(part, "drawing")
    changed = {TYPES, work, part, relations_name(part), before.related(work, "styles"), *recipe.rewritten}
    changed |= {drawing, relations_name(drawing)} if drawing else set()
    changed |= {relations_name(work)} if gone - set(recipe.gone) or before.related(work, "styles") is None else set()
    return [
        *package_holds_together(after),
        *parts_are_kept(before, after, changed, gone),
        *styles_are_kept(before, after),
        *workbook_is_kept(before, after, recipe.sheet, gone),
        *sheet_is_kept(before, after, recipe),
        *drawing_is_kept(before, after, recipe),
    ]
