"""A virtual screen with a window manager, and a user with a mouse and a keyboard before it."""

import subprocess
import time

from office import Failed, wait_for

ROLE_TEXT, FOCUSED = 60, 11  # com.sun.star.accessibility


class Screen:
    def __init__(self, width=1280, height=900):
        reader, writer = __import__("os").pipe()
        self.server = subprocess.Popen(["Xvfb", "-displayfd", str(writer), "-screen", "0", f"{width}x{height}x24", "-nolisten", "tcp"],
                                       pass_fds=[writer], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        __import__("os").close(writer)
        with open(reader) as numbers:
            self.display = ":" + numbers.readline().strip()
        self.environment = {"DISPLAY": self.display, "SAL_USE_VCLPLUGIN": "gtk3", "GDK_BACKEND": "x11", "NO_AT_BRIDGE": "1"}
        self.manager = self._start("openbox")

    def _start(self, *command):
        import os
        return subprocess.Popen(command, env={**os.environ, **self.environment}, stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL)

    def _run(self, *command):
        import os
        return subprocess.run(command, env={**os.environ, **self.environment}, check=False, capture_output=True, text=True).stdout

    def close(self):
        for process in (self.manager, self.server):
            process.terminate()
            process.wait(10)

    def keys(self, *names):
        for name in names:
            self._run("xdotool", "key", name)
            time.sleep(0.25)

    def type(self, text):
        self._run("xdotool", "type", text)
        time.sleep(0.25)

    def click(self, x, y):
        self._run("xdotool", "mousemove", str(x), str(y), "click", "1")
        time.sleep(0.4)

    def click_with(self, key, x, y):
        self._run("xdotool", "keydown", key)
        self.click(x, y)
        self._run("xdotool", "keyup", key)

    def resize(self, window, width, height):
        self._run("xdotool", "search", "--onlyvisible", "--name", window, "windowsize", str(width), str(height))
        time.sleep(0.5)

    def size_of(self, window):
        numbers = self._run("xdotool", "search", "--onlyvisible", "--name", window).split()
        shape = dict(line.split("=") for line in self._run("xdotool", "getwindowgeometry", "--shell", numbers[-1]).split())
        return int(shape["WIDTH"]), int(shape["HEIGHT"])

    def drag(self, left, top, right, bottom):
        self._run("xdotool", "mousemove", str(left), str(top), "mousedown", "1")
        time.sleep(0.3)
        self._run("xdotool", "mousemove", str((left + right) // 2), str((top + bottom) // 2), "mousemove", str(right), str(bottom),
                  "mouseup", "1")
        time.sleep(0.4)

    def scroll_down(self, x, y):
        self._run("xdotool", "mousemove", str(x), str(y), "click", "5", "click", "5", "click", "5")
        time.sleep(0.4)

    def windows(self):
        return self._run("xdotool", "search", "--onlyvisible", "--name", ".", "getwindowname", "%@").splitlines()

    def wait_for_window(self, name, seconds=20, exactly=False):
        wait_for(lambda: any(name == one if exactly else name in one for one in self.windows()), f"a window called {name}", seconds)
        time.sleep(0.5)

    def activate(self, name):
        """Brings a window to the front and gives it the keyboard, as a click into it does."""
        self._run("xdotool", "search", "--onlyvisible", "--name", name, "windowactivate", "--sync")
        time.sleep(0.4)

    def wait_until_still(self, seconds=15.0):
        """Until nothing on the screen changes any more; something may go on blinking, so that this ends in any case."""
        end = time.monotonic() + seconds
        before = None
        while time.monotonic() < end:
            now = self._run("sh", "-c", "import -silent -window root -depth 8 gray:- | md5sum")
            if now == before:
                return
            before = now
            time.sleep(0.5)

    def picture(self, path, window=None):
        if window is None:
            self._run("import", "-window", "root", str(path))
            return
        number = self._run("xdotool", "search", "--onlyvisible", "--name", window).split()
        if not number:
            raise Failed(f"no window called {window}")
        self._run("import", "-frame", "-window", number[-1], str(path))


class Controls:
    """The controls of the office's active window, found by the names that assistive tools tell."""

    def __init__(self, office, screen):
        self.toolkit = office.create("com.sun.star.awt.Toolkit")
        self.screen = screen

    def _walk(self, accessible):
        context = accessible.getAccessibleContext()
        yield context
        for i in range(min(context.getAccessibleChildCount(), 200)):
            child = context.getAccessibleChild(i)
            if child is not None:
                yield from self._walk(child)

    def find(self, name, role=None):
        window = self.toolkit.getActiveTopWindow()
        if window is None:
            return None
        for context in self._walk(window):
            if context.getAccessibleName() == name and (role is None or context.getAccessibleRole() == role):
                return context
        return None

    def names(self):
        window = self.toolkit.getActiveTopWindow()
        return [] if window is None else [one.getAccessibleName() for one in self._walk(window)]

    def text(self, name, role):
        return wait_for(lambda: self.find(name, role), f"a control called {name}").getText()

    def click(self, name, role=None):
        context = wait_for(lambda: self.find(name, role), f"a control called {name}")
        place, size = context.getLocationOnScreen(), context.getSize()
        self.screen.click(place.X + size.Width // 2, place.Y + size.Height // 2)

    def has_focus(self, name):
        window = self.toolkit.getActiveTopWindow()
        return window is not None and any(one.getAccessibleName() == name and one.getAccessibleStateSet().contains(FOCUSED)
                                          for one in self._walk(window))

    def top(self, name):
        return wait_for(lambda: self.find(name, ROLE_TEXT), f"a field called {name}").getLocationOnScreen().Y

    def click_cell(self, document, column, row, key=None):
        """A cell of the shown sheet that is in sight, by column and row from 0."""
        if not key:
            # Where cells stand on the screen is told right of a window that has been clicked into.
            self._click_cell(document, column, row)
        self._click_cell(document, column, row, key)

    def _click_cell(self, document, column, row, key=None):
        window = document.CurrentController.Frame.ContainerWindow
        grid = wait_for(lambda: next((one for one in self._walk(window) if hasattr(one, "getAccessibleCellAt")), None), "the sheet")
        cell = grid.getAccessibleCellAt(row, column).getAccessibleContext()
        place, size = cell.getLocationOnScreen(), cell.getSize()
        x, y = place.X + size.Width // 2, place.Y + size.Height // 2
        if key:
            self.screen.click_with(key, x, y)
        else:
            self.screen.click(x, y)

    def span(self, name):
        """Where a control begins and ends on the screen, from left to right."""
        context = wait_for(lambda: self.find(name), f"a control called {name}")
        left = context.getLocationOnScreen().X
        return left, left + context.getSize().Width

    def window_span(self):
        context = self.toolkit.getActiveTopWindow().getAccessibleContext()
        left = context.getLocationOnScreen().X
        return left, left + context.getSize().Width
