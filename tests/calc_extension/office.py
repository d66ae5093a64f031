"""An office process of the tests' own, with a private profile, and what a test asks of it."""

import os
import pathlib
import subprocess
import threading
import time

import uno
import unohelper
from com.sun.star.awt import XCallback
from com.sun.star.beans import PropertyValue

COMMAND = "vnd.mervane:clusterize"
# With these the office asks to be started again, as it does once for a new profile.
RESTARTS = (79, 81)


class Failed(Exception):
    pass


def expect(condition, sentence):
    if not condition:
        raise Failed(sentence)


def wait_for(what, sentence, seconds=20.0):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        try:
            result = what()
        except Exception:  # The office may be in the middle of something.
            result = None
        if result:
            return result
        time.sleep(0.1)
    raise Failed(f"after {seconds} s still not: {sentence}")


def properties(**values):
    result = []
    for name, value in values.items():
        one = PropertyValue()
        one.Name, one.Value = name, value
        result.append(one)
    return tuple(result)


class _Call(unohelper.Base, XCallback):
    def __init__(self, work):
        self.work, self.result, self.trouble, self.done = work, None, None, threading.Event()

    def notify(self, _):
        try:
            self.result = self.work()
        except Exception as trouble:
            self.trouble = trouble
        self.done.set()


class Office:
    """One soffice process; ended by `quit`, or killed where that fails."""

    def __init__(self, folder, *arguments, environment=None):
        self.profile = pathlib.Path(folder) / "profile"
        self.pipe = f"mervane{os.getpid()}"
        self.log = open(pathlib.Path(folder) / "office.log", "ab")
        self.command = ["/usr/lib/libreoffice/program/soffice.bin", f"-env:UserInstallation={self.profile.as_uri()}",
                        "--norestore", "--nologo", "--nolockcheck", "--nofirststartwizard",
                        f"--accept=pipe,name={self.pipe};urp", *arguments]
        self.environment = {**os.environ, **(environment or {})}
        self._start()
        local = uno.getComponentContext()
        resolver = local.ServiceManager.createInstance("com.sun.star.bridge.UnoUrlResolver")
        address = f"uno:pipe,name={self.pipe};urp;StarOffice.ComponentContext"

        def answer():
            if self.process.poll() in RESTARTS:
                self._start()
            return resolver.resolve(address)

        self.context = wait_for(answer, "the office answers", 60)
        self.desktop = self.create("com.sun.star.frame.Desktop")

    def _start(self):
        self.process = subprocess.Popen(self.command, stdout=self.log, stderr=self.log, stdin=subprocess.DEVNULL,
                                        env=self.environment)

    def create(self, service):
        return self.context.ServiceManager.createInstance(service)

    def configure(self, node, name, value):
        settings = self.create("com.sun.star.configuration.ConfigurationProvider").createInstanceWithArguments(
            "com.sun.star.configuration.ConfigurationUpdateAccess", properties(nodepath=node))
        settings.setPropertyValue(name, value)
        settings.commitChanges()

    def on_main_thread(self, work, seconds=60):
        """Opening a window from another thread can bring the office to a halt, so such calls go over to its own."""
        call = _Call(work)
        self.create("com.sun.star.awt.AsyncCallback").addCallback(call, None)
        expect(call.done.wait(seconds), "the office's main thread answers")
        if call.trouble:
            raise call.trouble
        return call.result

    def load(self, path, **arguments):
        url = path if "://" in str(path) or str(path).startswith("private:") else pathlib.Path(path).as_uri()
        return self.on_main_thread(lambda: self.desktop.loadComponentFromURL(url, "_blank", 0, properties(**arguments)))

    def dispatch(self, document, url=COMMAND, **options):
        frame = document.CurrentController.Frame
        helper = self.create("com.sun.star.frame.DispatchHelper")
        return helper.executeDispatch(frame, url, "", 0, properties(**options))

    def dispatch_beside(self, document, url=COMMAND, **options):
        """The same on a thread of its own; what comes of it is in `result` of the answer."""
        def work():
            try:
                thread.result = self.dispatch(document, url, **options)
            except Exception as trouble:
                thread.result = trouble

        thread = threading.Thread(target=work, daemon=True)
        thread.result = None
        thread.start()
        return thread

    def is_alive(self):
        return self.process.poll() is None

    def quit(self):
        """@return whether the office ended by itself and without a crash"""
        try:
            self.on_main_thread(self.desktop.terminate, 20)
        except Exception:
            pass  # The connection breaks with the process.
        try:
            return self.process.wait(20) == 0
        except subprocess.TimeoutExpired:
            self.kill()
            return False

    def kill(self):
        if self.is_alive():
            self.process.kill()
            self.process.wait(10)


def cells(document, sheet=0):
    """All cells of the used area, numbers as numbers."""
    cursor = document.Sheets.getByIndex(sheet).createCursor()
    cursor.gotoStartOfUsedArea(False)
    cursor.gotoEndOfUsedArea(True)
    return [list(row) for row in cursor.getDataArray()]


def looks(sheet):
    """Formats and widths of the first cells, row by row."""
    names = ("CellBackColor", "CharWeight", "CharColor", "NumberFormat", "HoriJustify", "CharFontName", "CharHeight")
    formats = [[str(sheet.getCellByPosition(column, row).getPropertyValue(name)) for name in names]
               for row in (0, 1, 60, 149, 155) for column in (0, 1, 4, 6, 8)]
    borders = [sheet.getCellByPosition(column, row).TopBorder.OuterLineWidth for row in (0, 1, 152) for column in range(9)]
    return formats, borders, [sheet.Columns.getByIndex(column).Width for column in range(12)]
