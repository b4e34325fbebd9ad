"""The scripts' road to players: a fake Spotify and a fake Music on a desktop without a now-playing framework."""

import pytest

from harness.clock import hurried
from harness.helper import Helper
from harness.scripted_players import ScriptedMedia, ScriptedPlayer, metadata
from harness.waiting import wait_until

TRACK = "/track/1"
SECOND = "/track/2"
ADDRESS = "https://covers.example/1.jpg"
FOUND = '{"results":[{"artworkUrl100":"https://art.example/100x100bb.jpg"}]}'


def search(title):
    term = f"Kraftwerk {title}".replace(" ", "%20")
    return f"https://itunes.apple.com/search?term={term}&entity=song&limit=1"


def check_command(media, command, player, call):
    before = len(player.calls)
    media.send(command)
    arrived = wait_until(lambda: player.calls[before:], 20, f"{command} arrives")
    assert arrived == [call]


@pytest.fixture
def start_player(desktop):
    running = []

    def start(name, identity, **options):
        running.append(ScriptedPlayer(desktop, name, identity, **options))
        return running[-1]

    yield start
    for player in running:
        player.kill()


@pytest.fixture
def media(start_helper):
    return ScriptedMedia(start_helper("scripted_media"))


@pytest.fixture
def slow_media(desktop):
    """The same with a slow clock: what it looks at by itself waits for the player on a busy machine too."""
    helper = Helper(desktop, "scripted_media", hurried(0.25))
    yield ScriptedMedia(helper)
    helper.close()


@pytest.fixture
def spotify(start_player):
    player = start_player("spotify", "Spotify")
    player.play("Autobahn", TRACK, ADDRESS)
    return player


@pytest.fixture
def music(start_player):
    player = start_player("music", "Music")
    player.play("Autobahn", TRACK, "data:,first", seconds=62.5)
    return player


def test_what_spotify_plays(spotify, media):
    spotify.tell(set={"Shuffle": True, "LoopStatus": "Track"})
    look = media.wait_for(lambda look: look and look["repeat"] == "all", "the look is complete")
    assert look["title"] == "Autobahn" and look["artist"] == "Kraftwerk" and look["album"] == "Autobahn"
    assert look["duration"] == 180 and look["rate"] == 1 and 0 <= look["elapsed"] <= 180
    assert look["shuffle"] and not look["loved"]
    assert look["bundle"] == "com.spotify.client" and look["trackID"] == TRACK


def test_what_music_plays(music, media):
    music.tell(set={"PlaybackStatus": "Paused", "LoopStatus": "Track"})
    look = media.wait_for(lambda look: look and look["repeat"] == "one" and look["rate"] == 0, "it is paused")
    assert look["title"] == "Autobahn" and look["duration"] == 62.5
    assert look["bundle"] == "com.apple.Music" and look["trackID"] == TRACK
    assert look["artwork"] == "first"
    music.tell(set={"PlaybackStatus": "Stopped"})
    media.wait_for_nothing()


def test_each_command_arrives_at_spotify(spotify, media):
    media.wait_for_title("Autobahn")
    for command, call in (
        ("playpause", ("PlayPause",)),
        ("next", ("Next",)),
        ("previous", ("Previous",)),
        ("seek 12.5", ("SetPosition", TRACK, 12_500_000)),
        ("shuffle true", ("Set", "Shuffle", 1)),
        ("repeat one", ("Set", "LoopStatus", "Playlist")),
        ("repeat off", ("Set", "LoopStatus", "None")),
        ("repeat all", ("Set", "LoopStatus", "Playlist")),
        ("shuffle false", ("Set", "Shuffle", 0)),
    ):
        check_command(media, command, spotify, call)


def test_each_command_arrives_at_music(music, media):
    media.wait_for_title("Autobahn")
    for command, call in (
        ("playpause", ("PlayPause",)),
        ("next", ("Next",)),
        ("previous", ("Previous",)),
        ("seek 30", ("SetPosition", TRACK, 30_000_000)),
        ("shuffle true", ("Set", "Shuffle", 1)),
        ("repeat one", ("Set", "LoopStatus", "Track")),
        ("repeat all", ("Set", "LoopStatus", "Playlist")),
        ("repeat off", ("Set", "LoopStatus", "None")),
    ):
        check_command(media, command, music, call)


def test_a_favourite_has_no_place_on_the_bus_and_harms_nothing(music, media):
    media.wait_for_title("Autobahn")
    media.send("loved true")
    media.send("next")
    music.wait_for_call("Next")
    assert music.calls == [("Next",)]
    assert not [line for line in media.helper.lines if "error" in line]


def test_the_look_after_a_command_shows_its_effect(music, slow_media):
    media = slow_media
    media.wait_for_title("Autobahn")
    before = len(media.snapshots)
    media.send("repeat one")
    look = media.wait_for(lambda look: look and look["repeat"] == "one", "the effect is seen")
    assert len(media.snapshots[: media.snapshots.index(look)]) <= before + 1


def test_a_track_without_a_name_of_its_own_is_moved_by_the_way_to_go(start_player, media):
    player = start_player("spotify", "Spotify")
    player.tell(set={"Metadata": metadata("Autobahn", ""), "PlaybackStatus": "Paused"})
    player.tell(move=20)
    assert media.wait_for_title("Autobahn")["trackID"] == ""
    media.send("seek 50")
    player.wait_for_call("Seek", 30_000_000)


def test_of_two_players_the_one_that_plays_is_shown_and_told(spotify, music, media):
    spotify.tell(set={"PlaybackStatus": "Paused"})
    music.play("Kometenmelodie", TRACK, "data:,first")
    media.wait_for_title("Kometenmelodie")
    media.send("next")
    music.wait_for_call("Next")
    assert spotify.calls == []
    # With neither playing it is the first of the two.
    music.tell(set={"PlaybackStatus": "Paused"})
    media.wait_for_title("Autobahn")
    media.send("previous")
    spotify.wait_for_call("Previous")
    assert music.calls == [("Next",)]


def test_a_player_is_known_by_the_word_in_its_bus_name(start_player, media):
    start_player("some_music_box", "Box").play("Autobahn", TRACK)
    media.wait_for_title("Autobahn")


def test_others_are_left_alone(start_player, media):
    others = [start_player("vlc", "VLC"), start_player("playerctld", "Spotify")]
    for each in others:
        each.play("Autobahn", TRACK)
    media.wait_for_looks(2)
    media.send("next")
    media.wait_for_looks(2)
    assert set(map(str, media.snapshots)) == {"None"}
    assert [each.calls for each in others] == [[], []]


def test_the_cover_of_the_track_before_is_never_shown(music, slow_media):
    media = slow_media
    media.wait_for(lambda look: look and look["artwork"] == "first", "the first cover shows")
    # The player changes to the next track and is late with its cover.
    music.play("Mitternacht", SECOND, "data:,first")
    media.wait_for_title("Mitternacht")
    music.play("Mitternacht", SECOND, "data:,second")
    media.wait_for(lambda look: look and look["artwork"] == "second", "the second cover shows")
    covers = {(look["title"], look["artwork"]) for look in media.snapshots if look}
    assert covers == {("Autobahn", "first"), ("Mitternacht", None), ("Mitternacht", "second")}
    assert media.fetched == []


def test_a_cover_that_stays_the_same_is_looked_for_on_the_web(music, media):
    media.wait_for(lambda look: look and look["artwork"] == "first", "the first cover shows")
    media.send(f"page {search('Mitternacht')} {FOUND}")
    media.send("page https://art.example/300x300bb.jpg of-the-album")
    music.play("Mitternacht", SECOND, "data:,first")
    media.wait_for(lambda look: look and look["artwork"] == "of-the-album", "the cover is found")
    looks = [look for look in media.snapshots if look and look["title"] == "Mitternacht"]
    assert [look["artwork"] for look in looks[:4]] == [None] * 4
    assert media.fetched == [search("Mitternacht"), "https://art.example/300x300bb.jpg"]
    # Kept, whatever the player says now.
    music.play("Mitternacht", SECOND, "data:,third")
    media.wait_for_looks(2)
    assert media.snapshots[-1]["artwork"] == "of-the-album"


def test_the_cover_of_spotify_comes_from_where_it_says(spotify, media):
    media.send(f"page {ADDRESS} picture")
    media.wait_for(lambda look: look and look["artwork"] == "picture", "the cover shows")
    before = len(media.fetched)
    media.wait_for_looks(2)
    assert set(media.fetched) == {ADDRESS} and len(media.fetched) == before


def test_the_cover_of_spotify_without_an_address_is_searched(start_player, media):
    media.send(f"page {search('Autobahn')} {FOUND}")
    media.send("page https://art.example/300x300bb.jpg found")
    start_player("spotify", "Spotify").play("Autobahn", TRACK)
    media.wait_for(lambda look: look and look["artwork"] == "found", "the cover is found")


def test_a_player_that_hangs_holds_up_nobody_and_is_heard_again_when_it_answers(spotify, media):
    media.wait_for_title("Autobahn")
    spotify.tell(options={"hangs": True})
    media.ask_main_thread()
    media.wait_for_nothing()
    media.ask_main_thread()
    media.send("next")
    spotify.tell(options={"hangs": False})
    media.wait_for_title("Autobahn")


def test_one_that_hangs_leaves_the_other_to_be_seen(spotify, music, media):
    media.wait_for_title("Autobahn")
    spotify.tell(options={"hangs": True})
    music.play("Kometenmelodie", TRACK, "data:,first")
    media.wait_for_title("Kometenmelodie")


def test_a_player_that_quits_is_gone_until_it_comes_back(spotify, start_player, media):
    media.wait_for_title("Autobahn")
    spotify.kill()
    media.wait_for_nothing()
    media.send("playpause")
    media.wait_for_looks(2)
    assert media.snapshots[-1] is None
    start_player("spotify", "Spotify").play("Back", TRACK)
    media.wait_for_title("Back")


def test_the_bus_goes_and_comes_back(desktop, spotify, start_player, media):
    media.wait_for_title("Autobahn")
    desktop.bus.kill()
    media.wait_for_nothing()
    desktop.start_bus()
    start_player("spotify", "Spotify").play("Back", TRACK)
    media.wait_for_title("Back")


@pytest.mark.desktop(bus=False)
def test_without_a_bus_nothing_plays(media):
    media.wait_for_looks(2)
    media.send("next")
    media.wait_for_looks(2)
    assert set(map(str, media.snapshots)) == {"None"}
