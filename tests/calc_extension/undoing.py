"""That undoing a run brings back the whole sheet, and redoing it the run."""

import uno  # noqa: F401: makes the office's types importable
from com.sun.star.sheet.ValidationType import DECIMAL
from office import cells, expect, looks, wait_for
from refusals import INPUTS, OUTPUTS, add_chart


def chart_state(sheet):
    """Each chart by its name: title, place, size, and the cells that it shows with a number of them."""
    found = {}
    for shape in sheet.DrawPage:
        if not shape.supportsService("com.sun.star.drawing.OLE2Shape") or shape.Model is None:
            continue
        chart = shape.Model
        data = [(sequence.Values.SourceRangeRepresentation, tuple(sequence.Values.getNumericalData()[:3]))
                for system in chart.getFirstDiagram().getCoordinateSystems() for kind in system.getChartTypes()
                for series in kind.getDataSeries() for sequence in series.getDataSequences()]
        title = chart.Title.String if chart.HasMainTitle else None
        key = (title, shape.Name)
        found[key] = (shape.Position.X, shape.Position.Y, shape.Size.Width, shape.Size.Height, str(data))
    return found


def row_state(sheet):
    rows = [sheet.Rows.getByIndex(row) for row in range(180)]
    return [row.IsVisible for row in rows], [row.Height for row in rows]


def notes(sheet):
    return {(note.Position.Column, note.Position.Row): note.String for note in sheet.Annotations}


def prepare(document):
    """Things that belong to rows, in the rows that will be sorted."""
    sheet = document.Sheets.getByIndex(0)
    cell = sheet.getCellRangeByName
    for name in ("A60", "B103", "E120", "F75"):
        sheet.Annotations.insertNew(cell(name).CellAddress, f"about {name}")
    link = document.createInstance("com.sun.star.text.TextField.URL")
    link.URL, link.Representation = "http://example.org/", "link"
    cell("A70").String = ""
    cell("A70").insertTextContent(cell("A70").createTextCursor(), link, False)
    text = cell("A80").createTextCursor()
    text.gotoStart(False)
    text.goRight(3, True)
    text.CharWeight = 150.0
    rule = cell("A90").Validation
    rule.Type = DECIMAL
    cell("A90").Validation = rule
    sheet.Rows.getByIndex(44).Height = 1500
    for row in range(100, 121):
        sheet.Rows.getByIndex(row).IsVisible = False


def state(document):
    sheet = document.Sheets.getByIndex(0)
    cell = sheet.getCellRangeByName
    bold = [(portion.String, portion.CharWeight) for paragraph in cell("A80") for portion in paragraph]
    return {"cells": cells(document), "looks": looks(sheet), "rows": row_state(sheet), "notes": notes(sheet),
            "links": [row for row in range(150) if sheet.getCellByPosition(0, row).TextFields.Count], "letters": bold,
            "rules": [row for row in range(150) if sheet.getCellByPosition(0, row).Validation.Type == DECIMAL],
            "charts": chart_state(sheet)}


def expect_state(document, wanted, when):
    wait_for(lambda: state(document)["cells"] == wanted["cells"], f"{when} the cells are as they were")
    now = state(document)
    for name, value in wanted.items():
        expect(now[name] == value, f"{when} the {name} are as before: {value}, not {now[name]}")


def undoing_is_whole(office, copy):
    document = office.load(copy)
    sheet = document.Sheets.getByIndex(0)
    prepare(document)
    answer = office.dispatch(document, Inputs=INPUTS, Outputs=OUTPUTS, Clusters=4)
    expect(answer.State == 1, f"a run beside things that belong to rows succeeds: {answer.Result}")
    add_chart(sheet, "untitled", "B1:C9", "")
    add_chart(sheet, "own", "D1:E9", "Sizes")
    before = state(document)
    expect(len(before["charts"]) == 4, f"two charts of the run and two of the user: {before['charts'].keys()}")
    answer = office.dispatch(document, Inputs=INPUTS, Outputs=OUTPUTS, Clusters=3, Overwrite=True)
    expect(answer.State == 1, f"a second run succeeds: {answer.Result}")
    run = state(document)
    expect(run["notes"] != before["notes"] and run["links"] != before["links"], "sorting takes along what belongs to rows")
    expect(len(run["charts"]) == 3, f"the chart without a title has gone: {run['charts'].keys()}")
    undo = document.UndoManager
    for _ in range(2):
        office.on_main_thread(undo.undo)
        expect_state(document, before, "after an undo")
        wait_for(undo.isRedoPossible, "a run that was undone can be redone")
        expect(undo.getCurrentRedoActionTitle() == "Clusterize", "the redo has the name of the run")
        office.on_main_thread(undo.redo)
        expect_state(document, run, "after a redo")
        wait_for(undo.isUndoPossible, "a run that was redone can be undone")
    document.setModified(False)
    document.close(True)
    print("ok: one undo brings back rows, comments, links, rules and charts, and a redo the run", flush=True)
