"""Quillbar's own window, as the display tells of it."""

from .waiting import wait_until
from .x11 import Rect


class Panel:
    """Quillbar's panel window, found anew at each look because the program may replace it."""

    CLASS = "quillbar"
    TITLE = "Quillbar"

    def __init__(self, x):
        self._x = x

    def windows(self):
        return [
            window
            for window in self._x.windows_of_class(self.CLASS)
            if self._x.text_property(window, "WM_NAME") == self.TITLE
            or self._x.text_property(window, "_NET_WM_NAME") == self.TITLE
        ]

    def windows_of(self, pid):
        """Those of that process: one that has just been killed may have left its own."""
        return [each for each in self.windows() if list(self._x.property(each, "_NET_WM_PID") or []) == [pid]]

    @property
    def window(self):
        windows = self.windows()
        assert len(windows) == 1, f"{len(windows)} panel windows instead of one"
        return windows[0]

    def wait_until_shown(self, timeout=30.0):
        wait_until(self.windows, timeout, "the panel is on the screen")
        return self

    @property
    def geometry(self):
        return self._x.geometry(self.window)

    @property
    def bounding_region(self):
        return self._x.bounding_region(self.window)

    @property
    def input_region(self):
        return self._x.input_region(self.window)

    def takes_clicks(self):
        """Whether all of the window takes pointer events, which it does only while open."""
        geometry = self.geometry
        return self.input_region == [Rect(0, 0, geometry.width, geometry.height)]

    def wait_until_open(self):
        wait_until(self.takes_clicks, what="the panel is open")

    def wait_until_closed(self):
        wait_until(lambda: not self.takes_clicks(), what="the panel is closed")
