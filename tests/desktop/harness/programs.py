"""Programs of other makers that copy and paste, driven as their users drive them."""

import json
import shlex
import time

from Xlib import X, error

from .waiting import wait_until


class Program:
    """One with a window, which has the keyboard once this is made."""

    def __init__(self, desktop, name, argv, env=None):
        self.desktop = desktop
        before = set(desktop.x.managed_ids())
        self.process = desktop.start(name, argv, env)
        self.id = wait_until(
            lambda: set(desktop.x.managed_ids()) - before, 30.0, f"{name} has a window"
        ).pop()
        self.window = desktop.x.connection.create_resource_object("window", self.id)
        wait_until(lambda: desktop.x.active_id() == self.id, 30.0, f"{name} has the keyboard")

    @property
    def title(self):
        # In one request: a title that shrinks between two makes the second an error.
        name = self.desktop.x.atom("_NET_WM_NAME")
        answer = self.window.get_full_property(name, X.AnyPropertyType, 1 << 14)
        return answer.value.decode() if answer else ""

    @property
    def place(self):
        return self.desktop.x.geometry(self.window)

    def click(self, x, y, button=1):
        """At a place of the window."""
        self.desktop.x.click(self.place.x + x, self.place.y + y, button)

    def press(self, *chords):
        for chord in chords:
            self.desktop.x.press_key(chord)

    def do_until(self, act, look, what):
        """Does it, and again where the program was not ready for it yet, until `look` finds it done."""
        deadline = time.monotonic() + 30.0
        while True:
            act()
            try:
                return wait_until(look, 2.0, what)
            except AssertionError:
                if time.monotonic() > deadline:
                    raise


class Editor(Program):
    """With one file, which tells what is in it once it has been saved."""

    def __init__(self, desktop, name, argv, text):
        self.path = desktop.home / f"{name}.txt"
        self.path.write_text(text)
        super().__init__(desktop, name, [*argv, self.path])

    def wait_for(self, text):
        """Until it has been changed and that is all of its text; a line feed at the end is the editor's own."""
        wait_until(lambda: "*" in self.title, what="the editor's text has changed")
        self.do_until(
            lambda: self.press("ctrl+s"),
            lambda: self.path.read_text().removesuffix("\n") == text,
            f"the editor holds {text!r}",
        )


def gtk_editor(desktop, text=""):
    return Editor(desktop, "mousepad", ["mousepad", "--disable-server"], text)


def qt_editor(desktop, text=""):
    folder = desktop.config_home / "featherpad"
    folder.mkdir(exist_ok=True)
    # A save would change the text.
    (folder / "fp.conf").write_text("[text]\nappendEmptyLine=false\n")
    return Editor(desktop, "featherpad", ["featherpad"], text)


class Terminal(Program):
    """What is typed and pasted into it goes to a program that keeps it."""

    def __init__(self, desktop, name, argv):
        self.typed = desktop.root / "typed"
        reader = desktop.root / "reader"
        reader.write_text(f"#!/bin/sh\nstty raw -echo\nexec cat > {shlex.quote(str(self.typed))}\n")
        reader.chmod(0o755)
        super().__init__(desktop, name, [*argv, "-e", reader])
        wait_until(self.typed.exists, 30.0, "the program in the terminal reads")

    def wait_for(self, text):
        wait_until(lambda: self.typed.read_text() == text, what=f"{text!r} has been typed")


def xterm(desktop):
    """With the paste chord of most terminals."""
    chord = "XTerm.VT100.translations: #override Ctrl Shift <Key>V: insert-selection(CLIPBOARD)"
    return Terminal(desktop, "xterm", ["xterm", "-xrm", chord])


def lxterminal(desktop):
    return Terminal(desktop, "lxterminal", ["lxterminal", "--no-remote"])


def file_manager(desktop, folder):
    return Program(desktop, "pcmanfm", ["pcmanfm", "--new-win", folder])


_BROWSER_PREFERENCES = {
    "browser.shell.checkDefaultBrowser": False,
    "browser.startup.homepage_override.mstone": "ignore",
    "datareporting.policy.dataSubmissionEnabled": False,
    "network.captive-portal-service.enabled": False,
    "network.connectivity-service.enabled": False,
    "trailhead.firstrun.didSeeAboutWelcome": True,
}


class Browser(Program):
    """On a page whose top left corner is of the colour `corner`; places are those of the page."""

    def __init__(self, desktop, page, corner):
        profile = desktop.home / "browser"
        profile.mkdir()
        (profile / "user.js").write_text(
            "".join(
                f"user_pref({json.dumps(name)}, {json.dumps(value)});\n"
                for name, value in _BROWSER_PREFERENCES.items()
            )
        )
        argv = ["firefox-esr", "--no-remote", "--profile", profile, f"file://{page}"]
        super().__init__(desktop, "firefox", argv)
        self.top = wait_until(lambda: self._page_top(corner), 60.0, "the page is shown")

    def _page_top(self, colour):
        try:
            picture = self.desktop.x.screenshot(self.place)
        except error.XError:  # it is on its way to its place, in part off the screen
            return None
        return next((y for y in range(picture.height) if picture.getpixel((2, y)) == colour), None)

    def click(self, x, y, button=1):
        super().click(x, self.top + y, button)

    def choose(self, x, y, key):
        """The entry with that access key of the context menu."""
        before = self._shown()

        # A browser shows its page before it hears every click on it.
        def is_open():
            self.click(x, y, button=3)
            try:
                return wait_until(lambda: self._shown() - before, 4.0, "the menu is open")
            except AssertionError:
                self.press("Escape")
                return False

        wait_until(is_open, 40.0, what="the menu is open")
        # It is on the screen before it hears keys. One that hears it closes.
        self.do_until(lambda: self.press(key), lambda: not self._shown() - before, "the entry is chosen")

    def _shown(self):
        return {window.id for window in self.desktop.x.windows_of_class("firefox-esr")}
