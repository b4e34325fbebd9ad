"""The alert sound at a real sound server, whose null sink is listened to."""

import os
import pathlib
import shutil
import signal
import subprocess
import tempfile

import pytest

from harness.sound import SoundServer, heard
from harness.waiting import wait_until

BEEPER = pathlib.Path(
    os.environ.get("QUILLBAR_BEEPER")
    or pathlib.Path(__file__).parents[2] / "build" / "release" / "bin" / "quillbar_beeper"
)


class SoundSession(SoundServer):
    """A sound server, a listener and a program that beeps, in folders of their own."""

    def __init__(self):
        # Short, since the path of a socket has few bytes.
        folder = pathlib.Path(tempfile.mkdtemp(prefix="quillbar-sound-"))
        runtime = folder / "run"
        runtime.mkdir(mode=0o700)
        environment = {
            "PATH": os.environ["PATH"],
            "LANG": "C.UTF-8",
            "HOME": str(folder),
            "XDG_RUNTIME_DIR": str(runtime),
        }
        super().__init__(folder, environment)
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

    def beep(self):
        """Ask for the sound; the call in the program has returned."""
        self.asked += 1
        self.beeper.stdin.write(b"\n")
        self.beeper.stdin.flush()
        # Far below the half minute after which a client itself gives up a hung server.
        wait_until(
            lambda: self.answers.read_text().count("returned") == self.asked, 20, "the call has returned"
        )

    def end_beeper(self):
        """The program's end, which must not wait for a sound server either."""
        self.beeper.stdin.close()
        assert self.beeper.wait(timeout=20) == 0

    def close(self):
        self.beeper.kill()
        self.beeper.wait()
        super().close()
        shutil.rmtree(self.folder)


@pytest.fixture
def sound():
    session = SoundSession()
    yield session
    session.close()


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
