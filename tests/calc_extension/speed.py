"""That formulas beside the inputs do not slow a run down."""

from office import expect

ROWS = 2000


def processor_seconds(office):
    fields = open(f"/proc/{office.process.pid}/stat", encoding="utf-8").read().rsplit(")", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / 100


def seconds_beside(office, cell_text):
    """The processor's time for a run with these texts in the column right of the inputs, which sorting borrows."""
    document = office.load("private:factory/scalc")
    sheet = document.Sheets.getByIndex(0)
    numbers = tuple(tuple(float(row * factor % 97) for factor in (3, 5, 7, 11)) for row in range(ROWS))
    sheet.getCellRangeByPosition(0, 0, 3, ROWS - 1).setDataArray(numbers)
    sheet.getCellRangeByPosition(4, 0, 4, ROWS - 1).setFormulaArray(tuple((cell_text(row + 1),) for row in range(ROWS)))
    begin = processor_seconds(office)
    answer = office.dispatch(document, Inputs=f"{sheet.Name}!A1:D{ROWS}", Outputs=f"{sheet.Name}!H1", Clusters=3, Epochs=100,
                             Overwrite=True)
    seconds = processor_seconds(office) - begin
    expect(answer.State == 1, f"a run beside formulas succeeds: {answer.Result}")
    document.setModified(False)
    document.close(True)
    return seconds


def formulas_beside_the_inputs(office):
    # The first run pays for what the office loads once.
    seconds_beside(office, lambda row: "1")
    constants = seconds_beside(office, lambda row: "1")
    formulas = seconds_beside(office, lambda row: f"=B{row}*2")
    expect(formulas < 3 * constants + 0.3, f"formulas beside the inputs take {formulas:.2f} s, constants {constants:.2f} s")
    print(f"ok: a run beside {ROWS} formulas takes {formulas:.2f} s, beside as many constants {constants:.2f} s", flush=True)
