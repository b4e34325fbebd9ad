"""Which program is in front, with real programs and desktop files made for the test."""

import os
import pathlib

import pytest
from PIL import Image
from Xlib import X

from harness.waiting import wait_until

HELPER = pathlib.Path(
    os.environ.get("QUILLBAR_FRONT_APPLICATION")
    or pathlib.Path(__file__).parents[2] / "build" / "release" / "bin" / "quillbar_front_application"
)

ICON_THEME = """[Icon Theme]
Name=Hicolor
Comment=Only this
Directories=48x48/apps

[48x48/apps]
Size=48
Type=Fixed
"""


class FrontApplication:
    """The helper on a desktop whose installed programs are those of the test."""

    def __init__(self, desktop, arguments=(), environment=None):
        self.desktop = desktop
        self.data = desktop.root / "installed"
        (self.data / "applications").mkdir(parents=True, exist_ok=True)
        self.arguments = arguments
        self.environment = {"XDG_DATA_DIRS": str(self.data), **(environment or {})}
        self.process = None

    def install(self, name, **values):
        """A desktop file; it appears under its name at once, as a package manager's does."""
        lines = {"Type": "Application", "Name": name, **values}
        path = self.data / "applications" / f"{name}.desktop"
        path.parent.mkdir(exist_ok=True)
        new = path.with_suffix(".new")
        new.write_text("[Desktop Entry]\n" + "".join(f"{key}={value}\n" for key, value in lines.items()))
        new.rename(path)

    def install_icon(self, name):
        theme = self.data / "icons" / "hicolor"
        (theme / "48x48" / "apps").mkdir(parents=True)
        (theme / "index.theme").write_text(ICON_THEME)
        Image.new("RGB", (48, 48), "red").save(theme / "48x48" / "apps" / f"{name}.png")

    def start(self):
        self.process = self.desktop.start("front-application", [HELPER, *self.arguments], self.environment)
        wait_until(lambda: self.lines, what="the helper tells the first program")

    @property
    def lines(self):
        """(identifier, name, width of the icon) of each program that came to the front."""
        return [tuple(line.split("\t")) for line in self.process.output_lines if "\t" in line]

    def wait_for(self, identifier, name="-", icon="-"):
        wanted = (identifier, name, icon)
        wait_until(lambda: self.lines[-1] == wanted, what=f"{wanted} is in front, {self.process.log}")


@pytest.fixture
def front(desktop):
    return FrontApplication(desktop)


def windows_of(desktop, process_class):
    return [window for window in desktop.x.managed_ids() if process_class in class_of(desktop, window)]


def class_of(desktop, number):
    window = desktop.x.connection.create_resource_object("window", number)
    return window.get_wm_class() or ()


def start_terminal(desktop, name, *arguments, env=None):
    """A terminal whose window has that class; it has come to the front."""
    desktop.start("xterm", ["xterm", "-class", name, *arguments, "-e", "cat"], env)
    found = wait_until(lambda: windows_of(desktop, name), what=f"a window of class {name}")
    wait_until(lambda: desktop.x.active_id() == found[0], what=f"{name} is active")
    return found[0]


def activate(desktop, number):
    window = desktop.x.connection.create_resource_object("window", number)
    desktop.x.send_to_root(window, "_NET_ACTIVE_WINDOW", 2, X.CurrentTime)
    wait_until(lambda: desktop.x.active_id() == number, what="the window is active")


@pytest.mark.parametrize("desktop", [{"wm": "openbox"}, {"wm": "xfwm4"}, {"wm": "mutter"}], indirect=True)
def test_it_is_the_program_whose_window_is_active(desktop, front):
    front.install("our-terminal", StartupWMClass="XTerm", Icon="our-terminal")
    front.install("org.xfce.mousepad", **{"Name": "Writer", "Exec": "mousepad %U"})
    front.install_icon("our-terminal")
    front.start()
    terminal = start_terminal(desktop, "XTerm")
    front.wait_for("our-terminal", "our-terminal", "48")
    desktop.start("mousepad", ["mousepad", "--disable-server"])
    front.wait_for("org.xfce.mousepad", "Writer")
    activate(desktop, terminal)
    front.wait_for("our-terminal", "our-terminal", "48")


def test_it_is_known_from_the_start(desktop, front):
    front.install("our-terminal", StartupWMClass="XTerm")
    start_terminal(desktop, "XTerm")
    front.start()
    assert front.lines[0] == ("our-terminal", "our-terminal", "-")


def test_with_the_last_window_it_goes(desktop, front):
    front.start()
    start_terminal(desktop, "XTerm")
    front.wait_for("xterm")
    desktop.processes[-1].kill()
    front.wait_for("-")


def test_a_class_that_no_file_names_is_found_by_its_program(desktop, front):
    front.install("org.example.shell", Exec="/usr/bin/xterm -e something")
    front.start()
    start_terminal(desktop, "Odd")
    front.wait_for("org.example.shell", "org.example.shell")


def test_what_the_desktop_started_is_known_by_its_file(desktop, front):
    front.install("org.example.pager", Exec="sh -c pager")
    front.install("org.example.shell", Exec="xterm")
    front.start()
    path = front.data / "applications" / "org.example.pager.desktop"
    script = "GIO_LAUNCHED_DESKTOP_FILE_PID=$$ exec xterm -class Odd -e cat"
    desktop.start("launcher", ["sh", "-c", script], {"GIO_LAUNCHED_DESKTOP_FILE": str(path)})
    front.wait_for("org.example.pager", "org.example.pager")


def test_a_program_that_is_not_installed_goes_by_its_class(desktop, front):
    front.start()
    start_terminal(desktop, "Odd")
    front.wait_for("odd")


def test_a_program_installed_meanwhile_is_known(desktop, front):
    front.start()
    odd = start_terminal(desktop, "Odd")
    front.wait_for("odd")
    start_terminal(desktop, "Other")
    front.wait_for("other")
    front.install("org.example.odd", StartupWMClass="Odd", Name="Odd thing")
    activate(desktop, odd)
    front.wait_for("org.example.odd", "Odd thing")


def test_the_name_is_in_the_users_language(desktop):
    front = FrontApplication(desktop, environment={"LANG": "de_AT.UTF-8"})
    front.install("our-terminal", **{"StartupWMClass": "XTerm", "Name": "Terminal", "Name[de]": "Konsole"})
    front.start()
    start_terminal(desktop, "XTerm")
    front.wait_for("our-terminal", "Konsole")


def test_a_wrong_process_number_fools_nobody(desktop, front):
    """Such as a program in a sandbox gives, which numbers its processes anew."""
    front.install("org.example.shell", Exec="xterm")
    front.start()
    odd = start_terminal(desktop, "Odd")
    other = start_terminal(desktop, "Other")
    window = desktop.x.connection.create_resource_object("window", odd)
    window.change_property(desktop.x.atom("_NET_WM_PID"), desktop.x.atom("CARDINAL"), 32, [front.process.pid])
    desktop.x.connection.sync()
    front.install("org.example.other", StartupWMClass="Other")
    activate(desktop, odd)
    activate(desktop, other)
    front.wait_for("org.example.other", "org.example.other")
    activate(desktop, odd)
    front.wait_for("org.example.shell", "org.example.shell")


def test_a_window_of_our_own_does_not_count(desktop):
    front = FrontApplication(desktop, arguments=["Ours"])
    start_terminal(desktop, "Odd")
    front.start()

    def ours_is_active():
        return "quillbar_front_application" in class_of(desktop, desktop.x.active_id() or desktop.x.root.id)

    wait_until(ours_is_active, what="our own window is active")
    start_terminal(desktop, "Other")
    front.wait_for("other")
    # On the way from window to window a window manager may say that none is active.
    assert {line[0] for line in front.lines} <= {"odd", "-", "other"}


def test_it_ends_with_the_display(desktop, front):
    front.start()
    start_terminal(desktop, "Odd")
    front.wait_for("odd")
    desktop.xvfb.kill()
    front.process.wait()
