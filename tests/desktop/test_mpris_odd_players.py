"""Players that do what some have been seen to do: odd values, silence, floods, hanging, two at once."""

import signal
import time

import pytest

from harness.players import NEXT, PLAY_PAUSE, PREVIOUS, NowPlaying, RunsFrom, track
from harness.waiting import wait_until


# -- what a player says of its track ---------------------------------------------------------


@pytest.mark.parametrize(
    "metadata, wanted",
    [
        (track(), {"Title": "Song", "Artist": "Band", "Album": "Album", "Duration": 240}),
        (track(xesam_title=None, xesam_url="file:///a/No%20tag.mp3"), {"Title": "No tag.mp3"}),
        (track(xesam_artist="One Two", xesam_genre="Rock"), {"Artist": "One Two"}),
        (track(xesam_artist=["One", "Two"]), {"Artist": "One, Two"}),
        (track(xesam_trackNumber="3/12", mpris_trackid=["o", "/0"]), {"Title": "Song"}),
        (track(mpris_trackid="spotify:track:1"), {"Title": "Song"}),
        (track(mpris_length="240000000"), {"Duration": 240}),
        (track(mpris_length=["d", 240e6]), {"Duration": 240}),
        (track(mpris_length=["t", 240_000_000]), {"Duration": 240}),
        (track(mpris_length=["x", -1]), {"Duration": 0}),
    ],
    ids=lambda value: None,
)
def test_metadata_of_every_kind_is_understood(players, now_playing, metadata, wanted):
    players(track=metadata)
    now_playing.wait_for(PlaybackRate=1, **wanted)


def test_a_player_without_loop_status_rate_and_shuffle_plays_at_its_normal_speed(players, now_playing):
    player = players(track=track())
    now_playing.wait_for(PlaybackRate=1)
    player.set(Rate=["d", 1.5])
    now_playing.wait_for(PlaybackRate=1.5)


def test_stopped_players_and_such_without_a_title_dont_count(players, now_playing):
    player = players(track=track(), status="Stopped")
    other = players("other", track={"mpris:trackid": ["o", "/1"]})
    assert now_playing.info == {} and now_playing.process == 0
    player.set(PlaybackStatus="Paused")
    now_playing.wait_for(Title="Song", PlaybackRate=0)
    player.set(PlaybackStatus="Stopped")
    now_playing.wait_for_nothing()
    other.set(Metadata=track("Named"))
    now_playing.wait_for(Title="Named")


@pytest.mark.parametrize("between", [{}, {"Metadata": {}}])
def test_one_that_says_between_tracks_that_it_has_none_stays_in_sight(players, now_playing, between):
    player = players(track=track())
    now_playing.wait_for(Title="Song", PlaybackRate=1)
    told = now_playing.question("told")["isPlaying"]
    following = track("Next", mpris_trackid=["o", "/2"])
    player.tell_at_once(
        {"set": {"PlaybackStatus": "Stopped", **between}},
        {"set": {"PlaybackStatus": "Playing", "Metadata": following}},
    )
    now_playing.wait_for(Title="Next", PlaybackRate=1)
    assert now_playing.question("told")["isPlaying"] == told


def test_a_track_that_begins_anew_after_a_stop_is_at_its_start(players, now_playing):
    player = players(track=track())
    player.tell(seeked=100)
    now_playing.wait_for_position(100, within=10)
    with RunsFrom(0) as position:
        player.tell_at_once(
            {"set": {"PlaybackStatus": "Stopped"}}, {"move": 0}, {"set": {"PlaybackStatus": "Playing"}}
        )
    now_playing.wait_for_position(position)


# -- which player ----------------------------------------------------------------------------


def test_the_one_that_started_last_is_shown_until_another_starts(players, now_playing):
    first = players("first", track=track("First"))
    now_playing.wait_for(Title="First")
    second = players("second", track=track("Second"), status="Paused")
    second.set(PlaybackStatus="Playing")
    now_playing.wait_for(Title="Second")
    second.set(PlaybackStatus="Paused")
    now_playing.wait_for(Title="Second", PlaybackRate=0)
    first.set(Metadata=track("First again"))
    first.set(PlaybackStatus="Paused")
    first.set(PlaybackStatus="Playing")
    now_playing.wait_for(Title="First again", PlaybackRate=1)
    assert now_playing.process == first.pid
    first.quit()
    now_playing.wait_for(Title="Second", PlaybackRate=0)


def test_when_it_goes_one_that_plays_comes_before_one_that_rests(players, now_playing):
    playing = players("playing", track=track("Playing"))
    now_playing.wait_for(Title="Playing")
    rested = players("rested", track=track("Rested"))
    now_playing.wait_for(Title="Rested")
    rested.set(PlaybackStatus="Paused")
    gone = players("gone", track=track("Gone"))
    now_playing.wait_for(Title="Gone")
    gone.kill()
    now_playing.wait_for(Title="Playing")
    playing.kill()
    now_playing.wait_for(Title="Rested")


def test_a_mirror_of_other_players_is_left_out(players, now_playing):
    players("playerctld", track=track("Mirrored"))
    players("real", track=track("Real"), status="Paused")
    now_playing.wait_for(Title="Real")


def test_a_player_that_goes_by_two_names_is_one(players, now_playing):
    player = players("twice", track=track())
    now_playing.wait_for(Title="Song")
    player.tell(own="twice.instance1")
    player.tell(release="twice")
    now_playing.wait_for(Title="Song")
    player.tell(release="twice.instance1")
    now_playing.wait_for_nothing()


# -- position --------------------------------------------------------------------------------


def test_the_position_is_the_players_own(players, now_playing):
    player = players(track=track())
    with RunsFrom(70) as position:
        player.tell(move=70)
    now_playing.wait_for_position(position)


def test_a_move_without_a_word_is_seen_within_seconds(players, now_playing):
    player = players(track=track(), options={"announces_seeks": False})
    now_playing.wait_for(Title="Song")
    with RunsFrom(100) as position:
        player.tell(move=100)
    now_playing.wait_for_position(position)


def test_a_seek_is_taken_from_its_signal(players, now_playing):
    player = players(track=track(), status="Paused")
    now_playing.wait_for(Title="Song")
    player.tell(seeked=100)
    now_playing.wait_for_position(100)


@pytest.mark.parametrize("position_type", ["x", "t", "d", "i"])
def test_a_position_of_another_type_is_understood(players, now_playing, position_type):
    player = players(track=track(), status="Paused", options={"position_type": position_type})
    player.tell(move=100)
    now_playing.wait_for_position(100)


def test_an_old_position_after_a_new_track_is_not_shown(players, now_playing):
    player = players(track=track(), options={"stale": 0.7})
    player.tell(move=100)
    now_playing.wait_for_position(100, within=10)
    with RunsFrom(0) as position:
        player.set(Metadata=track("Next", mpris_trackid=["o", "/2"]))
    began = time.monotonic()
    info = now_playing.wait_for(Title="Next")
    # The old position is far ahead, however long all of this takes.
    while time.monotonic() < began + 2:
        assert info["position"] < 90
        info = now_playing.info
    now_playing.wait_for_position(position)


def test_milliseconds_are_recognised(players, now_playing):
    player = players(track=track(mpris_length=["x", 4_000_000]), options={"unit": 1000})
    with RunsFrom(30) as position:
        player.tell(move=30)
    now_playing.wait_for_position(position, Duration=4000)
    now_playing.seek(120)
    wait_until(lambda: any(call[0] == "SetPosition" for call in player.calls), what="it is told to move")
    assert player.calls[-1] == ("SetPosition", "/org/example/track/1", 120_000)


def test_whole_seconds_are_refined(players, now_playing):
    player = players(track=track(), options={"granularity": 1.0})
    with RunsFrom(30.5) as position:
        player.tell(move=30.5)
    now_playing.wait_for_position(position, timeout=60)


# -- commands --------------------------------------------------------------------------------


def test_commands_arrive_and_their_effect_is_in_the_next_answer(players, now_playing):
    player = players(track=track())
    now_playing.wait_for(Title="Song")
    assert now_playing.command(PLAY_PAUSE)
    assert now_playing.info["PlaybackRate"] == 0
    assert now_playing.command(PLAY_PAUSE)
    assert now_playing.info["PlaybackRate"] == 1
    assert now_playing.command(NEXT) and now_playing.command(PREVIOUS)
    player.wait_for_call("Previous")
    assert [call[0] for call in player.calls] == ["PlayPause", "PlayPause", "Next", "Previous"]


def test_an_answer_shows_the_effect_of_the_last_of_several_commands(players, now_playing):
    options = {"following": [track("Next")], "delays": {"Next": 0.05, "PlayPause": 0.15}}
    players(track=track(), options=options)
    now_playing.wait_for(Title="Song", PlaybackRate=1)
    assert now_playing.command(NEXT) and now_playing.command(PLAY_PAUSE)
    info = now_playing.info
    assert (info["Title"], info["PlaybackRate"]) == ("Next", 0)


def test_a_command_without_effect_takes_no_time_from_the_next(players, now_playing):
    players(track=track(), options={"delays": {"PlayPause": 0.1}})
    now_playing.wait_for(PlaybackRate=1)
    assert now_playing.command(PREVIOUS)
    time.sleep(0.18)  # so that the first command's time is over before the second has its effect
    assert now_playing.command(PLAY_PAUSE)
    assert now_playing.info["PlaybackRate"] == 0


def test_what_a_player_cant_is_not_asked_for(players, now_playing):
    player = players(track=track(), CanPause=False, CanGoNext=False, CanGoPrevious=False, CanSeek=False)
    now_playing.wait_for(Title="Song")
    assert not any(now_playing.command(number) for number in (PLAY_PAUSE, NEXT, PREVIOUS))
    now_playing.seek(100)
    player.set(CanPause=True, CanPlay=False, CanSeek=True)
    wait_until(lambda: now_playing.command(PLAY_PAUSE), what="it can be paused")
    player.wait_for_call("Pause")
    assert player.calls == [("Pause",)]


@pytest.mark.parametrize(
    "track_id", [None, "spotify:track:1", ["o", "/org/mpris/MediaPlayer2/TrackList/NoTrack"]]
)
def test_without_a_track_id_the_seek_is_relative(players, now_playing, track_id):
    player = players(track=track(mpris_trackid=track_id), status="Paused")
    player.tell(seeked=30)
    now_playing.wait_for_position(30)
    now_playing.seek(100)
    player.wait_for_call("Seek", 70_000_000)
    now_playing.wait_for_position(100)


@pytest.mark.parametrize("track_id", [["o", "/0"], "/org/example/1"])
def test_any_path_will_do_as_a_track_id(players, now_playing, track_id):
    player = players(track=track(mpris_trackid=track_id), status="Paused")
    now_playing.wait_for(Title="Song")
    now_playing.seek(1000)
    path = track_id if isinstance(track_id, str) else track_id[1]
    player.wait_for_call("SetPosition", path, 240_000_000)


# -- floods, silence, hanging ----------------------------------------------------------------


def test_a_flood_of_changes_is_answered_by_no_calls(players, now_playing):
    player = players(track=track())
    now_playing.wait_for(Title="Song")
    before = sum(player.reads.values())
    for step in range(20):
        player.tell(flood=200)
        player.set(Metadata=track(f"Song {step}"))
    now_playing.wait_for(Title="Song 19")
    # A few for each track and second; a read a change would be thousands.
    assert sum(player.reads.values()) - before < 400


def test_a_change_told_without_its_value_is_read(players, now_playing):
    player = players(track=track())
    now_playing.wait_for(Title="Song")
    player.tell(quietly={"Metadata": track("Quiet")}, invalidate=["Metadata"])
    now_playing.wait_for(Title="Quiet")


def test_a_player_that_hangs_is_not_shown_until_it_answers(players, now_playing):
    player = players(track=track(), options={"hangs": True})
    other = players("other", track=track("Other"))
    now_playing.wait_for(Title="Other")
    turns = now_playing.question("turns")["turns"]
    assert now_playing.info["Title"] == "Other"
    other.kill()
    now_playing.wait_for_nothing()
    wait_until(lambda: now_playing.question("turns")["turns"] > turns, what="the main thread goes on")
    player.tell(options={"hangs": False})
    player.set(Volume=["d", 0.5])
    now_playing.wait_for(timeout=60, Title="Song")


def test_a_player_that_is_held_up_vanishes_and_returns(players, now_playing):
    player = players(track=track())
    now_playing.wait_for(Title="Song")
    player.send_signal(signal.SIGSTOP)
    wait_until(lambda: now_playing.info == {}, 40, "it is not shown", interval=0.2)
    player.send_signal(signal.SIGCONT)
    now_playing.wait_for(timeout=60, Title="Song")


def test_polls_of_a_player_cost_it_little(players, now_playing):
    player = players(track=track())
    now_playing.wait_for(Title="Song")
    player.tell(seeked=50)
    now_playing.wait_for_position(50, within=5)
    before = sum(player.reads.values())
    for _ in range(200):
        now_playing.info
    assert sum(player.reads.values()) - before <= 2


# -- the bus ---------------------------------------------------------------------------------


def test_notifications_tell_of_changes_only(players, now_playing):
    player = players(track=track())
    now_playing.wait_for(Title="Song")
    player.set(PlaybackStatus="Paused")
    now_playing.wait_for(PlaybackRate=0)
    told = now_playing.question("told")
    assert told["isPlaying"] == 2
    player.tell(flood=100)
    player.set(Metadata=track("Next"))
    now_playing.wait_for(Title="Next")
    assert told["info"] < now_playing.question("told")["info"] <= told["info"] + 4


def test_the_bus_restarts(desktop, players, now_playing):
    players(track=track())
    now_playing.wait_for(Title="Song")
    desktop.bus.kill()
    now_playing.wait_for_nothing()
    desktop.start_bus()
    players(track=track("After"))
    now_playing.wait_for(timeout=60, Title="After")


@pytest.mark.desktop(bus=False)
def test_without_a_bus_there_is_no_framework(desktop):
    helper = NowPlaying(desktop)
    assert helper.functions == '{"functions":0}'
    helper.close()


def test_with_a_bus_all_of_it_is_there(now_playing):
    assert now_playing.functions == '{"functions":5}'
    assert now_playing.info == {} and now_playing.process == 0
