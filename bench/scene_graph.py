#!/usr/bin/python3
"""The software scene graph beside OpenGL on a software driver, at scale 1 and 2, alternating."""

import argparse

from session import COMPOSITED, Bench, FrameWatch, cpu_seconds, measured_start, tell

GRAPHS = {"software": {}, "OpenGL": {"QT_QUICK_BACKEND": "rhi", "QSG_RHI_BACKEND": "opengl"}}
SCALES = {1: (1280, 800), 2: (3840, 2160)}


class Samples:
    def __init__(self):
        self.start = []
        self.pss = []
        self.frame_cpu = []
        self.first_opening = []
        self.frames = []
        self.interval = []

    def take(self, desktop, env, openings):
        app, seconds = measured_start(desktop, env)
        self.start.append(seconds * 1000)
        app.wait_until_idle(quiet=1.0, timeout=60.0)
        self.pss.append(app.pss_kib() / 1024)
        watch = FrameWatch(desktop.env["DISPLAY"])
        watch.watch_panel(desktop)
        for number in range(openings + 1):
            cpu = cpu_seconds(app.pid)
            desktop.enter()
            frames = [frame.here for frame in watch.frames_until_rest()]
            if number == 0:
                # A driver makes its shaders ready in this one.
                self.first_opening.append(len(frames))
            else:
                self.frame_cpu.append((cpu_seconds(app.pid) - cpu) * 1000 / len(frames))
                self.frames.append(len(frames))
                self.interval += [(after - before) * 1000 for before, after in zip(frames, frames[1:])]
            desktop.leave()
            watch.frames_until_rest(watch.first_frame())
        watch.close()
        app.end()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--runs", type=int, default=10)
    parser.add_argument("--openings", type=int, default=3, help="in each run, after a first one")
    arguments = parser.parse_args()
    for scale, size in SCALES.items():
        desktop = Bench(wm=COMPOSITED, size=size, scale=scale)
        try:
            samples = {name: Samples() for name in GRAPHS}
            for _ in range(arguments.runs):
                for name, env in GRAPHS.items():
                    samples[name].take(desktop, env, arguments.openings)
        finally:
            desktop.close()
        for name, taken in samples.items():
            tell(f"scale {scale}, {name}, first frame", taken.start, "ms")
            tell(f"scale {scale}, {name}, PSS closed", taken.pss, "MiB")
            tell(f"scale {scale}, {name}, CPU of a frame in a later opening", taken.frame_cpu, "ms", 2)
            tell(f"scale {scale}, {name}, frames of the first opening", taken.first_opening, "frames", 0)
            tell(f"scale {scale}, {name}, frames of a later opening", taken.frames, "frames", 0)
            tell(f"scale {scale}, {name}, between frames", taken.interval, "ms")


if __name__ == "__main__":
    main()
