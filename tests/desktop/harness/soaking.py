"""Uses the panel over and over, as fast as it can be used, and tells what that costs in memory."""

from .waiting import wait_until

MODES = ("Timer", "Pomodoro", "Stopwatch")
# Blue of a spot of the mode switcher: the capsule of the chosen mode is far above, the rest far below.
CAPSULE_BLUE = 50


class Soak:
    """Of a `desktop` on which the program `app` runs, at true speed or hurried, its accent the default one."""

    def __init__(self, desktop, app):
        self.desktop = desktop
        self.app = app
        self.switches = 0
        self._spots = None

    def open_and_close(self):
        self.desktop.open_panel()
        self.desktop.point_away()
        self.desktop.panel.wait_until_closed()

    def click_next_mode(self):
        """Choose the next mode in the open panel; its place."""
        self.switches += 1
        spot = self._spots[self.switches % len(MODES)]
        self.desktop.x.click(*spot)
        return spot

    def switch_mode(self):
        """Choose the next mode with a click, and wait until the capsule has come to it."""
        if not self.desktop.panel.takes_clicks():
            self.desktop.open_panel()
            self.app.wait_until_idle()
        if self._spots is None:
            self._spots = self._find_spots()
        spot = self.click_next_mode()
        wait_until(lambda: self.desktop.x.pixel(*spot)[2] > CAPSULE_BLUE, what="the mode is the chosen one")

    def _find_spots(self):
        """The modes' places, left of their texts, in the open panel, once the timer has been chosen in it."""
        self.desktop.accessible(self.app).find(name="Timer", role="radio button").press()
        self.app.wait_until_idle()
        extents = {node.name: node.extents for _, node in self.desktop.accessible(self.app).walk()}
        return [(extents[mode][0] + 8, extents[mode][1] + extents[mode][3] // 2) for mode in MODES]

    def memory_at_rest(self):
        """In KiB, with the panel open or closed as it is: a closed one needs less, but may leave the heap
        with a hole of a picture's size."""
        self.app.wait_until_idle()
        return self.app.own_memory_kib()
