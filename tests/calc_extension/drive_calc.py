#!/usr/bin/python3
"""Plays a user of the Calc add-in: installs it, clusters without a window and in one, and removes it again.

    drive_calc.py OXT TESTS_OXT MERVANE SOURCES FOLDER [PICTURES]

MERVANE is the command line program, FOLDER an empty folder of the user's who runs this (not root). Pictures are left in
FOLDER, and in PICTURES too where that is given.
"""

import os
import pathlib
import shutil
import subprocess
import sys

import uno  # noqa: F401: makes the office's types importable
from com.sun.star.sheet import TableFilterField
from com.sun.star.sheet.ConditionOperator import GREATER
from com.sun.star.sheet.FilterOperator import EQUAL
from com.sun.star.sheet.ValidationType import DECIMAL
from notations import runs_in_every_notation
from office import Failed, Office, cells, expect, looks, properties, wait_for
from refusals import expect_refusal, harms, refusals
from screen import Controls, Screen
from speed import formulas_beside_the_inputs
from undoing import undoing_is_whole

ROLE_EDIT, ROLE_LABEL = 60, 30
INPUTS, OUTPUTS = "Iris!B2:E151", "Iris!G2"


def step(sentence):
    print(f"ok: {sentence}", flush=True)


class Driver:
    def __init__(self, oxt, tests_oxt, mervane, sources, folder, pictures=None):
        self.oxt, self.tests_oxt, self.mervane = oxt, tests_oxt, mervane
        self.sources, self.folder = pathlib.Path(sources), pathlib.Path(folder)
        self.pictures = pathlib.Path(pictures) if pictures else None
        self.book = self.folder / "iris.xlsx"
        shutil.copy(self.sources / "examples/iris.xlsx", self.book)

    def copy_of_book(self, name):
        """A file that is open already would only be brought to the front."""
        copy = self.folder / name
        shutil.copy(self.book, copy)
        return copy

    # --- Installing -------------------------------------------------------------------------------------------------

    def unopkg(self, *arguments):
        done = subprocess.run(
            ["unopkg", *arguments, f"-env:UserInstallation={(self.folder / 'profile').as_uri()}"],
            capture_output=True, text=True, timeout=100, check=False)
        expect(done.returncode == 0, f"unopkg {arguments[0]} works: {done.stderr}")
        return done.stdout

    def install(self):
        self.unopkg("add", "--suppress-license", str(self.oxt))
        self.unopkg("add", "--suppress-license", str(self.tests_oxt))
        expect("org.mervane.calc" in self.unopkg("list"), "the installed extension is listed")
        step("an ordinary user installs the extension")

    def remove(self):
        self.unopkg("remove", "org.mervane.calc")
        self.unopkg("remove", "org.mervane.calc.tests")
        expect("mervane" not in self.unopkg("list"), "a removed extension is not listed")
        # The office sweeps an unpacked extension away when the next one changes, so the tests' own is still there.
        left = [str(file) for file in (self.folder / "profile").rglob("*mervane*") if "office" not in str(file.relative_to(self.folder))]
        expect(not left, f"nothing of a removed extension is left: {left}")
        step("removing it leaves nothing")

    # --- Without a window -------------------------------------------------------------------------------------------

    def without_window(self):
        office = Office(self.folder, "--headless")
        try:
            document = office.load(self.book)
            before, looks_before = cells(document), looks(document.Sheets.getByIndex(0))
            answer = office.dispatch(document, Inputs=INPUTS, Outputs=OUTPUTS, Clusters=3)
            expect(answer.State == 1, f"a clustering by options succeeds: {answer.Result}")
            after = cells(document)
            self.result = after
            self.compare_with_command_line(office, after)
            step("the command with options clusters without a window, with the results of the command line program")

            undo = document.UndoManager
            expect(list(undo.getAllUndoActionTitles()) == ["Clusterize"], "a run is one undo step")
            office.on_main_thread(undo.undo)
            wait_for(lambda: cells(document) == before, "undoing the step brings back all cells")
            sheet = document.Sheets.getByIndex(0)
            expect(len(sheet.Charts.ElementNames) == 0, "undoing the step takes the charts away")
            expect(looks(sheet) == looks_before, "undoing the step brings back formats and widths")
            step("one undo takes back what a run wrote")
            self.undo_beside_other_things(office)
            undoing_is_whole(office, self.copy_of_book("whole.xlsx"))
            answer = office.dispatch(document, Inputs=INPUTS, Outputs=OUTPUTS)
            expect(answer.State == 1 and cells(document) == after, "the next run gives the same again")
            answer = office.dispatch(document, Inputs=INPUTS, Outputs=OUTPUTS, Overwrite=True)
            expect(answer.State == 1, "a run over the results of the last one succeeds")
            expect(len(sheet.Charts.ElementNames) == 2, "a run replaces the charts of the last one")
            step("runs can follow each other")

            refusals(office, document, self.copy_of_book("reading.xlsx"))
            harms(office, self.copy_of_book("harms.xlsx"))
            self.remembering(office, document)
            document.close(True)
            self.conforming(office)
            formulas_beside_the_inputs(office)
            runs_in_every_notation(office, [self.copy_of_book(f"notation{i}.xlsx") for i in range(3)])
            expect(office.quit(), "the office quits by itself")
        finally:
            office.kill()

    def remembering(self, office, document):
        """A run of a macro leaves what the dialog remembers alone, unless it is told to remember."""
        def remembered():
            return subprocess.run([str(self.mervane), "settings", "list"], capture_output=True, text=True, check=False).stdout

        before = remembered()
        missing = {"Inputs": "Nowhere!B2:E9", "Outputs": OUTPUTS}
        told = 'Invalid cell reference.\nInputs: there is no sheet "Nowhere"; the only one is "Iris"'
        expect_refusal(office, document, missing, told)
        expect(remembered() == before, f"nothing is remembered without being asked for: {remembered()}")
        expect_refusal(office, document, {**missing, "Remember": True}, told)
        expect("Nowhere!B2:E9" in remembered(), "the command line program knows what the dialog remembers")
        step("options are remembered in the store of the command line program, if that is asked for")

    def undo_beside_other_things(self, office):
        """What a run does not write stays through its undoing, and a filter that it switched off comes back."""
        document = office.load(self.copy_of_book("other-things.xlsx"))
        sheet = document.Sheets.getByIndex(0)
        cell = sheet.getCellRangeByName
        cell("J170:K171").merge(True)
        cell("K180:K182").setArrayFormula("=B2:B4*2")
        link = document.createInstance("com.sun.star.text.TextField.URL")
        link.URL, link.Representation = "http://example.org/", "link"
        cell("L180").insertTextContent(cell("L180").createTextCursor(), link, False)
        cell("L182").String = "0012"
        sheet.Annotations.insertNew(cell("E153").CellAddress, "in a block")
        sheet.Annotations.insertNew(cell("G3").CellAddress, "in the listing")
        rule = cell("M180").Validation
        rule.Type = DECIMAL
        cell("M180").Validation = rule
        condition = cell("M182").ConditionalFormat
        condition.addNew(properties(Operator=GREATER, Formula1="6", StyleName="Accent 1"))
        cell("M182").ConditionalFormat = condition
        filters = document.getPropertyValue("UnnamedDatabaseRanges")
        filters.setByTable(cell("A1:E151").RangeAddress)
        filters.getByTable(0).AutoFilter = True
        wanted = TableFilterField(Field=0, IsNumeric=False, StringValue="setosa", Operator=EQUAL)
        filter_ = cell("A1:E151").createFilterDescriptor(True)
        filter_.ContainsHeader, filter_.FilterFields = True, (wanted,)
        cell("A1:E151").filter(filter_)

        def state():
            area = filters.getByTable(0).DataArea
            return {"cells": cells(document), "looks": looks(sheet), "merge": cell("J170").IsMerged,
                    "array": cell("K180:K182").ArrayFormula, "links": cell("L180").TextFields.Count,
                    "text": cell("L182").Type.value, "notes": {(note.Position.Column, note.Position.Row) for note in sheet.Annotations},
                    "rule": cell("M180").Validation.Type.value, "condition": cell("M182").ConditionalFormat.Count,
                    "filter": (filters.getByTable(0).AutoFilter, area.StartColumn, area.EndColumn, area.EndRow),
                    "hidden": [row for row in range(200) if not sheet.Rows.getByIndex(row).IsVisible]}

        before = state()
        expect(len(before["hidden"]) == 100, "the filter hides the other species")
        answer = office.dispatch(document, Inputs=INPUTS, Outputs=OUTPUTS, Clusters=3, AutoFilter=False, Overwrite=True)
        expect(answer.State == 1, f"a run beside other things succeeds: {answer.Result}")
        run = state()
        expect(run["filter"][0] is False and not run["hidden"], "a run without filter switches the filter off")
        expect(run["notes"] == before["notes"], f"a run keeps the notes of the cells that it writes: {run['notes']}")
        office.on_main_thread(document.UndoManager.undo)
        wait_for(lambda: state()["hidden"] == before["hidden"], "undoing brings the filter back")
        after = state()
        for name, value in before.items():
            expect(after[name] == value, f"undoing leaves {name} as before: {value}, not {after[name]}")
        document.close(True)
        step("one undo leaves alone what a run did not write, and brings back a filter")

    def locale_of_the_office(self, name):
        """Takes the office's regional settings over into the profile; they hold from its next start on."""
        office = Office(self.folder, "--headless")
        try:
            office.configure("/org.openoffice.Setup/L10N", "ooSetupSystemLocale", name)
            expect(office.quit(), "the office quits with new regional settings")
        finally:
            office.kill()

    def in_another_locale(self):
        """Results are shown with the signs of the user's language, and numbers of macros are not read by them."""
        self.locale_of_the_office("de-DE")
        office = Office(self.folder, "--headless")
        try:
            document = office.load(self.copy_of_book("other-locale.xlsx"))
            answer = office.dispatch(document, Inputs=INPUTS, Outputs=OUTPUTS, LearningRate=0.5, InitialWeights="0,3")
            expect(answer.State == 1, f"a run in another locale succeeds: {answer.Result}")
            shown = document.Sheets.getByIndex(0).getCellRangeByName("E164").String
            expect("".join(shown.split()) == "40,67%", f"percentages are shown as the user writes them: {shown}")
            document.close(True)
            self.in_german(office)
            expect(office.quit(), "the office quits by itself")
        finally:
            office.kill()
        # Numbers are remembered as they are written.
        subprocess.run([str(self.mervane), "settings", "clear"], check=True, capture_output=True, timeout=60)
        self.locale_of_the_office("")
        step("a run in another locale reads and shows numbers in that locale")

    def in_german(self, office):
        language = ("/org.openoffice.Office.Linguistic/General", "UILocale")
        office.configure(*language, "de")
        locked = office.load(self.copy_of_book("lesen.xlsx"), ReadOnly=True)
        answer = office.dispatch(locked, Inputs=INPUTS, Outputs=OUTPUTS)
        expect("nur zum Lesen offen" in answer.Result, f"the add-in speaks the language of the menus: {answer.Result!r}")
        locked.close(True)
        office.configure(*language, "")

    def compare_with_command_line(self, office, after):
        made = self.folder / "by-command-line.xlsx"
        subprocess.run([str(self.mervane), "cluster", str(self.book), "--inputs", INPUTS, "--outputs", OUTPUTS,
                        "--clusters", "3", "-o", str(made)], check=True, capture_output=True, timeout=60)
        document = office.load(made)
        expected = cells(document)
        document.close(True)
        expect(len(after) == len(expected), f"as many rows as by the command line program: {len(after)}, {len(expected)}")
        for row, (ours, theirs) in enumerate(zip(after, expected)):
            for column, (one, other) in enumerate(zip(ours, theirs)):
                close = one == other or (isinstance(one, float) and isinstance(other, float) and abs(one - other) < 1e-9)
                expect(close, f"row {row + 1}, column {column + 1} is {other!r}, not {one!r}")

    def conforming(self, office, filter_="References*:Proposals*"):
        document = office.load("private:factory/scalc")
        report = self.folder / "office-tests.xml"
        answer = office.dispatch(document, "vnd.mervane-tests:run", gtest_output=f"xml:{report}", gtest_filter=filter_)
        expect(answer.Result == "0", f"the tests within the office pass; see {report}")
        document.close(True)
        step(f"the tests within the office pass ({filter_})")

    # --- In a window ------------------------------------------------------------------------------------------------

    def in_window(self):
        self.screen = Screen(1540, 980)
        self.office = None
        try:
            self.office = Office(self.folder, str(self.book), environment={**self.screen.environment, **self.browser()})
            self.controls = Controls(self.office, self.screen)
            self.document = wait_for(self.office.desktop.getCurrentComponent, "the workbook is open", 60)
            self.screen.wait_for_window("iris.xlsx", 60)
            window = self.document.CurrentController.Frame.ContainerWindow
            self.office.on_main_thread(lambda: window.setPosSize(0, 0, 1270, 850, 15))
            self.screen.wait_until_still()
            self.window_tests()
            self.entries_and_keys()
            self.picking()
            self.closing()
            self.other_documents()
            self.clustering()
            self.failing()
            self.stopping()
            # Its charts call it changed again whenever they are drawn, and the office would ask whether to save it.
            self.office.on_main_thread(lambda: self.document.close(True))
            expect(self.office.quit(), "the office quits by itself and without a crash")
            step("the office quits")
        except Failed:
            self.screen.picture(self.folder / "failed.png")
            raise
        finally:
            if self.office:
                self.office.kill()
            self.screen.close()

    def browser(self):
        """What stands for the desktop's browser: it writes down what it is asked to show."""
        folder = self.folder / "bin"
        folder.mkdir()
        opener = folder / "xdg-open"
        opener.write_text(f'#!/bin/sh\necho "$1" > {self.folder}/opened.txt\n')
        opener.chmod(0o755)
        return {"PATH": f"{folder}:{os.environ['PATH']}"}

    def window_tests(self):
        frame_document = self.document
        report = self.folder / "window-tests.xml"
        answer = self.office.dispatch(frame_document, "vnd.mervane-tests:run", gtest_output=f"xml:{report}",
                                      gtest_filter="Office/*")
        expect(answer.Result == "0", f"the office's option window conforms; see {report}")
        step("the option window of the office conforms in a real window")

    def open_dialog(self):
        self.screen.keys("alt+m", "Return")
        self.screen.wait_for_window("Mervane Kelvash")

    def dialog_is_open(self):
        return any("Mervane Kelvash" in name for name in self.screen.windows())

    def wait_until_closed(self):
        wait_for(lambda: not self.dialog_is_open(), "the dialog is closed")

    def enter(self, name, text):
        self.controls.click(name, ROLE_EDIT)
        self.screen.keys("ctrl+a")
        self.screen.type(text)
        self.screen.keys("Tab")
        wait_for(lambda: self.field(name) == text, f"{name} takes {text}")

    def agree(self):
        """Answers the question whether to clusterize all the same."""
        self.screen.wait_for_window("Mervane", exactly=True)
        self.screen.keys("alt+y")

    def field(self, name):
        return self.controls.text(name, ROLE_EDIT)

    def entries_and_keys(self):
        self.screen.keys("ctrl+alt+m")
        self.screen.wait_for_window("Mervane Kelvash")
        expect((self.field("Inputs:"), self.field("Outputs:")) == (INPUTS, OUTPUTS), "the ranges are proposed from the cursor")
        wait_for(lambda: self.controls.has_focus("Inputs:"), "the first field has the keyboard")
        self.screen.keys("alt+u", "ctrl+a")
        wait_for(lambda: any("a whole number from 2 to 998" in name for name in self.controls.names()), "the field tells its limits")
        self.screen.type("1")
        self.screen.keys("Tab")
        expect(self.field("Clusters:") == "3", "a refused entry shows the earlier value")
        told = [name for name in self.controls.names() if name.startswith('Clusters: "1" is not taken.')]
        expect(told and "from 2 to 998" in told[0], f"a refused entry is told with the limits: {told}")
        for name in ("Start learning rate:", "Scale values", "Start learning rate:"):
            self.screen.keys("alt+s")
            wait_for(lambda: self.controls.has_focus(name), f"a letter that two share leads on to {name}")
        self.help_and_size()
        self.screen.keys("alt+u", "ctrl+a")
        self.screen.type("7")
        self.screen.keys("Escape")
        expect(self.dialog_is_open() and self.field("Clusters:") == "3", "Escape takes back an open entry")
        names = self.controls.names()
        for name in ("Pick the range of Inputs on the sheet", "Activation function:", "Set default values", "Close"):
            expect(name in names, f"assistive tools are told of {name!r}")
        expect("Set colors" not in [name for name in names if self.is_seen(name)], "a closed group hides its items")
        self.controls.click("Output formatting parameters")
        wait_for(lambda: self.is_seen("Set colors"), "an opened group shows its items")
        self.controls.click("Output formatting parameters")
        self.keep_picture("calc-dialog.png", "Mervane Kelvash")
        self.screen.keys("Escape")
        self.wait_until_closed()
        self.open_dialog()
        self.controls.click("Output formatting parameters")
        wait_for(lambda: self.is_seen("Set colors"), "an opened group shows its items")
        self.screen.keys("Escape")
        self.wait_until_closed()
        step("entries, keys and names of the dialog are as they should be")

    def help_and_size(self):
        """The page is opened by F1 and by the button; a window that is made small keeps its fields."""
        for press in (lambda: self.screen.keys("F1"), lambda: self.controls.click("Help")):
            opened = self.folder / "opened.txt"
            opened.unlink(missing_ok=True)
            press()
            page = wait_for(lambda: opened.exists() and opened.read_text().strip(), "the help page is opened")
            expect(page.endswith("/help/en/clusterize.html"), f"the page is our own: {page}")
            expect("Ctrl+Alt+M" in pathlib.Path(page.removeprefix("file://")).read_text(), "the page is in the package")
        before = self.screen.size_of("Mervane Kelvash")
        self.screen.resize("Mervane Kelvash", 60, 60)
        wait_for(lambda: self.screen.size_of("Mervane Kelvash") > (300, 200), "a small window grows to its least size")
        left, right = self.controls.span("Inputs:")
        expect(right - left >= 100, f"fields do not vanish: {left} to {right}")
        top = self.controls.top("Inputs:")
        self.screen.keys("Page_Down")
        wait_for(lambda: self.controls.top("Inputs:") < top, "Page Down scrolls")
        self.screen.keys("Page_Up")
        wait_for(lambda: self.controls.top("Inputs:") == top, "Page Up scrolls back")
        self.screen.resize("Mervane Kelvash", *before)

    def is_seen(self, name):
        context = self.controls.find(name)
        return context is not None and context.getAccessibleStateSet().contains(30)  # VISIBLE

    def picking(self):
        self.open_dialog()
        self.controls.click("Pick the range of Inputs on the sheet")
        self.screen.wait_for_window("pick the numbers")
        self.screen.keys("ctrl+a")
        self.screen.type("$Iris.$B$2:$D$31")
        self.screen.keys("Return")
        self.screen.wait_for_window("Mervane Kelvash")
        expect(self.field("Inputs:") == "Iris!B2:D31", "the picked range stands in the dialog")
        self.controls.click("Pick the range of Inputs on the sheet")
        self.screen.wait_for_window("pick the numbers")
        self.controls.click_cell(self.document, 1, 1)
        self.controls.click_cell(self.document, 3, 8, "shift")
        self.screen.keys("Return")
        self.screen.wait_for_window("Mervane Kelvash")
        expect(self.field("Inputs:") == "Iris!B2:D9", f"a click with Shift picks to there: {self.field('Inputs:')}")
        self.controls.click("Pick the range of Inputs on the sheet")
        self.screen.wait_for_window("pick the numbers")
        self.controls.click_cell(self.document, 1, 1)
        self.screen.keys("ctrl+shift+Right", "ctrl+shift+Down", "Return")
        self.screen.wait_for_window("Mervane Kelvash")
        expect(self.field("Inputs:") == "Iris!B2:E151", f"Ctrl+Shift and arrows pick to the end: {self.field('Inputs:')}")
        self.controls.click("Pick the range of Inputs on the sheet")
        self.screen.wait_for_window("pick the numbers")
        # Asked for once more meanwhile, it says why nothing comes of that.
        asked = self.office.dispatch_beside(self.document)
        self.screen.wait_for_window("Mervane", exactly=True)
        self.screen.keys("Return")
        asked.join(10)
        expect(asked.result is not None and "already open" in asked.result.Result, f"one dialog at a time: {asked.result}")
        self.screen.activate("pick the numbers")
        self.screen.keys("Escape")
        self.screen.wait_for_window("Mervane Kelvash")
        expect(self.field("Inputs:") == "Iris!B2:E151", "a picking that is given up changes nothing")
        self.screen.keys("Escape")
        self.wait_until_closed()
        step("ranges are picked with the office's own picker")

    def closing(self):
        other = self.office.load(self.copy_of_book("other.xlsx"))
        asked = self.office.dispatch_beside(other)
        self.screen.wait_for_window("Mervane Kelvash")
        try:
            other.close(True)
            raise Failed("a document is not closed while the dialog stands before it")
        except Failed:
            raise
        except Exception:
            pass
        # Asked to quit, the office closes the documents before which no dialog stands.
        expect(not self.office.desktop.terminate(), "the office does not quit while the dialog is open")
        self.screen.keys("Escape")
        asked.join(10)
        expect(asked.result is not None and asked.result.State == 0, "a dialog that is closed clusters nothing")
        asked = self.office.dispatch_beside(other)
        self.screen.wait_for_window("Mervane Kelvash")
        self.controls.click("Pick the range of Inputs on the sheet")
        self.screen.wait_for_window("pick the numbers")
        other.close(True)
        asked.join(10)
        expect(asked.result is not None and asked.result.Result == "The document was closed.",
               f"closing the document ends a picking: {asked.result}")
        expect(self.office.is_alive(), "the office lives on")
        self.document = None
        step("closing the document or the office with the dialog open does no harm")

    def other_documents(self):
        """No key and no scrolling reaches another document, or another window of this one, behind the dialog."""
        other = self.office.load("private:factory/scalc")
        document = self.office.load(self.copy_of_book("mine.xlsx"))
        other.Sheets.getByIndex(0).Name = "Iris"
        first = other.Sheets.getByIndex(0).getCellRangeByName("A1")
        asked = self.office.dispatch_beside(document)
        self.screen.wait_for_window("Mervane Kelvash")
        self.screen.activate("Untitled")
        self.screen.type("leak")
        self.screen.scroll_down(600, 500)
        expect(first.String == "" and other.CurrentController.getFirstVisibleRow() == 0,
               f"nothing reaches another document while the dialog is open: {first.String}")
        # The office has given the keys to the dialog instead, which stands before all.
        self.screen.activate("Mervane Kelvash")
        self.screen.keys("alt+i", "ctrl+a")
        self.screen.type(INPUTS)
        self.controls.click("Pick the range of Inputs on the sheet")
        self.screen.wait_for_window("pick the numbers")
        self.screen.activate("Untitled")
        self.screen.drag(300, 300, 500, 450)
        self.screen.keys("Return")
        self.screen.wait_for_window("Mervane", exactly=True)
        names = self.controls.names()
        expect(any("was picked in another document" in name for name in names), f"a range of another document is refused: {names}")
        self.screen.keys("Return")
        self.screen.wait_for_window("Mervane Kelvash")
        expect(self.field("Inputs:") == INPUTS, "a refused range changes nothing")
        self.screen.keys("Escape")
        asked.join(10)
        self.wait_until_closed()
        self.screen.activate("Untitled")
        self.screen.type("mine")
        self.screen.keys("Return")
        wait_for(lambda: first.String == "mine", "another document takes keys again behind the dialog")
        other.close(True)
        document.close(True)
        step("other documents take no keys while the dialog is open, and no range of theirs is picked")

    def failing(self):
        """A run that meets a failure shows the report; Abort ends it."""
        document = self.office.load(self.copy_of_book("protected.xlsx"))
        sheet = document.Sheets.getByIndex(0)
        rows = tuple(tuple(float(row * factor % 97) for factor in range(3, 11)) for row in range(4000))
        sheet.getCellRangeByName("K2:R4001").setDataArray(rows)
        self.office.on_main_thread(lambda: document.CurrentController.select(sheet.getCellRangeByName("K2:R4001")))
        before = cells(document)
        asked = self.office.dispatch_beside(document)
        self.screen.wait_for_window("Mervane Kelvash")
        expect(self.field("Inputs:") == "Iris!K2:R4001", "the selected range is proposed")
        self.enter("Epochs:", "99998")
        self.enter("Clusters:", "40")
        self.controls.click("Clusterize")
        wait_for(lambda: not self.dialog_is_open(), "the long run is on")
        # What could be known has been looked at before; this comes in the middle of the run.
        sheet.protect("")
        self.screen.keys("Escape")
        self.screen.wait_for_window("Error", exactly=True)
        names = self.controls.names()
        for name in ("An error occurred in MervaneClass", "Abort", "Retry", "Ignore"):
            expect(name in names, f"the error dialog shows {name!r}: {names}")
        self.screen.picture(self.folder / "error.png")
        spans = [self.controls.span(name) for name in ("Abort", "Ignore")]
        left, right = self.controls.window_span()
        off = (spans[0][0] - left) - (right - spans[1][1])
        expect(abs(off) <= 3 and spans[0][0] > left, f"the buttons stand in the middle: {spans} of {left} to {right}")
        # The run is still on and reads the keys of the documents; these are the window's own.
        self.screen.keys("alt+r")
        self.screen.wait_for_window("Error", exactly=True)
        # Sorting is given up by the first Abort, and the listing, which meets the same failure, by the second.
        for key in ("alt+a", "Return"):
            self.screen.wait_for_window("Error", exactly=True)
            self.screen.keys(key)
            asked.join(3)
        expect(asked.result is not None, "Abort ends the run")
        expect(cells(document) == before, "nothing has been written on a protected sheet")
        document.setModified(False)
        document.close(True)
        step("a failure is reported in the error dialog and aborted there")

    def stopping(self):
        """A run that would take minutes is stopped by Escape; what it has learnt is written."""
        document = self.office.load(self.copy_of_book("long.xlsx"))
        rows = tuple(tuple(float(row * factor % 97) for factor in range(3, 11)) for row in range(4000))
        document.Sheets.getByIndex(0).getCellRangeByName("K2:R4001").setDataArray(rows)
        self.office.on_main_thread(lambda: self.office.dispatch(document, ".uno:NewWindow"))
        self.screen.wait_for_window("long.xlsx : 2")
        asked = self.office.dispatch_beside(document, Inputs="$Iris.$K$2:$R$4001", Outputs="$Iris.$G$2", Clusters=40,
                                            Epochs=99998, DrawCharts=False)
        # A run records its changes as one step, and the office none meanwhile.
        wait_for(lambda: not document.IsUndoEnabled, "the long run is on")
        expect(asked.result is None, f"the long run takes its time: {asked.result}")
        try:
            document.close(True)
            raise Failed("a document is not closed while a run is on")
        except Failed:
            raise
        except Exception:
            pass
        self.screen.picture(self.folder / "running.png")
        self.screen.activate("long.xlsx : 2")
        self.screen.type("leak")
        self.screen.keys("Escape")
        asked.join(20)
        expect(asked.result is not None and asked.result.State == 1, f"Escape ends a run with its results: {asked.result}")
        expect(document.Sheets.getByIndex(0).getCellRangeByName("G1").String == "Clusters", "a stopped run writes its results")
        expect(not any("leak" in str(value) for row in cells(document) for value in row), "no window of the document takes keys during a run")
        document.close(True)
        step("Escape stops a run")

    def clustering(self):
        self.document = self.office.load(self.book)
        window = self.document.CurrentController.Frame.ContainerWindow
        self.office.on_main_thread(lambda: window.setPosSize(2, 30, 1500, 900, 15))
        self.screen.wait_for_window("iris.xlsx")
        controller = self.document.CurrentController
        self.office.on_main_thread(lambda: self.office.create("com.sun.star.frame.DispatchHelper").executeDispatch(
            controller.Frame, ".uno:Sidebar", "", 0, ()))
        self.screen.wait_until_still()
        self.open_dialog()
        self.controls.click("Clusterize")
        undo = self.document.UndoManager
        wait_for(lambda: "Clusterize" in undo.getAllUndoActionTitles(), "the run has been made", 30)
        wait_for(lambda: not self.dialog_is_open(), "the dialog is gone after the run")
        expect(cells(self.document) == self.result, "a run in the window gives what it gives without one")
        self.keep_result_picture()
        self.open_dialog()
        proposed = (self.field("Inputs:"), self.field("Outputs:"))
        expect(proposed == (INPUTS, OUTPUTS), f"the next run is proposed for the same ranges: {proposed}")
        after_run = cells(self.document)
        self.controls.click("Clusterize")
        self.screen.wait_for_window("Mervane", exactly=True)
        self.keep_picture("calc-question.png", "Mervane$")
        self.screen.keys("Return")
        wait_for(lambda: "Mervane" not in self.screen.windows(), "the question has gone")
        expect(self.dialog_is_open() and cells(self.document) == after_run, "No, the default, runs nothing and goes back to the dialog")
        self.enter("Clusters:", "4")
        self.controls.click("Clusterize")
        self.agree()
        self.wait_until_closed()
        wait_for(lambda: cells(self.document) != after_run and self.document.IsUndoEnabled, "Yes runs it", 30)
        self.screen.keys("ctrl+z")
        wait_for(undo.isRedoPossible, "one undo takes the second run back")
        expect(cells(self.document) == after_run, "what the second run wrote over is there again")
        self.screen.keys("ctrl+y")
        wait_for(undo.isUndoPossible, "the run is done again")
        self.screen.keys("ctrl+z")
        wait_for(undo.isRedoPossible, "and taken back")
        self.screen.wait_until_still()
        self.screen.picture(self.folder / "undone.png")
        step("clicks in a real window cluster the sheet")

    def keep_result_picture(self):
        """The beginning of the sheet with the charts, and below it the end with the blocks."""
        controller = self.document.CurrentController
        parts = []
        for row, name in ((0, "top.png"), (128, "bottom.png")):
            self.office.on_main_thread(lambda: controller.setFirstVisibleRow(row))
            self.screen.wait_until_still()
            parts.append(self.folder / name)
            self.screen.picture(parts[-1], "iris.xlsx")
        made = self.folder / "calc-result.png"
        subprocess.run(["convert", "(", str(parts[0]), "-crop", "x740+0+0", "+repage", ")", "(", "-size", "16x12", "xc:white", ")",
                        "(", str(parts[1]), "-gravity", "South", "-crop", "x420+0+0", "+repage", ")", "-background", "white",
                        "-append", "-resize", "1100x", "-colors", "128", f"PNG8:{made}"], check=True)
        self.office.on_main_thread(lambda: controller.setFirstVisibleRow(0))
        self.compare_picture("calc-result.png")

    def keep_picture(self, name, window=None):
        self.screen.picture(self.folder / name, window)
        self.compare_picture(name)

    def compare_picture(self, name):
        made = self.folder / name
        if self.pictures:
            shutil.copy(made, self.pictures / name)
        kept = self.sources / "docs/images" / name
        if not kept.exists():
            return
        small = ["-resize", "160x120!", "-colorspace", "Gray"]
        measured = subprocess.run(["compare", "-metric", "RMSE", *small, str(kept), str(made), "null:"],
                                  capture_output=True, text=True, check=False).stderr
        difference = float(measured.split("(")[1].split(")")[0])
        expect(difference < 0.12, f"{name} looks like the kept picture: {difference:.3f} apart")


def main():
    driver = Driver(*sys.argv[1:])
    try:
        driver.install()
        driver.without_window()
        driver.in_another_locale()
        driver.in_window()
        driver.remove()
    except Failed as trouble:
        print(f"FAILED: {trouble}")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
