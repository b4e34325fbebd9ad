"""The alert sound at a real sound server, whose null sink is listened to."""

import os
import pathlib
import shutil
import signal
import subprocess
import tempfile

import pytest

from harness.processes import Process
from harness.waiting import wait_until

BEEPER = pathlib.Path(
    os.environ.get("QUILLBAR_BEEPER")
    or pathlib.Path(__file__).parents[2] / "build" / "release" / "bin" / "quillbar_beeper"
)
SINK = "quiet"


class SoundSession:
    """A sound server, a listener and a program that beeps, in folders of their own."""

    def __init__(self):
        # Short, since the path of a socket has few bytes.
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="quillbar-sound-"))
        self.runtime = self.folder / "run"
        self.runtime.mkdir(mode=0o700)
        client = self.folder / "client.conf"
        client.write_text("autospawn = no\n")
        self.environment = {
            "PATH": os.environ["PATH"],
            "LANG": "C.UTF-8",
            "HOME": str(self.folder),
            "XDG_RUNTIME_DIR": str(self.runtime),
            "PULSE_CLIENTCONFIG": str(client),
        }
        self.running = []
        self.asked = 0
        self.answers = self.folder / "answers"
        self.complaints = self.folder / "complaints"
        with open(self.answers, "wb") as answers, open(self.complaints, "wb") as complaints:
            self.beeper = subprocess.Popen(
                [str(BEEPER)],
                env=self.environment,
                stdin=subprocess.PIPE,
                stdout=answers,
                stderr=complaints,
            )

    def start(self, name, argv):
        process = Process(name, argv, self.environment, self.folder / f"{name}-{len(self.running)}")
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

    def beep(self):
        """Ask for the sound; the call in the program has returned."""
        self.asked += 1
        self.beeper.stdin.write(b"\n")
        self.beeper.stdin.flush()
        # Far below the half minute after which a client itself gives up a hung server.
        wait_until(
            lambda: self.answers.read_text().count("returned") == self.asked, 10, "the call has returned"
        )

    def end_beeper(self):
        """The program's end, which must not wait for a sound server either."""
        self.beeper.stdin.close()
        assert self.beeper.wait(timeout=10) == 0

    def connections(self):
        """How many programs are connected to the server, this question's own connection left out."""
        call = ["pactl", "list", "short", "clients"]
        reply = subprocess.run(call, env=self.environment, capture_output=True, text=True, check=True)
        return sum("pactl" not in line for line in reply.stdout.splitlines())

    def close(self):
        self.beeper.kill()
        self.beeper.wait()
        for process in reversed(self.running):
            process.kill()
        shutil.rmtree(self.folder)


@pytest.fixture
def sound():
    session = SoundSession()
    yield session
    session.close()


def heard(listener):
    return any(listener.log.read_bytes())


def test_the_alert_is_heard(sound):
    sound.start_server()
    listener = sound.listen()
    assert not heard(listener)
    sound.beep()
    wait_until(lambda: heard(listener), what="the sound is heard")
    sound.end_beeper()
    assert sound.complaints.read_text() == ""


def test_there_is_no_connection_before_and_after_the_sound(sound):
    sound.start_server()
    listener = sound.listen()
    assert sound.connections() == 1, "the listener's alone"
    sound.beep()
    wait_until(lambda: heard(listener), what="the sound is heard")
    wait_until(lambda: sound.connections() == 1, what="the program has left")


def test_without_a_server_there_is_silence_until_one_comes(sound):
    sound.beep()
    sound.start_server()
    listener = sound.listen()

    def beep_and_listen():
        sound.beep()  # Until the first one has been given up, further ones are left out.
        return heard(listener)

    wait_until(beep_and_listen, what="the sound is heard")
    sound.end_beeper()
    assert sound.complaints.read_text() == ""


def test_a_server_that_was_replaced_is_found_again(sound):
    server = sound.start_server()
    listener = sound.listen()
    sound.beep()
    wait_until(lambda: heard(listener), what="the sound is heard")
    server.kill()
    sound.start_server()
    listener = sound.listen()

    def beep_and_listen():
        sound.beep()
        return heard(listener)

    wait_until(beep_and_listen, what="the sound is heard on the new server")
    assert sound.complaints.read_text() == ""


def test_a_hung_server_blocks_nobody_and_plays_later(sound):
    server = sound.start_server()
    listener = sound.listen()
    server.send(signal.SIGSTOP)
    for _ in range(20):
        sound.beep()
    server.send(signal.SIGCONT)
    wait_until(lambda: heard(listener), what="the sound is heard once the server goes on")


def test_a_hung_server_does_not_keep_the_program_from_ending(sound):
    server = sound.start_server()
    server.send(signal.SIGSTOP)
    sound.beep()
    sound.end_beeper()
    assert sound.complaints.read_text() == ""
