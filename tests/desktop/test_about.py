"""The About window, kept by the program between its showings, under real window managers."""

import pytest

from harness.waiting import wait_until

TITLE = "About Quillbar"


class About:
    def __init__(self, desktop, bar):
        self.x = desktop.x
        self.bar = bar

    def choose(self):
        """The menu's entry."""
        entries = self.bar.menu().GetLayout(0, -1, [])[1][2]
        number = next(int(each[0]) for each in entries if each[1].get("label") == TITLE)
        self.bar.menu().Event(number, "clicked", "", 0)

    @property
    def window(self):
        for number in self.x.managed_ids():
            window = self.x.connection.create_resource_object("window", number)
            if self.x.text_property(window, "_NET_WM_NAME") == TITLE:
                return window
        return None

    def has_keyboard(self):
        window = self.window
        return window is not None and self.x.active_id() == window.id == self.x.focus_id()

    def wait_until_in_front(self):
        wait_until(self.has_keyboard, what="the About window has the keyboard")

    @property
    def place(self):
        return self.x.geometry(self.window)

    def buttons(self):
        """What the manager is told that its buttons may do."""
        flags, functions = self.x.property(self.window, "_MOTIF_WM_HINTS")[:2]
        assert flags & 1 and not functions & 1, "it says which"
        return {name for name, bit in {"minimize": 8, "maximize": 16, "close": 32}.items() if functions & bit}

    def move_to(self, x, y):
        before = self.place
        self.window.configure(x=x, y=y)
        self.x.connection.sync()
        # Managers add their frame in ways of their own.
        wait_until(lambda: self.place != before and abs(self.place.x - x) < 40, what="the window has moved")


@pytest.mark.parametrize("desktop", [{"wm": "openbox"}, {"wm": "xfwm4"}, {"wm": "mutter"}], indirect=True)
def test_it_comes_back_where_it_was_put_and_in_front(desktop, bar):
    app = desktop.launch()
    about = About(desktop, bar)
    about.choose()
    about.wait_until_in_front()
    assert (about.place.width, about.place.height) == (320, 230)
    app.wait_until_idle()
    assert about.buttons() == {"close"}
    about.move_to(120, 140)
    app.wait_until_idle()
    first = about.place
    desktop.x.press_key("Escape")
    wait_until(lambda: about.window is None, what="Escape closes the About window")
    about.choose()
    about.wait_until_in_front()
    wait_until(lambda: about.place == first, what="it is back at its place")

    about.move_to(600, 300)
    app.wait_until_idle()
    second = about.place
    desktop.client(title="other").activate()
    wait_until(lambda: not about.has_keyboard(), what="another window is in front")
    about.choose()
    about.wait_until_in_front()
    app.wait_until_idle()
    assert about.place == second
