"""One LibreOffice without a window, with a profile of its own, spoken to over a pipe."""

import os
import shutil
import signal
import subprocess
import tempfile
import time
import uuid

PROGRAM = shutil.which("soffice") or "/usr/lib/libreoffice/program/soffice"


def missing():
    """Why LibreOffice cannot be asked here; nothing where it can."""
    if not os.path.exists(PROGRAM):
        return "LibreOffice is not installed (package libreoffice-calc)"
    try:
        import uno  # noqa: F401
    except ImportError:
        return "LibreOffice's bridge to Python is not installed (package python3-uno)"
    return None


def value(name, content):
    from com.sun.star.beans import PropertyValue

    result = PropertyValue()
    result.Name, result.Value = name, content
    return result


class Office:
    def __enter__(self):
        self.folder = tempfile.mkdtemp(prefix="office")
        pipe = f"mervane{uuid.uuid4().hex}"
        arguments = [
            PROGRAM, f"-env:UserInstallation=file://{self.folder}/profile", "--headless", "--norestore", "--nologo",
            "--nofirststartwizard", f"--accept=pipe,name={pipe};urp;",
        ]  # fmt: skip
        # A group of its own, since the program that is started starts another one.
        self.process = subprocess.Popen(arguments, start_new_session=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)  # fmt: skip
        try:
            self.desktop = self.connect(pipe)
        except BaseException:
            self.__exit__()
            raise
        return self

    def connect(self, pipe):
        import uno
        from com.sun.star.connection import NoConnectException

        context = uno.getComponentContext()
        resolver = context.ServiceManager.createInstanceWithContext("com.sun.star.bridge.UnoUrlResolver", context)
        limit = time.monotonic() + 120
        while True:
            try:
                remote = resolver.resolve(f"uno:pipe,name={pipe};urp;StarOffice.ComponentContext")
                return remote.ServiceManager.createInstanceWithContext("com.sun.star.frame.Desktop", remote)
            except NoConnectException:
                if self.process.poll() is not None:
                    raise RuntimeError(f"LibreOffice ended at its start with {self.process.returncode}") from None
                if time.monotonic() > limit:
                    raise RuntimeError("LibreOffice does not answer") from None
                time.sleep(0.2)

    def open(self, path):
        """A document; a file that needs a repair is not opened, since nobody consents to one."""
        document = self.desktop.loadComponentFromURL("file://" + path, "_blank", 0, (value("Hidden", True),))
        if document is None:
            raise AssertionError(f"LibreOffice does not open {path}")
        return document

    def new(self):
        return self.desktop.loadComponentFromURL("private:factory/scalc", "_blank", 0, (value("Hidden", True),))

    @staticmethod
    def save(document, path):
        document.storeToURL("file://" + path, (value("FilterName", "Calc MS Excel 2007 XML"),))

    def __exit__(self, *_):
        try:
            self.desktop.terminate()
            self.process.wait(20)
        except Exception:
            pass
        try:
            os.killpg(self.process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        self.process.wait()
        shutil.rmtree(self.folder, ignore_errors=True)
