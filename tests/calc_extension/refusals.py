"""What the add-in refuses, and what it says about it."""

from office import cells, expect

INPUTS, OUTPUTS = "Iris!B2:E151", "Iris!G2"
DATE = 2  # com.sun.star.util.NumberFormat.DATE


def step(sentence):
    print(f"ok: {sentence}", flush=True)


def expect_refusal(office, document, options, told):
    answer = office.dispatch(document, **options)
    expect((answer.State, answer.Result) == (0, told), f"{options} is refused by {told!r}, not {answer.Result!r}")


def entries(office, document):
    """The options themselves."""
    expect_refusal(office, document, {"Bananas": "1"}, "Bananas is no option of the dialog")
    expect_refusal(office, document, {"Clusters": 1}, "Clusters does not take 1")
    expect_refusal(office, document, {"Inputs": INPUTS, "Outputs": OUTPUTS, "Clusters": 998},
                   "Clusters: 998 clusters cannot be made of 150 rows; give 2 to 150.")
    # Nothing is remembered of the runs before.
    expect_refusal(office, document, {"Clusters": 3, "Outputs": ""}, "Invalid cell reference.\n"
                   "Inputs is empty; give a reference such as Sheet1!A2:D151")
    invalid = "Invalid cell reference.\n"
    for inputs, outputs, where in (
            ("Iris!B2:B3", "", "Outputs is empty; give a reference such as Sheet1!A2:D151"),
            ("Nowhere!B2:E9", OUTPUTS, 'Inputs: there is no sheet "Nowhere"; the only one is "Iris"'),
            (INPUTS, "Irs!G2", 'Outputs: there is no sheet "Irs"; the only one is "Iris"')):
        expect_refusal(office, document, {"Inputs": inputs, "Outputs": outputs}, invalid + where)


def numbers(office, document):
    """The cells: the fixed text stands first, the place in the second line."""
    sheet = document.Sheets.getByIndex(0)
    fixed = "mTools component failure\nIris!"
    for inputs, where in ((INPUTS.replace("B2", "A1"), 'A1: text "Species" is not a number, and neither are 154 cells behind it'),
                          (INPUTS.replace("B2", "B1"), 'B1: text "Sepal length" is not a number, and neither are 3 cells behind it')):
        expect_refusal(office, document, {"Inputs": inputs, "Outputs": OUTPUTS}, fixed + where)
    cell = sheet.getCellRangeByName("C5")
    before = cell.Value
    for text, where in (("=NA()", 'C5: error "#N/A" is not a number'), ("n/a", 'C5: text "n/a" is not a number')):
        cell.Formula = text
        expect_refusal(office, document, {"Inputs": INPUTS, "Outputs": OUTPUTS}, fixed + where)
    cell.Value = before
    cell.NumberFormat = document.NumberFormats.getStandardFormat(DATE, document.CharLocale)
    answer = office.dispatch(document, Inputs=INPUTS, Outputs=OUTPUTS)
    expect(answer.Result.startswith(fixed + 'C5: date "'), f"a date is named: {answer.Result!r}")
    cell.NumberFormat = 0
    equal = "Cannot clusterize equal values\n"
    expect_refusal(office, document, {"Inputs": "Iris!M2:P9", "Outputs": OUTPUTS},
                   equal + "first column M2:M9 holds nothing throughout")
    expect_refusal(office, document, {"Inputs": "Iris!B2:E2", "Outputs": OUTPUTS}, equal + "the range B2:E2 has one row")


def refusals(office, document, copy_for_reading):
    entries(office, document)
    numbers(office, document)
    locked = office.load(copy_for_reading, ReadOnly=True)
    answer = office.dispatch(locked, Inputs=INPUTS, Outputs=OUTPUTS)
    expect(answer.State == 0 and "for reading only" in answer.Result, f"a document for reading is refused: {answer.Result!r}")
    locked.close(True)
    step("what cannot be done is refused with a sentence that names the place")


def add_chart(sheet, name, source, title):
    """A chart over some cells, with a title or none."""
    from com.sun.star.awt import Rectangle
    sheet.Charts.addNewByName(name, Rectangle(15000, 500, 6000, 4000), (sheet.getCellRangeByName(source).RangeAddress,), True, True)
    chart = sheet.Charts.getByName(name).EmbeddedObject
    chart.HasMainTitle = bool(title)
    if title:
        chart.Title.String = title


def harms(office, copy):
    """What a run would remove or overwrite is refused without leave, and what it would fail at always; nothing is written then."""
    document = office.load(copy)
    sheet = document.Sheets.getByIndex(0)
    ranges = {"Inputs": INPUTS, "Outputs": OUTPUTS}
    before = cells(document)

    def expect_told(options, *sentences):
        answer = office.dispatch(document, **options)
        expect(answer.State == 0, f"{options} is refused")
        for sentence in sentences:
            expect(sentence in answer.Result, f"{options} is refused by {sentence!r}, not {answer.Result!r}")
        expect(cells(document) == before, f"nothing is written by {options}")

    expect_told({"Inputs": INPUTS, "Outputs": "Iris!C3"}, "the listing at Iris!C2:C152 would overwrite the inputs Iris!B2:E151",
                "It would go with Outputs Iris!H2.")
    sheet.protect("")
    expect_told({**ranges, "Overwrite": True}, "protected")
    sheet.unprotect("")

    # The sheet of the inputs becomes the active one; charts of another sheet are none of the run's business.
    document.Sheets.insertNewByName("Other", 1)
    other = document.Sheets.getByName("Other")
    add_chart(other, "other", "A1:B3", "")
    add_chart(sheet, "untitled", "B1:C9", "")
    add_chart(sheet, "own", "B1:C9", "Sizes")
    office.on_main_thread(lambda: document.CurrentController.setActiveSheet(other))
    expect_told(ranges, "the chart without a title at Iris!", "would be deleted", "Give the option Overwrite with true")
    answer = office.dispatch(document, **ranges, Overwrite=True)
    expect(answer.State == 1, f"a run that may overwrite succeeds: {answer.Result}")
    expect(document.CurrentController.ActiveSheet.Name == "Iris", "the sheet of the inputs is the active one")
    expect(other.Charts.ElementNames == ("other",), "a chart without a title on another sheet stays")
    expect("own" in sheet.Charts.ElementNames and "untitled" not in sheet.Charts.ElementNames,
           f"of the charts of the sheet the one without a title goes: {sheet.Charts.ElementNames}")
    before = cells(document)
    expect_told(ranges, "the listing would overwrite", "the statistics would overwrite")
    document.close(True)
    step("what a run would remove or overwrite is refused without leave, and other sheets are left alone")
