"""What a process costs and whether it is at work, read from /proc."""

import os
import time

from .waiting import wait_until

_TICKS = os.sysconf("SC_CLK_TCK")


class Figures:
    """For a class with a `pid`."""

    def wait_until_idle(self, quiet=0.15, timeout=30.0):
        """Wait until the process has slept through `quiet` seconds: it has digested all events. One that
        only waits for a processor of a busy machine doesn't sleep."""
        last, since = self.context_switches(), time.monotonic()

        def rested():
            nonlocal last, since
            now = self.context_switches()
            if now != last or not self._sleeps():
                last, since = now, time.monotonic()
            return time.monotonic() - since >= quiet

        wait_until(rested, timeout, f"process {self.pid} comes to rest", interval=0.01)

    def _sleeps(self):
        for thread in self._threads():
            try:
                with open(f"/proc/{self.pid}/task/{thread}/stat", encoding="utf-8") as stream:
                    state = stream.read().rpartition(")")[2].split()[0]
            except (FileNotFoundError, ProcessLookupError):
                continue
            if state in "RD":  # it could run, or waits for the disk
                return False
        return True

    def cpu_seconds(self):
        """User and system time of all threads, in seconds (resolution 10 ms)."""
        with open(f"/proc/{self.pid}/stat", encoding="utf-8") as stream:
            fields = stream.read().rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) / _TICKS

    def context_switches(self):
        """Voluntary and forced switches of all threads: each voluntary one is a wake-up."""
        return self.wakeups() + self._sum_over_threads("nonvoluntary_ctxt_switches")

    def wakeups(self):
        return self._sum_over_threads("voluntary_ctxt_switches")

    def _sum_over_threads(self, field):
        total = 0
        for thread in self._threads():
            try:
                with open(f"/proc/{self.pid}/task/{thread}/status", encoding="utf-8") as stream:
                    for line in stream:
                        if line.startswith(field + ":"):
                            total += int(line.split()[1])
            except (FileNotFoundError, ProcessLookupError):
                continue
        return total

    def _threads(self):
        try:
            return os.listdir(f"/proc/{self.pid}/task")
        except FileNotFoundError:
            return []

    def pss_kib(self):
        """Proportional set size in KiB."""
        return self._memory()["Pss"]

    def own_memory_kib(self):
        """What the process itself has filled: heap, stacks and pictures shared with the display, but no
        pages of files, whose share depends on who else uses them."""
        memory = self._memory()
        return memory["Pss_Anon"] + memory["Pss_Shmem"]

    def _memory(self):
        with open(f"/proc/{self.pid}/smaps_rollup", encoding="utf-8") as stream:
            lines = [line.split() for line in stream]
        return {words[0].rstrip(":"): int(words[1]) for words in lines if words[0].endswith(":")}
