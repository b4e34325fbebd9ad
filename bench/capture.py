#!/usr/bin/python3
"""What recording copies costs, side by side with another clipboard manager, each on a desktop of its own.

The time from a copy to its record; the CPU time of copies at a pace that both can follow; the CPU time of a flood
that neither can follow; the memory after them. Quillbar looks at the clipboard at most every 0.7 s by design and
records what is there then. So the requests for text that each side has made are told as well: they show how many
of the copies it has taken at all.
"""

import argparse
import random
import subprocess
import time

from session import Bench, tell

from harness.copying import CopySource
from harness.figures import Figures
from harness.history import PAST_A_BEAT, History
from harness.waiting import wait_until

TEXT_TARGETS = ("UTF8_STRING", "text/plain")
# The other manager's own script, in a process of its own that has come up before the copy is made.
WAIT_SCRIPT = "print('ready\\\\n'); while (str(read(0)) != arguments[1]) sleep(4); print('found\\\\n')"


class Quillbar:
    name = "Quillbar"

    def __init__(self, desktop):
        self.history = History(desktop)
        self.processes = [desktop.launch_closed()]

    def copied(self, copy, text):
        """Calls `copy` and waits until `text` is the latest; the seconds that took."""
        copy()
        start = time.monotonic()
        wait_until(lambda: self.history.texts()[:1] == [text], 20.0, f"{text} is recorded")
        return time.monotonic() - start


class CopyQ:
    name = "CopyQ"

    def __init__(self, desktop):
        self.desktop = desktop
        self.server = desktop.start("copyq", ["copyq"])
        wait_until(lambda: self._ask("size"), 30.0, "the manager is up")
        assert self._ask("config", "item_popup_interval", "0")
        assert self._ask("config", "maxitems", "25")
        # It watches the clipboard through a process of its own.
        wait_until(lambda: len(self.processes) > 1, 30.0, "it watches the clipboard")
        # Of a copy made while that one is still coming up it would never hear.
        wait_until_idle(self)

    def _ask(self, *words):
        answer = subprocess.run(["copyq", *words], env=self.desktop.env, capture_output=True, timeout=30)
        return answer.returncode == 0

    @property
    def processes(self):
        found = subprocess.run(["pgrep", "-P", str(self.server.pid)], capture_output=True, text=True).stdout
        return [Pid(pid) for pid in (self.server.pid, *map(int, found.split()))]

    def copied(self, copy, text):
        command = ["copyq", "eval", WAIT_SCRIPT, text]
        with subprocess.Popen(command, env=self.desktop.env, stdout=subprocess.PIPE, text=True) as waiting:
            assert waiting.stdout.readline() == "ready\n"
            copy()
            start = time.monotonic()
            assert waiting.stdout.readline() == "found\n"
            return time.monotonic() - start


class Pid(Figures):
    def __init__(self, pid):
        self.pid = pid


def cpu(program):
    """Of all its processes, in seconds, by the clock that the kernel keeps for each."""
    return sum(time.clock_gettime((~each.pid << 3) | 2) for each in program.processes)


def wait_until_idle(program):
    """Wait until all its processes are idle, for longer than Quillbar goes without a look."""
    for each in program.processes:
        each.wait_until_idle(quiet=PAST_A_BEAT, timeout=60.0)


def offers(text):
    return {target: text.encode() for target in TEXT_TARGETS}


class Costs:
    """Of copies made one after another, `pause` seconds apart, until the last of them is recorded."""

    def __init__(self, program, source, what, count, pause):
        before, asked = cpu(program), len(source.asked())
        beat = time.monotonic()
        for i in range(count):
            source.copy(offers(f"{what} {i}"))
            beat += pause
            while (rest := beat - time.monotonic()) > 0:
                source.serve(rest)
        self.count = count
        self.seconds = cpu(program) - before
        self.requests = sum(target in TEXT_TARGETS for target in source.asked()[asked:])


def last_copy_is_recorded(desktop, program, text):
    """By a program that answers while we wait."""
    program.copied(lambda: desktop.copy_text(text), text)


def measure(kind, arguments):
    desktop = Bench()
    try:
        program = kind(desktop)
        latencies = []
        for i in range(arguments.latencies):
            text = f"latency {i}"
            latencies.append(program.copied(lambda: desktop.copy_text(text), text) * 1000)
            # The random time is the subject: a copy may come at any moment between two looks.
            time.sleep(random.uniform(0.0, 0.7))
        source = CopySource(desktop.x, offers("first"))
        paced = Costs(program, source, "paced", arguments.copies, arguments.pause)
        last_copy_is_recorded(desktop, program, "last of the paced")
        flood = Costs(program, source, "flood", arguments.flood, 1 / arguments.rate)
        last_copy_is_recorded(desktop, program, "last of the flood")
        source.close()
        wait_until_idle(program)
        pss = sum(each.pss_kib() for each in program.processes) / 1024
        own = sum(each.own_memory_kib() for each in program.processes) / 1024
    finally:
        desktop.close()
    tell(f"{kind.name}: copy to record", latencies, "ms", 0)
    for what, costs in ("at the pace", paced), ("in the flood", flood):
        print(
            f"{kind.name}: {costs.count} copies {what}: CPU {costs.seconds:.2f} s,"
            f" {costs.seconds / costs.count * 1000:.2f} ms a copy; {costs.requests} requests for text",
            flush=True,
        )
    print(f"{kind.name}: afterwards PSS {pss:.1f} MiB, own memory {own:.1f} MiB", flush=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--latencies", type=int, default=15, help="copies whose way to the record is timed")
    parser.add_argument("--copies", type=int, default=60, help="copies at the pace")
    parser.add_argument("--pause", type=float, default=0.8, help="seconds from one of them to the next")
    parser.add_argument("--flood", type=int, default=10_000, help="copies in the flood")
    parser.add_argument("--rate", type=float, default=100, help="of them a second")
    parser.add_argument("--rounds", type=int, default=1)
    arguments = parser.parse_args()
    for _ in range(arguments.rounds):
        for kind in (Quillbar, CopyQ):
            measure(kind, arguments)


if __name__ == "__main__":
    main()
