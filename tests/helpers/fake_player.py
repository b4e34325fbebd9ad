"""A media player that plays nothing: its state is whatever it is told, however odd.

Usage: fake_player.py NAME [JSON of its first state]

Each line on standard input is one JSON object, obeyed in order:
  {"set": {PROPERTY: VALUE...}}       changes properties and tells of it
  {"quietly": {PROPERTY: VALUE...}}   changes them without a word
  {"invalidate": [PROPERTY...]}       tells that they have changed, but not to what
  {"remove": [PROPERTY...]}
  {"move": SECONDS}                   moves the position and says nothing
  {"seeked": SECONDS}                 moves it and sends Seeked
  {"announce": RAW}                   sends Seeked with that number, and moves nothing
  {"options": {...}}                  see Options
  {"flood": COUNT}                    tells so many changes of the volume at once
  {"own": NAME} {"release": NAME}     takes and gives up a further name

A VALUE is text, a boolean, a list of texts, an object, or [SIGNATURE, VALUE] for another type of the bus:
["x", 5], ["o", "/a"], ["s", "5"]. Metadata is a plain object of such values.

It answers each line by "done" and writes a line of JSON for each call that it is sent:
{"call": METHOD, "arguments": [...]}; readings of properties are counted: {"options": {}} is answered by
{"reads": {METHOD or PROPERTY: COUNT}} before "done".
"""

import json
import os
import signal
import sys
import time

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

ROOT = "org.mpris.MediaPlayer2"
PLAYER = "org.mpris.MediaPlayer2.Player"
PROPERTIES = "org.freedesktop.DBus.Properties"
TYPES = {
    "x": dbus.Int64,
    "t": dbus.UInt64,
    "i": dbus.Int32,
    "u": dbus.UInt32,
    "d": dbus.Double,
    "s": dbus.String,
    "o": dbus.ObjectPath,
    "b": dbus.Boolean,
    "y": dbus.Byte,
}


class Options:
    """How it is odd."""

    unit = 1_000_000  # a second of its position and of what it is told
    granularity = 0.0  # seconds; it tells its position in steps of this
    stale = 0.0  # for so many seconds after a new track it tells the position in the old one
    announces_seeks = True  # whether it sends Seeked when told to move
    obeys = True
    hangs = False  # answers no reading at all
    position_type = "x"
    delays = {}  # seconds after which it does what a method asks for, by the method's name
    following = []  # the metadata of the tracks to which Next goes, one after the other


def value_of(value):
    if isinstance(value, list) and len(value) == 2 and value[0] in TYPES:
        return TYPES[value[0]](value[1], variant_level=1)
    if isinstance(value, list):
        return dbus.Array([str(part) for part in value], signature="s", variant_level=1)
    if isinstance(value, dict):
        return dbus.Dictionary(
            {key: value_of(part) for key, part in value.items()}, signature="sv", variant_level=1
        )
    return value


class Player(dbus.service.Object):
    def __init__(self, bus, root):
        super().__init__(bus, "/org/mpris/MediaPlayer2")
        self.root = {"CanRaise": True, "Identity": "Fake", **root}
        self.values = {"PlaybackStatus": "Stopped"}
        self.options = Options()
        self.reads = {}
        self.position = 0.0
        self.since = time.monotonic()
        self.stale_position = 0.0
        self.stale_until = 0.0

    # -- position --------------------------------------------------------------------------

    @property
    def rate(self):
        rate = self.values.get("Rate", 1.0)
        return float(rate or 1.0) if self.values.get("PlaybackStatus") == "Playing" else 0.0

    def now(self):
        return self.position + (time.monotonic() - self.since) * self.rate

    def move(self, seconds):
        self.position = seconds
        self.since = time.monotonic()

    def told_position(self):
        seconds = self.stale_position if time.monotonic() < self.stale_until else self.now()
        if self.options.granularity:
            seconds -= seconds % self.options.granularity
        number = seconds * self.options.unit
        return TYPES[self.options.position_type](
            number if self.options.position_type == "d" else int(number), variant_level=1
        )

    # -- state -----------------------------------------------------------------------------

    def change(self, values, tells=True):
        here = self.now()
        track = self.values.get("Metadata")
        self.values.update(values)
        self.move(here)
        if "Metadata" in values and values["Metadata"] != track:
            self.stale_position = here
            self.stale_until = time.monotonic() + self.options.stale
            self.move(0)
        if tells:
            self.PropertiesChanged(PLAYER, {key: value_of(value) for key, value in values.items()}, [])

    def count(self, what):
        self.reads[what] = self.reads.get(what, 0) + 1

    @dbus.service.method(
        PROPERTIES, in_signature="s", out_signature="a{sv}", async_callbacks=("answer", "refuse")
    )
    def GetAll(self, interface, answer, refuse):
        self.count("GetAll")
        if self.options.hangs:
            return
        if interface == ROOT:
            answer({key: value_of(value) for key, value in self.root.items()})
            return
        values = {key: value_of(value) for key, value in self.values.items()}
        values["Position"] = self.told_position()
        answer(values)

    @dbus.service.method(
        PROPERTIES, in_signature="ss", out_signature="v", async_callbacks=("answer", "refuse")
    )
    def Get(self, interface, name, answer, refuse):
        self.count(str(name))
        if self.options.hangs:
            return
        if name == "Position":
            answer(self.told_position())
        elif name in self.values:
            answer(value_of(self.values[name]))
        else:
            refuse(dbus.DBusException("no such property", name="org.freedesktop.DBus.Error.UnknownProperty"))

    @dbus.service.method(PROPERTIES, in_signature="ssv")
    def Set(self, interface, name, value):
        self.record("Set", name, value)
        self.obey({str(name): str(value) if isinstance(value, str) else bool(value)})

    @dbus.service.signal(PROPERTIES, signature="sa{sv}as")
    def PropertiesChanged(self, interface, changed, invalidated):
        pass

    @dbus.service.signal(PLAYER, signature="x")
    def Seeked(self, position):
        pass

    # -- commands --------------------------------------------------------------------------

    def record(self, method, *arguments):
        say({"call": method, "arguments": [str(a) if isinstance(a, str) else int(a) for a in arguments]})

    @dbus.service.method(ROOT)
    def Raise(self):
        self.record("Raise")

    @dbus.service.method(PLAYER)
    def PlayPause(self):
        self.record("PlayPause")
        is_playing = self.values.get("PlaybackStatus") == "Playing"
        self.obey({"PlaybackStatus": "Paused" if is_playing else "Playing"}, after="PlayPause")

    @dbus.service.method(PLAYER)
    def Play(self):
        self.record("Play")
        self.obey({"PlaybackStatus": "Playing"})

    @dbus.service.method(PLAYER)
    def Pause(self):
        self.record("Pause")
        self.obey({"PlaybackStatus": "Paused"})

    def obey(self, values, after=None):
        delay = self.options.delays.get(after, 0)
        if self.options.obeys and delay:
            GLib.timeout_add(round(1000 * delay), lambda: self.change(values))
        elif self.options.obeys:
            self.change(values)

    @dbus.service.method(PLAYER)
    def Next(self):
        self.record("Next")
        if self.options.following:
            self.obey({"Metadata": self.options.following.pop(0)}, after="Next")

    @dbus.service.method(PLAYER)
    def Previous(self):
        self.record("Previous")

    @dbus.service.method(PLAYER, in_signature="ox")
    def SetPosition(self, track, position):
        self.record("SetPosition", track, position)
        self.moved_to(position / self.options.unit)

    @dbus.service.method(PLAYER, in_signature="x")
    def Seek(self, offset):
        self.record("Seek", offset)
        self.moved_to(self.now() + offset / self.options.unit)

    def moved_to(self, seconds):
        if self.options.obeys:
            self.move(seconds)
            if self.options.announces_seeks:
                self.Seeked(int(seconds * self.options.unit))


def say(answer):
    print(answer if isinstance(answer, str) else json.dumps(answer), flush=True)


def obey(bus, player, names, order):
    for verb, value in order.items():
        if verb == "set":
            player.change(value)
        elif verb == "quietly":
            player.change(value, tells=False)
        elif verb == "invalidate":
            player.PropertiesChanged(PLAYER, {}, value)
        elif verb == "remove":
            for name in value:
                player.values.pop(name, None)
        elif verb == "move":
            player.move(value)
        elif verb == "seeked":
            player.move(value)
            player.Seeked(int(value * player.options.unit))
        elif verb == "announce":
            player.Seeked(value)
        elif verb == "options":
            for name, option in value.items():
                assert hasattr(Options, name), name
                setattr(player.options, name, option)
            say({"reads": player.reads})
        elif verb == "flood":
            for step in range(value):
                player.PropertiesChanged(PLAYER, {"Volume": dbus.Double(step % 100 / 100)}, [])
        elif verb == "own":
            names[value] = dbus.service.BusName(f"{ROOT}.{value}", bus)
        elif verb == "release":
            bus.release_name(f"{ROOT}.{value}")
            names.pop(value)


def main():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    first = json.loads(sys.argv[2]) if len(sys.argv) > 2 else {}
    player = Player(bus, first.pop("root", {}))
    loop = GLib.MainLoop()
    names = {}
    pending = b""

    def read(*unused):
        nonlocal pending
        part = os.read(0, 65536)
        if not part:
            loop.quit()
            return False
        pending += part
        *lines, pending = pending.split(b"\n")
        for line in lines:
            obey(bus, player, names, json.loads(line))
            say("done")
        return True

    obey(bus, player, names, first)
    obey(bus, player, names, {"own": sys.argv[1]})
    say("ready")
    signal.signal(signal.SIGINT, signal.SIG_DFL)
    GLib.io_add_watch(0, GLib.IO_IN | GLib.IO_HUP, read)
    loop.run()


main()
