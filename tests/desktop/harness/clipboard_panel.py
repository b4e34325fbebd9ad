"""The clipboard panel, as the display and assistive software tell of it."""

from gi.repository import GLib
from Xlib import error

from .history import History
from .waiting import wait_until

SHORTCUT = "super+shift+v"


def window_titled(x, title):
    """The program's window of that title, None when there is none."""
    for window in x.windows_of_class("quillbar"):
        try:
            if x.text_property(window, "_NET_WM_NAME") == title:
                return window
        except error.XError:  # it has gone meanwhile
            continue
    return None


class ClipboardPanel:
    TITLE = "Quillbar Clipboard"

    def __init__(self, desktop):
        self.desktop = desktop
        self.x = desktop.x

    @property
    def window(self):
        return window_titled(self.x, self.TITLE)

    def has_keyboard(self):
        window = self.window
        return window is not None and self.x.focus_id() == window.id

    def open(self):
        self.x.press_key(SHORTCUT)
        self.wait_until_open()

    def wait_until_open(self):
        wait_until(self.has_keyboard, what="the clipboard panel is open and has the keyboard")

    def wait_until_closed(self):
        wait_until(lambda: self.window is None, what="the clipboard panel is closed")


def launch_with(desktop, *texts, **settings):
    """The program with these texts in its history, the last one on top."""
    desktop.configure(**settings)
    app = desktop.launch()
    history = History(desktop)
    for text in texts:
        desktop.copy_text(text)
        history.latest(text=text)
    return app


class PanelReader:
    """What assistive software finds in the open panel."""

    def __init__(self, panel, app):
        self.panel = panel
        self.app = app
        self.root = panel.desktop.accessible(app)

    def all(self, role=None):
        """What is on the screen, in the program's order."""
        windows = [node for node in self.root.children if node.name == ClipboardPanel.TITLE]
        nodes = [node for window in windows for _, node in window.walk()]
        return [node for node in nodes if node.showing and role in (None, node.role)]

    def names(self, role=None):
        return [node.name for node in self.all(role)]

    def wait_for(self, look, what):
        """What `look` returns once that is true; a node that it looks at may go."""

        def looked():
            try:
                return look()
            except GLib.Error:
                return None

        return wait_until(looked, what=what)

    def wait_for_names(self, role, names):
        self.wait_for(lambda: self.names(role) == names, f"the {role}s are {names}")

    def find(self, name, role=None):
        """The node that is called or does that, once it is on the screen."""
        return self.wait_for(
            lambda: next((node for node in self.all(role) if name in (node.name, node.description)), None),
            f"there is a {role or 'control'} {name!r}",
        )

    def click(self, name, role=None):
        """With the pointer, once nothing moves any more."""
        node = self.find(name, role)
        self.app.wait_until_idle()
        x, y, width, height = node.extents
        self.panel.x.click(x + width // 2, y + height // 2)
