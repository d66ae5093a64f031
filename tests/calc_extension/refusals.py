"""What the add-in refuses, and what it says about it."""

from office import expect

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
    expect_refusal(office, document, {"Clusters": 3, "Outputs": ""}, "Invalid cell reference.\n"
                   "Outputs is empty; give a reference such as Sheet1!A2:D151")
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
