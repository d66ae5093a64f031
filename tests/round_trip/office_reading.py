"""What LibreOffice reads in a book: cells with their looks, the filter, charts, and a count of all else."""

THIN, HAIR = 26, 2  # widths of lines in hundredths of a millimetre


def sheet_of(document, name):
    return document.Sheets.getByName(name)


def rows(document, name, place):
    return sheet_of(document, name).getCellRangeByName(place).getDataArray()


LOOKS = ("CellBackColor", "CharWeight", "NumberFormat", "TopBorder2", "BottomBorder2", "LeftBorder2", "RightBorder2")


class Looks:
    """How a cell looks. All is asked for in one call, since each takes its time."""

    def __init__(self, formats, cell):
        # The bridge hands the values out in the order of the sorted names.
        found = dict(zip(sorted(LOOKS), cell.getPropertyValues(tuple(sorted(LOOKS)))))
        self.fill = found["CellBackColor"] if found["CellBackColor"] != -1 else None
        self.bold = found["CharWeight"] > 100
        self.number_format = formats(found["NumberFormat"])
        self.borders = tuple(found[side + "Border2"].OuterLineWidth for side in ("Top", "Bottom", "Left", "Right"))


def looks(document, name, places):
    """By place, of the cells named."""
    sheet, known = sheet_of(document, name), {}

    def formats(key):
        if key not in known:
            known[key] = document.NumberFormats.getByKey(key).FormatString
        return known[key]

    return {place: Looks(formats, sheet.getCellRangeByName(place)) for place in places}


def filter_area(document, name):
    """The area of the sheet's own filter, as first column, first row, last column, last row from zero; or none."""
    ranges = document.getPropertyValue("UnnamedDatabaseRanges")
    position = sheet_of(document, name).RangeAddress.Sheet
    if not ranges.hasByTable(position) or not ranges.getByTable(position).AutoFilter:
        return None
    area = ranges.getByTable(position).getDataArea()
    return area.StartColumn, area.StartRow, area.EndColumn, area.EndRow


class Chart:
    def __init__(self, name, document, shape):
        self.name = name
        self.title = document.Title.String if document.HasMainTitle else None
        self.has_legend = document.HasLegend
        self.place = (shape.Position.X, shape.Position.Y, shape.Size.Width, shape.Size.Height) if shape else None
        system = document.getFirstDiagram().getCoordinateSystems()[0]
        self.types = [one.getChartType().rpartition(".")[2] for one in system.getChartTypes()]
        axes = [system.getAxisByDimension(dimension, 0) for dimension in (0, 1) if dimension < system.getDimension()]
        self.axis_titles = [axis.getTitleObject() for axis in axes if axis is not None]
        categories = axes[0].getScaleData().Categories if axes and axes[0] is not None else None
        self.categories = list(categories.getValues().getData()) if categories else None
        self.series = []
        for one in system.getChartTypes():
            for series in one.getDataSeries():
                self.series.append(series_of(series))


def series_of(series):
    """The name, the values and the colour."""
    name, values = None, []
    for sequence in series.getDataSequences():
        if sequence.getValues().Role.startswith("values"):
            values = list(sequence.getValues().getData())
            label = sequence.getLabel()
            # A name that is no reference is only handed out as a text.
            name = " ".join(label.getTextualData()) if label is not None else None
    return name, values, series.Color & 0xFFFFFF


def charts(document, name):
    sheet = sheet_of(document, name)
    shapes = {}
    for number in range(sheet.DrawPage.Count):
        shape = sheet.DrawPage.getByIndex(number)
        if shape.ShapeType == "com.sun.star.drawing.OLE2Shape":
            shapes[shape.PersistName] = shape
    names = sheet.Charts.ElementNames
    return [Chart(one, sheet.Charts.getByName(one).EmbeddedObject, shapes.get(one)) for one in names]


def census(document, name):
    """All that a run leaves alone, as LibreOffice counts it: sheets, names, rules, notes, shapes, links, merged cells."""
    sheet = sheet_of(document, name)
    sheets = [document.Sheets.getByIndex(number) for number in range(document.Sheets.Count)]
    others = [one for one in sheets if one.Name != name]
    page = [sheet.DrawPage.getByIndex(number) for number in range(sheet.DrawPage.Count)]
    rules = sheet.ConditionalFormats.getConditionalFormats()
    return {
        "sheets": [(one.Name, one.IsVisible, one.isProtected()) for one in sheets],
        "names": sorted((one.Name, one.Content) for one in (document.NamedRanges.getByName(n) for n in document.NamedRanges.ElementNames)),
        "tables": sorted(document.DatabaseRanges.ElementNames),
        "rules": sorted((one.Range.RangeAddressesAsString, one.getCount()) for one in rules),
        "notes": sorted((one.Position.Column, one.Position.Row, one.String) for one in (sheet.Annotations.getByIndex(n) for n in range(sheet.Annotations.Count))),
        "shapes": sorted(one.ShapeType for one in page if one.ShapeType != "com.sun.star.drawing.OLE2Shape"),
        "merged": [sheet.getCellRangeByName(place).IsMerged for place in ("A1", "M40")],
        # What leads into the book itself is given with the book's own address.
        "links": [[field.URL.replace(document.URL, "") for field in sheet.getCellRangeByName(place).TextFields] for place in ("M41", "M42", "M44", "M45", "M46")],
        "choices": [sheet.getCellRangeByName(place).Validation.Type.value for place in ("M40", "M44", "M47", "P5", "B5")],
        "below": sheet.getCellRangeByName("A40:Z60").getFormulaArray(),
        "title": sheet.getCellRangeByName("A1:F4").getDataArray(),
        "heights": [sheet.Rows.getByIndex(number).Height for number in (0, 39, 42, 44)],
        "hidden": [(sheet.Rows.getByIndex(n).IsVisible, sheet.Columns.getByIndex(n).IsVisible) for n in (8, 12, 13, 15, 20, 25, 40, 50)],
        "widths": [sheet.Columns.getByIndex(number).Width for number in (0, 7, 12, 20)],
        "others": [one.getCellRangeByName("A1:J30").getFormulaArray() for one in others],
        "charts of others": [len(one.Charts.ElementNames) for one in others],
        "print": [len(sheet.getPrintAreas()), sheet.getPrintTitleRows(), sheet.TabColor],
        "pivots": [list(one.getDataPilotTables().ElementNames) for one in sheets],
    }  # fmt: skip
