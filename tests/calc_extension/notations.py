"""That a run goes the same way whatever notation of references the user has chosen."""

from office import expect, properties
from refusals import INPUTS, OUTPUTS

CALC, EXCEL_A1, EXCEL_R1C1 = 0, 1, 2


def shown_cells(sheet):
    """What the charts of a run take their values from, in the notation of files."""
    shown = []
    for name in sheet.Charts.ElementNames:
        chart = sheet.Charts.getByName(name).EmbeddedObject
        provider = chart.getDataProvider()
        for system in chart.getFirstDiagram().getCoordinateSystems():
            for kind in system.getChartTypes():
                shown += [provider.convertRangeToXML(sequence.Values.SourceRangeRepresentation)
                          for series in kind.getDataSeries() for sequence in series.getDataSequences()]
    return sorted(shown)


def runs_in_every_notation(office, copies):
    settings = office.create("com.sun.star.configuration.ConfigurationProvider").createInstanceWithArguments(
        "com.sun.star.configuration.ConfigurationUpdateAccess", properties(nodepath="/org.openoffice.Office.Calc/Formula/Syntax"))
    found = []
    try:
        for grammar, copy in zip((CALC, EXCEL_A1, EXCEL_R1C1), copies):
            settings.setPropertyValue("Grammar", grammar)
            settings.commitChanges()
            document = office.load(copy)
            for _ in range(2):  # The second run finds the charts of the first.
                answer = office.dispatch(document, Inputs=INPUTS, Outputs=OUTPUTS, Clusters=3, Overwrite=True)
                expect(answer.State == 1, f"a run in notation {grammar} succeeds: {answer.Result}")
            found.append(shown_cells(document.Sheets.getByIndex(0)))
            document.setModified(False)
            document.close(True)
    finally:
        settings.setPropertyValue("Grammar", CALC)
        settings.commitChanges()
    expect(len(found[0]) == 4 and found[0] == found[1] == found[2], f"the charts show the same cells: {found}")
    print("ok: runs go the same way in every notation of references", flush=True)
