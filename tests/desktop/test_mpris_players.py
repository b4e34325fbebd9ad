"""Real players, playing to a sink that nobody hears: what they tell is shown, what they are told is done."""

import hashlib
import io
import json
import os
import pty
import subprocess

import dbus
import pytest
from PIL import Image

from harness.helper import Helper
from harness.players import NEXT, PLAY_PAUSE, PREVIOUS, NowPlaying
from harness.session import Session
from harness.session import test_user as ordinary_user
from harness.sound import SINK
from harness.waiting import wait_until

PLAYER = "org.mpris.MediaPlayer2.Player"
PROPERTIES = "org.freedesktop.DBus.Properties"
SECONDS = 180  # of each song: none ends while a busy machine looks


def make_song(folder, number, cover):
    """A quiet tone as FLAC with tags and a cover."""
    song = folder / f"{number} song.flac"
    tone = ["synth", str(SECONDS), "sine", str(200 * number), "vol", "0.01"]
    subprocess.run(["sox", "-n", "-r", "22050", song, *tone], check=True)
    tags = {
        "TITLE": f"Song {number} ä",
        "ARTIST": "The Band",
        "ALBUM": "An Album",
        "TRACKNUMBER": f"{number}/2",
    }
    settings = [f"--set-tag={key}={value}" for key, value in tags.items()]
    subprocess.run(
        ["metaflac", "--no-utf8-convert", f"--import-picture-from={cover}", *settings, song], check=True
    )
    return song


@pytest.fixture
def stage():
    """A bus, a sound server, the framework and two songs, all of an ordinary user: some players refuse to
    run as root."""
    session = Session(user=ordinary_user())
    helpers = []
    try:
        session.start_bus()
        session.env["PULSE_SINK"] = SINK
        session.start(
            "pulseaudio",
            ["pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no", "--exit-idle-time=-1"]
            + ["-L", f"module-null-sink sink_name={SINK}"]
            + ["-L", "module-native-protocol-unix auth-anonymous=1"],
        )
        wait_until(lambda: (session.runtime / "pulse" / "native").exists(), what="the sound server is up")
        music = session.root / "music"
        music.mkdir()
        session.cover = music / "cover.png"
        picture = io.BytesIO()
        Image.effect_noise((300, 300), 80).save(picture, "png")
        session.cover.write_bytes(picture.getvalue())
        session.songs = [make_song(music, 1, session.cover), make_song(music, 2, session.cover)]
        session.helpers = helpers
        helpers.append(NowPlaying(session))
        session.now_playing = helpers[0]
        yield session
    finally:
        for helper in helpers:
            helper.close()
        session.close()


def connection(stage):
    """A connection of the user's own: their bus serves nobody else, not even root."""
    if stage.user is not None:
        os.seteuid(stage.user.pw_uid)
    try:
        return dbus.bus.BusConnection(stage.env["DBUS_SESSION_BUS_ADDRESS"])
    finally:
        if stage.user is not None:
            os.seteuid(0)


class Player:
    """A player that plays both songs; `name` as on the bus."""

    name = ""
    has_cover = True

    def __init__(self, stage):
        self.stage = stage
        self.bus = connection(stage)
        self.start()

    def start(self):
        raise NotImplementedError

    def run(self, *argv, env=None):
        self.process = self.stage.start(argv[0], [*argv], env)
        wait_until(self.is_there, 30, f"{argv[0]} is on the bus: {self.process.output}")

    def is_there(self):
        assert self.process.running, self.process.output
        return self.bus_name is not None

    @property
    def bus_name(self):
        names = [str(name) for name in self.bus.list_names()]
        prefix = f"org.mpris.MediaPlayer2.{self.name}"
        return next((name for name in names if name.startswith(prefix)), None)

    def ask(self, name):
        proxy = self.bus.get_object(self.bus_name, "/org/mpris/MediaPlayer2", introspect=False)
        return dbus.Interface(proxy, PROPERTIES).Get(PLAYER, name)

    def position(self):
        return self.ask("Position") / 1e6

    def tell(self, method, *arguments):
        proxy = self.bus.get_object(self.bus_name, "/org/mpris/MediaPlayer2", introspect=False)
        getattr(dbus.Interface(proxy, PLAYER), method)(*arguments)


class Mpv(Player):
    name = "mpv"

    def start(self):
        self.run("mpv", "--no-video", "--ao=pulse", "--no-terminal", *self.stage.songs)


class Vlc(Player):
    name = "vlc"

    def start(self):
        self.run("cvlc", "--intf", "dummy", "--control", "dbus", "--aout", "pulse", *self.stage.songs)


class Audacious(Player):
    name = "audacious"

    def start(self):
        self.run("audacious", "-H", "-p", *self.stage.songs, env={"QT_QPA_PLATFORM": "offscreen"})


class Cmus(Player):
    name = "cmus"
    has_cover = False

    def start(self):
        mine, theirs = pty.openpty()
        self.terminal = mine
        socket = self.stage.runtime / "cmus-socket"
        script = f"exec cmus --listen {socket} < {os.ttyname(theirs)} > {os.ttyname(theirs)}"
        os.chown(os.ttyname(theirs), self.stage.user.pw_uid, -1)
        self.run("sh", "-c", script, env={"TERM": "xterm"})
        os.close(theirs)

        def remote(*arguments):
            call = ["cmus-remote", "--server", str(socket), *arguments]
            return subprocess.run(call, env=self.stage.env, capture_output=True).returncode == 0

        # Now and then it says that it plays before it has got hold of the sound server, and never gets it.
        def plays():
            remote("-C", "player-stop", "player-next", "player-play")
            try:
                return wait_until(lambda: self.ask("PlaybackStatus") == "Playing" and self.position() > 0, 10)
            except AssertionError:
                return False

        wait_until(
            lambda: remote("-C", "set output_plugin=pulse", "set play_library=false"), what="cmus obeys"
        )
        for song in self.stage.songs:
            assert remote("-P", song)
        wait_until(plays, 40, what="cmus plays")


def program_of(stage, process):
    """The program that the workspace takes the process for; that needs no display."""
    helper = Helper(stage, "workspace", {"QT_QPA_PLATFORM": "offscreen"})
    stage.helpers.append(helper)

    def told():
        before = len(helper.lines)
        helper.send(f"process {process}")
        return wait_until(lambda: helper.lines[before:], what="an answer")[0].removeprefix("program ")

    return told()


PLAYERS = [Mpv, Vlc, Audacious, Cmus]


def agrees(stage, player, ahead=0.25):
    """Until our position is the player's own, or up to `ahead` seconds before it."""
    positions = []

    def close():
        def ours():
            return stage.now_playing.info.get("position", -1e9)

        # Ours before and after: nobody knows when in between the player's was true.
        positions[:] = ours(), player.position(), ours()
        return positions[0] - ahead <= positions[1] <= positions[2] + 0.25

    wait_until(close, 30, lambda: f"our position is the player's: {positions}", interval=0.1)


@pytest.mark.parametrize("kind", PLAYERS, ids=lambda kind: kind.name)
def test_a_player_is_shown_and_obeys(stage, kind):
    player = kind(stage)
    ours = stage.now_playing
    info = ours.wait_for(timeout=30, Title="Song 1 ä", Artist="The Band", Album="An Album", PlaybackRate=1)
    wait_until(lambda: abs(ours.info["Duration"] - SECONDS) < 0.5, what="its length is known")
    if kind.has_cover:
        cover = hashlib.md5(stage.cover.read_bytes()).hexdigest()
        wait_until(lambda: ours.info.get("artwork", 0) > 0, what=f"the cover is there: {info}")
        assert ours.info["artworkHash"] == cover
    assert program_of(stage, ours.process) == kind.name
    agrees(stage, player)

    assert ours.command(PLAY_PAUSE)
    ours.wait_for(PlaybackRate=0)
    assert player.ask("PlaybackStatus") == "Paused"
    agrees(stage, player)
    assert ours.command(PLAY_PAUSE)
    ours.wait_for(PlaybackRate=1)
    agrees(stage, player)

    ours.seek(30)
    wait_until(lambda: player.position() > 27, what="the player has moved")
    agrees(stage, player)
    assert 27 < ours.info["position"] < SECONDS - 50

    assert ours.command(NEXT)
    ours.wait_for(timeout=30, Title="Song 2 ä")
    agrees(stage, player)
    assert ours.command(PREVIOUS)
    ours.wait_for(timeout=30, Title="Song 1 ä")
    agrees(stage, player)


@pytest.mark.parametrize("kind", PLAYERS, ids=lambda kind: kind.name)
def test_a_move_made_in_the_player_is_seen(stage, kind):
    player = kind(stage)
    stage.now_playing.wait_for(timeout=30, Title="Song 1 ä", PlaybackRate=1)
    wait_until(lambda: player.ask("CanSeek"), what="it can move")
    player.tell("Seek", dbus.Int64(40_000_000))
    wait_until(lambda: player.position() > 38, what="it has moved")
    agrees(stage, player)


@pytest.mark.parametrize("kind", PLAYERS, ids=lambda kind: kind.name)
def test_a_player_dies_and_comes_back(stage, kind):
    player = kind(stage)
    stage.now_playing.wait_for(timeout=30, Title="Song 1 ä")
    player.process.kill()
    stage.now_playing.wait_for_nothing()
    again = kind(stage)
    stage.now_playing.wait_for(timeout=30, Title="Song 1 ä", PlaybackRate=1)
    agrees(stage, again)


def test_two_at_once(stage):
    first = Mpv(stage)
    ours = stage.now_playing
    ours.wait_for(timeout=30, Title="Song 1 ä", PlaybackRate=1)
    first_process = ours.process
    second = Audacious(stage)
    wait_until(lambda: ours.process not in (0, first_process), 20, "the second is shown", interval=0.1)
    ours.wait_for(timeout=30, PlaybackRate=1)
    assert ours.command(PLAY_PAUSE)
    ours.wait_for(PlaybackRate=0)
    assert second.ask("PlaybackStatus") == "Paused"
    assert first.ask("PlaybackStatus") == "Playing"
    second.process.kill()
    wait_until(lambda: ours.process == first_process, what="the first is shown again", interval=0.1)
    ours.wait_for(PlaybackRate=1)


def test_the_bus_restarts(stage):
    Mpv(stage)
    ours = stage.now_playing
    ours.wait_for(timeout=30, Title="Song 1 ä")
    stage.bus.kill()
    ours.wait_for_nothing()
    stage.start_bus()
    player = Mpv(stage)
    ours.wait_for(timeout=30, Title="Song 1 ä", PlaybackRate=1)
    agrees(stage, player)


class Firefox(Player):
    """A page whose script says what it plays. It tells its position in whole seconds."""

    name = "firefox"

    PAGE = """<!DOCTYPE html><title>A page</title>
<audio id="song" src="SONG" autoplay loop></audio>
<script>
navigator.mediaSession.metadata = new MediaMetadata({
  title: "Song 1 ä", artist: "The Band", album: "An Album", artwork: [{src: "COVER", type: "image/png"}]});
for (const [action, by] of [["nexttrack", 100], ["previoustrack", -100]])
  navigator.mediaSession.setActionHandler(action, () => { song.currentTime += by; });
navigator.mediaSession.setActionHandler("seekto", details => { song.currentTime = details.seekTime; });
</script>"""
    PREFERENCES = {
        "media.autoplay.default": 0,
        "media.autoplay.blocking_policy": 0,
        "media.hardwaremediakeys.enabled": True,
        "browser.shell.checkDefaultBrowser": False,
        "datareporting.policy.dataSubmissionEnabled": False,
        "app.normandy.enabled": False,
    }

    def start(self):
        folder = self.stage.songs[0].parent
        page = folder / "page.html"
        text = self.PAGE.replace("SONG", self.stage.songs[0].as_uri())
        page.write_text(text.replace("COVER", self.stage.cover.as_uri()), encoding="utf-8")
        profile = self.stage._folder("profile")
        lines = [f"user_pref({json.dumps(k)}, {json.dumps(v)});" for k, v in self.PREFERENCES.items()]
        (profile / "user.js").write_text("\n".join(lines))
        self.run("firefox-esr", "--headless", "--no-remote", "--profile", str(profile), page.as_uri())


def test_a_page_in_a_browser_is_shown_and_obeys(stage):
    player = Firefox(stage)
    ours = stage.now_playing
    wanted = {"Title": "Song 1 ä", "Artist": "The Band", "Album": "An Album", "PlaybackRate": 1}
    ours.wait_for(timeout=30, **wanted)
    wait_until(lambda: abs(ours.info["Duration"] - SECONDS) < 1, what="its length is known")
    wait_until(lambda: ours.info.get("artwork"), what="the cover is there")
    assert ours.process == player.process.pid
    assert program_of(stage, ours.process) == "firefox-esr"

    agrees(stage, player, ahead=1.25)
    assert ours.command(PLAY_PAUSE)
    ours.wait_for(PlaybackRate=0)
    assert player.ask("PlaybackStatus") == "Paused"
    assert ours.command(PLAY_PAUSE)
    ours.wait_for(PlaybackRate=1)
    assert ours.command(NEXT)
    wait_until(lambda: player.position() >= 100, what="it has skipped")
    agrees(stage, player, ahead=1.25)
    assert ours.command(PREVIOUS)
    wait_until(lambda: player.position() < 90, what="it has skipped back")
    agrees(stage, player, ahead=1.25)
    ours.seek(140)
    wait_until(lambda: player.position() >= 140, what="it has moved")
    agrees(stage, player, ahead=1.25)
