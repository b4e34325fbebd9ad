"""A disk that fails, with the rights of any user: no mount that a killed test would leave behind."""

import contextlib
import os
import resource

# Root writes into any folder but for this right, and a file past its limit ends who doesn't ignore that.
_RIGHT = "-dac_override"
_COMMAND = ["/bin/sh", "-c", 'trap "" XFSZ; exec "$0" "$@"']
_AS_ROOT = ["setpriv", "--bounding-set", _RIGHT, "--inh-caps", _RIGHT]

UNDER_LIMITS = (_AS_ROOT if os.geteuid() == 0 else []) + _COMMAND
"""For `launch(under=...)`: the program for which a disk can fail."""


@contextlib.contextmanager
def full(app, free=4096):
    """No file of the program gets longer than `free` bytes, its output neither."""
    _, most = resource.prlimit(app.pid, resource.RLIMIT_FSIZE)
    resource.prlimit(app.pid, resource.RLIMIT_FSIZE, (free, most))
    try:
        yield
    finally:
        resource.prlimit(app.pid, resource.RLIMIT_FSIZE, (most, most))


@contextlib.contextmanager
def read_only(folder):
    mode = folder.stat().st_mode
    folder.chmod(0o500)
    try:
        yield
    finally:
        folder.chmod(mode)
