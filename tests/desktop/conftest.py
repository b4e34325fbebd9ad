"""Fixtures of the desktop tests. README.md here says how to use them."""

import re
import signal

import pytest

from harness.clipboard_panel import ClipboardPanel
from harness.desktop import Desktop
from harness.helper import Helper
from harness.history import History
from harness.players import FakePlayer, NowPlaying
from harness.sway import SwayDesktop
from harness.tray import Bar

PHASE_SECONDS = 120


def pytest_configure(config):
    config.addinivalue_line(
        "markers", "desktop(**options): options of the `desktop` fixture, as of harness.Desktop"
    )


def _out_of_time(*unused):
    raise AssertionError(f"nothing has moved for {PHASE_SECONDS} s: a server hangs")


def _bounded():
    """A reply that never comes fails the test with its evidence, instead of holding up all."""
    signal.signal(signal.SIGALRM, _out_of_time)
    signal.alarm(PHASE_SECONDS)
    yield
    signal.alarm(0)


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_setup():
    yield from _bounded()


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_call():
    yield from _bounded()


@pytest.hookimpl(hookwrapper=True)
def pytest_runtest_makereport(item, call):
    outcome = yield
    if call.when == "call":
        item.failed = outcome.get_result().failed


def _evidence_name(request):
    return re.sub(r"[^\w.+-]+", "_", request.node.nodeid.rpartition("/")[2])


def _options(request):
    options = {}
    for marker in reversed(list(request.node.iter_markers("desktop"))):
        options.update(marker.kwargs)
    options.update(getattr(request, "param", None) or {})
    return options


def _run(request, session):
    try:
        yield session
        if getattr(request.node, "failed", False):
            session.keep_evidence(_evidence_name(request))
    finally:
        session.close()


@pytest.fixture
def desktop(request):
    """A running X11 desktop without Quillbar. Options come from @pytest.mark.desktop(...) or
    from an indirect parametrisation with a dictionary."""
    yield from _run(request, Desktop(**_options(request)))


@pytest.fixture
def sway_desktop(request):
    """A running Wayland desktop without Quillbar; options as for `desktop`."""
    yield from _run(request, SwayDesktop(**_options(request)))


@pytest.fixture
def start_helper(desktop):
    """Starts the helper programs of tests/helpers by their names."""
    running = []

    def start(name):
        running.append(Helper(desktop, name))
        return running[-1]

    yield start
    for helper in running:
        helper.close()


@pytest.fixture
def panel(desktop):
    """The clipboard panel; desktop.panel is the notch's."""
    return ClipboardPanel(desktop)


@pytest.fixture
def history(desktop):
    """The clipboard history on the disk."""
    return History(desktop)


@pytest.fixture
def start_item(start_helper):
    """Starts a program with a status item."""
    return lambda: start_helper("statusitem")


@pytest.fixture
def bar(desktop):
    """Our own side of a bar that shows status items."""
    bar = Bar(desktop)
    yield bar
    bar.close()


@pytest.fixture
def quillbar(desktop):
    """Quillbar on that desktop, its panel on the screen."""
    return desktop.launch()


@pytest.fixture
def players(desktop):
    """Starts fake players by the arguments of FakePlayer."""
    running = []

    def start(*arguments, **options):
        running.append(FakePlayer(desktop, *arguments, **options))
        return running[-1]

    yield start
    for player in running:
        player.kill()


@pytest.fixture
def now_playing(desktop):
    helper = NowPlaying(desktop)
    yield helper
    helper.close()
