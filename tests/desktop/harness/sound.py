"""A sound server with nothing but a null sink, and an ear on what that plays."""

import subprocess

from .processes import Process
from .waiting import wait_until

SINK = "quiet"


class SoundServer:
    """Sound for the programs that have `environment`, which is added to here: no program of it starts a
    sound server by itself. `folder` takes the logs and is removed by its owner."""

    def __init__(self, folder, environment):
        self.folder = folder
        client = folder / "client.conf"
        client.write_text("autospawn = no\n")
        environment["PULSE_CLIENTCONFIG"] = str(client)
        self.environment = environment
        self.running = []

    def start(self, name, argv):
        process = Process(name, argv, self.environment, self.folder / f"{name}-{len(self.running)}.log")
        self.running.append(process)
        return process

    def start_server(self):
        """A sound server with nothing but a null sink, answering and listened to."""
        server = self.start(
            "pulseaudio",
            ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1"]
            + ["--disallow-exit", "--log-target=stderr"]
            + ["-L", f"module-null-sink sink_name={SINK}"]
            + ["-L", "module-native-protocol-unix auth-anonymous=1"],
        )
        wait_until(lambda: self.answers_calls() or not server.running, what="the sound server answers")
        assert server.running, server.output
        return server

    def answers_calls(self):
        call = ["pactl", "list", "short", "sinks"]
        return SINK in subprocess.run(call, env=self.environment, capture_output=True, text=True).stdout

    def listen(self):
        """The listener, at work: what the sink plays from now on comes to its output."""
        listener = self.start(
            "parec", ["parec", f"--device={SINK}.monitor", "--raw", "--format=s16le", "--latency-msec=20"]
        )
        wait_until(lambda: listener.log.stat().st_size, what="the listener records")
        return listener

    def connections(self):
        """How many programs are connected to the server, this question's own connection left out."""
        call = ["pactl", "list", "short", "clients"]
        reply = subprocess.run(call, env=self.environment, capture_output=True, text=True, check=True)
        return sum("pactl" not in line for line in reply.stdout.splitlines())

    def close(self):
        for process in reversed(self.running):
            process.kill()


def heard(listener):
    return any(listener.log.read_bytes())
