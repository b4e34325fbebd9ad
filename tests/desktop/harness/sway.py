"""A Wayland desktop of its own for one test: headless sway with XWayland."""

import io
import subprocess

from PIL import Image

from .clients import Client
from .ipc import Ipc
from .panel import Panel
from .session import Session, test_user
from .wayland_pointer import VirtualPointer
from .waiting import wait_until
from .x11 import XDisplay

_CONFIG = """xwayland {xwayland}
default_border none
floating_maximum_size -1 x -1
for_window [app_id="wlroots"] floating enable, border none
exec 'echo "${displays}" > "$XDG_RUNTIME_DIR/{name}.displays"'
"""
_BUTTONS = {1: 0x110, 2: 0x112, 3: 0x111}  # X's numbers to the kernel's
_STEP = 6  # pixels


class SwayDesktop(Session):
    """`x` looks at XWayland's windows; `screenshot` and the pointer go through the compositor.

    Headless, the one output is HEADLESS-1. Its backend can't lose an output again, so with
    `pluggable` sway runs inside another one, where each output is a window that can be closed;
    the first is then WL-1.
    """

    def __init__(self, size=(1280, 800), scale=None, pluggable=False):
        super().__init__(test_user())
        self.x = self.ipc = self._stage = self._device = self._pointer = None
        self.clients = []
        if scale is not None:
            self.env["QT_SCALE_FACTOR"] = str(scale)
        try:
            self.start_bus()
            if pluggable:
                self._stage = self._start_sway("stage", "headless", xwayland=False)
                self._stage.command("output HEADLESS-1 mode 6000x3000")
            self.ipc = self._start_sway("sway", "wayland" if pluggable else "headless")
            if pluggable:
                self._resize("WL-1", size)
            else:
                self.output("HEADLESS-1", f"mode {size[0]}x{size[1]} position 0 0")
            self._device = VirtualPointer(self.runtime / self.env["WAYLAND_DISPLAY"], self.user)
            self.x = XDisplay(self.env["DISPLAY"], self.user)
            wait_until(lambda: self.x.size == tuple(size), what="XWayland knows the output's size")
        except BaseException:
            self.close()
            raise
        self.panel = Panel(self.x)

    def _start_sway(self, name, backend, xwayland=True):
        """Start a sway, note its displays in the environment, and return its IPC connection."""
        variables = "$DISPLAY $WAYLAND_DISPLAY" if xwayland else "$WAYLAND_DISPLAY"
        config = self.root / f"{name}.conf"
        config.write_text(
            _CONFIG.format(name=name, xwayland="force" if xwayland else "disable", displays=variables[1:])
        )
        config.chmod(0o644)
        socket = self.runtime / f"{name}.sock"
        process = self.start(
            name,
            ["sway", "--config", config],
            {
                "WLR_BACKENDS": backend,
                "WLR_LIBINPUT_NO_DEVICES": "1",
                "WLR_RENDERER": "pixman",
                "SWAYSOCK": str(socket),
            },
        )
        displays = self.runtime / f"{name}.displays"

        def told():
            assert process.running, f"{name} ended: {process.output}"
            words = displays.read_text().split() if displays.exists() else []
            return words if len(words) == len(variables.split()) else None

        words = wait_until(told, 30.0, f"{name} tells its displays")
        self.env["WAYLAND_DISPLAY"] = words[-1]
        if xwayland:
            self.env["DISPLAY"] = words[0]
            self.env["SWAYSOCK"] = str(socket)
        return Ipc(socket)

    # -- outputs ---------------------------------------------------------------------------------

    def outputs(self):
        return {each["name"]: each for each in self.ipc.outputs() if each["active"]}

    def output(self, name, setting):
        """Such as output("HEADLESS-1", "mode 1024x768") or "scale 2" or "position 0 0"."""
        self.ipc.command(f"output {name} {setting}")

    def plug(self, size):
        """Plug in another monitor, at the right of the others; returns its name. Its size is
        heeded on a pluggable desktop."""
        before = set(self.outputs())
        self.ipc.command("create_output")
        name = wait_until(
            lambda: next(iter(set(self.outputs()) - before), None), what="there is a new output"
        )
        if self._stage is not None:
            self._resize(name, size)
        return name

    def unplug(self, name):
        self._stage.command(f'[title="{name}$"] kill')
        wait_until(lambda: name not in self.outputs(), what=f"{name} is gone")

    def _resize(self, name, size):
        criteria = f'[title="{name}$"]'

        def asked():
            try:
                self._stage.command(f"{criteria} resize set {size[0]} px {size[1]} px, move position 0 0")
            except AssertionError:  # its window isn't there yet
                return False
            output = self.outputs().get(name)
            if output is None:  # not active yet
                return False
            rect = output["rect"]
            return (rect["width"], rect["height"]) == tuple(size)

        wait_until(asked, what=f"{name} is {size[0]} x {size[1]}", interval=0.03)

    # -- programs, hands and eyes ----------------------------------------------------------------

    def launch(self, env=None):
        app = self.start_quillbar(env)

        def shown():
            assert app.running, f"the program ended with {app.status}: {app.output}"
            return self.panel.windows_of(app.pid)

        wait_until(shown, 30.0, "the panel is on the screen")
        app.wait_until_idle()
        return app

    def client(self, *arguments, **options):
        client = Client(self.x, *arguments, **options)
        self.clients.append(client)
        return client

    def move_pointer(self, x, y):
        """Move as a hand does, in small steps. Where the pointer enters a surface, XWayland adds
        the step that led there to its place once more, so a leap would land far off."""
        x, y = int(x), int(y)
        rects = [each["rect"] for each in self.outputs().values()]
        layout = (
            max(rect["x"] + rect["width"] for rect in rects),
            max(rect["y"] + rect["height"] for rect in rects),
        )
        from_x, from_y = self._pointer or (x, y)
        steps = max(abs(x - from_x), abs(y - from_y), _STEP) // _STEP
        for step in range(1, steps):
            self._device.move(
                from_x + (x - from_x) * step // steps, from_y + (y - from_y) * step // steps, *layout
            )
        self._device.move(x + 1, y, *layout)
        self._device.move(x, y, *layout)
        self._pointer = (x, y)

    def click(self, x, y, button=1):
        self.move_pointer(x, y)
        for pressed in (1, 0):
            self._device.button(_BUTTONS[button], pressed)

    def screenshot(self):
        answer = subprocess.run(
            ["grim", "-t", "ppm", "-"],
            env=self.env,
            check=True,
            timeout=20,
            stdout=subprocess.PIPE,
            user=self.user.pw_uid if self.user else None,
        )
        return Image.open(io.BytesIO(answer.stdout)).convert("RGB")

    def close(self):
        for client in self.clients:
            client.close()
        for connection in (self.x, self.ipc, self._device, self._stage):
            if connection is not None:
                connection.close()
        super().close()
