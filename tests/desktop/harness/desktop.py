"""An X11 desktop of its own for one test."""

import os
import random
import subprocess

from Xlib import X

from . import accessibility
from .clients import Backdrop, Client, Dock, Locker
from .dragging import DragSource
from .ipc import Ipc
from .panel import Panel
from .processes import read_line_from
from .session import Session
from .waiting import wait_until
from .x11 import Rect, XDisplay

MANAGERS = ("openbox", "openbox+picom", "xfwm4", "mutter", "i3")

_I3_CONFIG = """# i3 config file (v4)
font pango:monospace 8
default_border none
focus_follows_mouse no
force_display_urgency_hint 0 ms
"""

_COMMANDS = {
    "openbox": ["openbox", "--sm-disable"],
    "xfwm4": ["xfwm4", "--compositor=on", "--vblank=off"],
    "mutter": ["mutter", "--x11", "--sm-disable"],
    "i3": ["i3"],
}


class Desktop(Session):
    """Xvfb, a window manager, a session bus; Quillbar when a test launches it.

    `wm`: one of MANAGERS. `size`: pixels. `scale`: what QT_SCALE_FACTOR says to the program.
    `dpi`: Xft.dpi instead, the way a desktop's settings say it. `monitors`: side by side.
    `bus`: whether there is a session bus at all.
    """

    def __init__(self, wm="openbox", size=(1280, 800), scale=None, dpi=None, monitors=1, bus=True):
        super().__init__()
        self.wm = wm
        self.scale = scale if scale is not None else (dpi / 96 if dpi is not None else 1)
        self.x = None
        self.picom = None
        self.clients = []
        try:
            self._start_display(size)
            if dpi is not None:
                self.x.set_resource_dpi(dpi)
            if scale is not None:
                self.env["QT_SCALE_FACTOR"] = str(scale)
            if monitors > 1:
                self.x.split_into_monitors(monitors)
            if bus:
                self.start_bus()
            self._start_manager(wm)
        except BaseException:
            self.close()
            raise
        self.panel = Panel(self.x)

    def _start_display(self, size):
        # A server that looks for a free number itself tries them all and on its way takes the
        # sockets of others away; so it gets one, and another where that is taken.
        for _ in range(5):
            number = random.randrange(100, 50000)
            read_end, write_end = os.pipe()
            self.xvfb = self.start(
                "xvfb",
                ["Xvfb", f":{number}", "-displayfd", write_end]
                + ["-screen", "0", f"{size[0]}x{size[1]}x24", "-dpi", "96"]
                + ["-nolisten", "tcp", "-noreset", "+extension", "RANDR", "+extension", "Composite"],
                pass_fds=(write_end,),
            )
            os.close(write_end)
            if read_line_from(read_end, 30.0, self.xvfb):
                break
        else:
            raise AssertionError(f"no display: {self.xvfb.output}")
        self.env["DISPLAY"] = f":{number}"
        self.x = XDisplay(f":{number}")

    def _start_manager(self, wm):
        name = wm.partition("+")[0]
        command = list(_COMMANDS[name])
        if name == "i3":
            config = self.root / "i3.conf"
            config.write_text(_I3_CONFIG)
            command += ["-c", config]
        self.manager = self.start(name, command)
        wait_until(self._manager_announced, 30.0, f"{name} announces itself")
        self._wait_until_managing()
        if wm == "openbox+picom":
            self.start_compositor()
        elif name in ("xfwm4", "mutter"):
            wait_until(self.x.has_compositor, 30.0, f"{name} composites")

    def _manager_announced(self):
        assert self.manager.running, f"{self.manager.name} ended: {self.manager.output}"
        check = self.x.property(self.x.root, "_NET_SUPPORTING_WM_CHECK")
        return check is not None and len(check) == 1

    def _wait_until_managing(self):
        """A manager may announce itself before it serves windows, and lose a request made in
        between; so a probe window asks until it is managed, with more patience each time: who asks
        faster than a busy manager answers never sees the answer."""
        probe = Client(self.x, Rect(0, 100, 40, 40), title="probe", mapped=False)

        def managed():
            return probe.window.id in self.x.managed_ids()

        patience = 0.05

        def asked():
            nonlocal patience
            probe.window.unmap()
            probe.window.map()
            probe.connection.sync()
            try:
                return wait_until(managed, patience, "it is managed", interval=0.002)
            except AssertionError:
                patience = min(2 * patience, 5.0)
                return False

        wait_until(asked, 30.0, f"{self.manager.name} manages windows")
        number = probe.window.id
        probe.close()
        wait_until(lambda: number not in self.x.managed_ids(), what="the probe window is gone")

    def start_compositor(self):
        self.picom = self.start("picom", ["picom", "--backend", "xrender", "--config", "/dev/null"])
        wait_until(self.x.has_compositor, what="picom composites")

    def stop_compositor(self):
        self.picom.send(15)
        self.picom.wait()
        wait_until(lambda: not self.x.has_compositor(), what="nobody composites")

    # -- programs ------------------------------------------------------------------------------

    def launch(self, env=None, arguments=(), under=()):
        """Start Quillbar and wait until its panel is on the screen and it has come to rest."""
        app = self.start_quillbar(env, arguments, under)

        def shown():
            assert app.running, f"the program ended with {app.status}: {app.output}"
            return self.panel.windows_of(app.pid)

        wait_until(shown, 30.0, "the panel is on the screen")
        app.wait_until_idle()
        return app

    def _keep(self, client):
        self.clients.append(client)
        return client

    def client(self, *arguments, **options):
        """A recording client; see clients.Client."""
        return self._keep(Client(self.x, *arguments, **options))

    def backdrop(self, colour=(200, 30, 30)):
        """A wallpaper of one colour, so that a screenshot tells what covers it."""
        return self._keep(Backdrop(self.x, colour))

    def dock(self, height):
        return self._keep(Dock(self.x, height))

    def locker(self):
        return self._keep(Locker(self.x))

    def drag_source(self, *arguments, **options):
        return self._keep(DragSource(self.x, *arguments, **options))

    def copy_text(self, text):
        """Put text on the clipboard by another program's hand."""
        before = self.x.clipboard_owner()
        subprocess.run(
            ["xclip", "-selection", "clipboard", "-in"],
            input=text.encode(),
            env=self.env,
            check=True,
            timeout=30,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )
        # It comes back before the request of the part that stays behind has left it.
        wait_until(lambda: self.x.clipboard_owner() not in (X.NONE, before), what="the text is offered")

    def clipboard_text(self):
        return subprocess.run(
            ["xclip", "-selection", "clipboard", "-out"],
            env=self.env,
            check=True,
            timeout=30,
            stdout=subprocess.PIPE,
        ).stdout.decode()

    def clipboard_targets(self):
        """What the clipboard's owner offers; nothing where there is none."""
        command = ["xclip", "-selection", "clipboard", "-out", "-target", "TARGETS"]
        answer = subprocess.run(command, env=self.env, timeout=30, capture_output=True)
        return answer.stdout.decode().split()

    def accessible(self, app):
        """The root of the program's accessibility tree."""
        return accessibility.program_tree(self.env["DBUS_SESSION_BUS_ADDRESS"], app.pid)

    # -- workspaces ----------------------------------------------------------------------------

    def switch_workspace(self, index):
        """Show workspace `index`, counted from 0; there are at least two."""
        if self.wm == "i3":
            path = self.x.text_property(self.x.root, "I3_SOCKET_PATH")
            ipc = Ipc(path)
            ipc.command(f"workspace number {index + 1}")
            wait_until(
                lambda: [each["num"] for each in ipc.workspaces() if each["visible"]] == [index + 1],
                what=f"workspace {index} shows",
            )
            ipc.close()
            return
        self.x.send_to_root(self.x.root, "_NET_CURRENT_DESKTOP", index, X.CurrentTime)
        wait_until(lambda: self.x.workspace() == index, what=f"workspace {index} shows")

    # -- the notch -----------------------------------------------------------------------------

    @property
    def top_centre(self):
        return self.x.size[0] // 2, 0

    def point_at_notch(self):
        x, _ = self.top_centre
        self.x.move_pointer(x, 5)

    def point_away(self):
        width, height = self.x.size
        self.x.move_pointer(width // 2, height - 20)

    def open_panel(self):
        self.point_at_notch()
        self.panel.wait_until_open()

    def screenshot(self):
        return self.x.screenshot()

    def close(self):
        for client in self.clients:
            client.close()
        if self.x is not None:
            self.x.close()
        super().close()
