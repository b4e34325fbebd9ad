"""A Wayland desktop of its own for one test: headless sway with XWayland."""

import io
import subprocess

from PIL import Image

from .clients import Client
from .ipc import Ipc
from .session import Session, test_user
from .wayland_pointer import VirtualPointer
from .waiting import wait_until
from .x11 import Panel, XDisplay

_CONFIG = """xwayland force
default_border none
output HEADLESS-1 mode {width}x{height} position 0 0
exec 'echo "$DISPLAY $WAYLAND_DISPLAY" > "$XDG_RUNTIME_DIR/displays"'
"""


class SwayDesktop(Session):
    """Outputs are named HEADLESS-1, HEADLESS-2 ... in order of creation; the first is at the left.
    `x` looks at XWayland's windows; `screenshot` and the pointer go through the compositor."""

    def __init__(self, size=(1280, 800), scale=None):
        super().__init__(test_user())
        self.x = self.ipc = self._device = None
        self.clients = []
        if scale is not None:
            self.env["QT_SCALE_FACTOR"] = str(scale)
        try:
            self._start(size)
        except BaseException:
            self.close()
            raise
        self.panel = Panel(self.x)

    def _start(self, size):
        self.start_bus()
        config = self.root / "sway.conf"
        config.write_text(_CONFIG.format(width=size[0], height=size[1]))
        config.chmod(0o644)
        self.env["SWAYSOCK"] = str(self.runtime / "sway.sock")
        self.sway = self.start("sway", ["sway", "--config", config],
                               {"WLR_BACKENDS": "headless", "WLR_LIBINPUT_NO_DEVICES": "1",
                                "WLR_RENDERER": "pixman"})
        displays = self.runtime / "displays"

        def told():
            assert self.sway.running, f"sway ended: {self.sway.output}"
            return displays.exists() and len(displays.read_text().split()) == 2

        wait_until(told, 30.0, "sway tells its displays")
        self.env["DISPLAY"], self.env["WAYLAND_DISPLAY"] = displays.read_text().split()
        self.ipc = Ipc(self.runtime / "sway.sock")
        self._device = VirtualPointer(self.runtime / self.env["WAYLAND_DISPLAY"], self.user)
        self.x = XDisplay(self.env["DISPLAY"], self.user)

    # -- outputs ---------------------------------------------------------------------------------

    def outputs(self):
        return {each["name"]: each for each in self.ipc.outputs() if each["active"]}

    def create_output(self):
        """Plug in another monitor, at the right of the others; returns its name."""
        before = {each["name"] for each in self.ipc.outputs()}
        self.ipc.command("create_output")
        wait_until(lambda: len(self.ipc.outputs()) > len(before), what="there is a new output")
        return next(each["name"] for each in self.ipc.outputs() if each["name"] not in before)

    def output(self, name, setting):
        """Such as output("HEADLESS-1", "disable"), "enable", "mode 1024x768", "scale 2"."""
        self.ipc.command(f"output {name} {setting}")

    # -- programs, hands and eyes ----------------------------------------------------------------

    def launch(self, env=None):
        app = self.start_quillbar(env)

        def shown():
            assert app.running, f"the program ended with {app.status}: {app.output}"
            return self.panel.windows()

        wait_until(shown, 20.0, "the panel is on the screen")
        app.wait_until_idle()
        return app

    def client(self, *arguments, **options):
        client = Client(self.x, *arguments, **options)
        self.clients.append(client)
        return client

    def move_pointer(self, x, y):
        self.ipc.command(f"seat - cursor set {int(x)} {int(y)}")

    def click(self, x, y, button=1):
        self.move_pointer(x, y)
        self.ipc.command(f"seat - cursor press button{button}")
        self.ipc.command(f"seat - cursor release button{button}")

    def screenshot(self):
        answer = subprocess.run(["grim", "-t", "ppm", "-"], env=self.env, check=True, timeout=20,
                                stdout=subprocess.PIPE,
                                user=self.user.pw_uid if self.user else None)
        return Image.open(io.BytesIO(answer.stdout)).convert("RGB")

    def close(self):
        for client in self.clients:
            client.close()
        for connection in (self.x, self.ipc, self._device):
            if connection is not None:
                connection.close()
        super().close()
