"""Much use costs no memory. The program's clock hurries; `bench/soak.py` is the same for longer."""

import pytest

from harness.clock import hurried
from harness.soaking import Soak

WARM_UP, MORE = 100, 200
GROWTH_KIB = 2 * 1024

pytestmark = pytest.mark.desktop(wm="openbox+picom")


@pytest.mark.parametrize("act", [Soak.open_and_close, Soak.switch_mode])
def test_memory_stays_flat(desktop, act):
    soak = Soak(desktop, desktop.launch(hurried(20)))
    for _ in range(WARM_UP):
        act(soak)
    warm = soak.memory_at_rest()
    for _ in range(MORE):
        act(soak)
    assert soak.memory_at_rest() - warm < GROWTH_KIB
