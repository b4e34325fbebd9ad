"""A clock of its own for the program: set ahead, or made to hurry, through libfaketime."""

import pathlib


def _library():
    found = sorted(pathlib.Path("/usr/lib").glob("*/faketime/libfaketime.so.1"))
    assert found, "no libfaketime: install the package of that name"
    return str(found[0])


def hurried(rate):
    """The environment of a program for which `rate` seconds pass in one: its timers, animations and
    clocks alike. The display and everybody else keep the true time."""
    return {"LD_PRELOAD": _library(), "FAKETIME": f"+0 x{rate}"}


class WallClock:
    """A program's wall clock, which may be set while it runs; its timers keep the true time."""

    def __init__(self, folder):
        self._file = pathlib.Path(folder) / "clock"
        self.set_ahead(0)

    @property
    def environment(self):
        return {
            "LD_PRELOAD": _library(),
            "FAKETIME_TIMESTAMP_FILE": str(self._file),
            "FAKETIME_NO_CACHE": "1",
            "FAKETIME_DONT_FAKE_MONOTONIC": "1",
        }

    def set_ahead(self, seconds):
        """By this much from the true time; the program sees it at its next look."""
        written = self._file.with_suffix(".new")
        written.write_text(f"+{seconds}\n")
        written.replace(self._file)


def forget(pid):
    """Remove what the library keeps in shared memory for a process that was killed."""
    for name in (f"faketime_shm_{pid}", f"sem.faketime_sem_{pid}"):
        pathlib.Path("/dev/shm", name).unlink(missing_ok=True)
