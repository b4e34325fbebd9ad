"""The cover of what plays, as players give it and as it is seen."""

import base64
import hashlib
import http.server
import socket
import threading

from harness.players import NEXT, track


def digest(data):
    return hashlib.md5(data).hexdigest()


def test_covers_come_from_files_and_addresses(players, now_playing, desktop):
    cover = desktop.home / "cover file#1"
    cover.write_bytes(b"one")
    player = players(track=track(mpris_artUrl=cover.as_uri()))
    now_playing.wait_for(artworkHash=digest(b"one"))
    player.set(Metadata=track("Bare", mpris_artUrl=str(cover)))
    now_playing.wait_for(Title="Bare", artworkHash=digest(b"one"))
    data = "data:image/png;base64," + base64.b64encode(b"two").decode()
    player.set(Metadata=track("Data", mpris_artUrl=data))
    now_playing.wait_for(Title="Data", artworkHash=digest(b"two"))
    player.set(Metadata=track("None", mpris_artUrl="file:///nowhere"))
    now_playing.wait_for(Title="None", artworkHash=None)


def test_the_same_file_holds_the_next_tracks_cover(players, now_playing, desktop):
    cover = desktop.home / "cover"
    cover.write_bytes(b"one")
    player = players(track=track(mpris_artUrl=cover.as_uri()))
    now_playing.wait_for(artworkHash=digest(b"one"))
    cover.write_bytes(b"two")
    player.set(Metadata=track("Next", mpris_artUrl=cover.as_uri()))
    now_playing.wait_for(Title="Next", artworkHash=digest(b"two"))


def tracks_with_covers(desktop, count):
    """Metadata of tracks whose covers are large files of their own, and the covers."""
    covers = [bytes([number]) * 4_000_000 for number in range(count)]
    tracks = []
    for number, cover in enumerate(covers):
        file = desktop.home / f"cover {number}"
        file.write_bytes(cover)
        tracks.append(track(f"Song {number}", mpris_artUrl=file.as_uri()))
    return tracks, [digest(cover) for cover in covers]


def test_next_is_never_answered_without_the_cover(players, now_playing, desktop):
    tracks, digests = tracks_with_covers(desktop, 6)
    players(track=tracks[0], options={"following": tracks[1:]})
    now_playing.wait_for(Title="Song 0", artworkHash=digests[0])
    for number in range(1, len(tracks)):
        assert now_playing.command(NEXT)
        info = now_playing.info
        assert (info["Title"], info.get("artworkHash")) == (f"Song {number}", digests[number])


def test_a_track_that_changes_by_itself_is_never_seen_without_its_cover(players, now_playing, desktop):
    tracks, digests = tracks_with_covers(desktop, 6)
    player = players(track=tracks[0])
    now_playing.wait_for(Title="Song 0", artworkHash=digests[0])
    for number in range(1, len(tracks)):
        player.set(Metadata=tracks[number])
        info = now_playing.info
        while info["Title"] != f"Song {number}":
            info = now_playing.info
        assert info.get("artworkHash") == digests[number]


def test_a_cover_that_never_comes_holds_up_no_answer(players, now_playing):
    with socket.create_server(("127.0.0.1", 0)) as silent:
        address = f"http://127.0.0.1:{silent.getsockname()[1]}/a"
        player = players(track=track())
        now_playing.wait_for(Title="Song")
        player.set(Metadata=track("Waiting", mpris_artUrl=address))
        now_playing.wait_for(Title="Waiting", artworkHash=None)
        player.set(Metadata=track("Missing", mpris_artUrl="file:///nowhere"))
        now_playing.wait_for(Title="Missing", artworkHash=None)


def test_covers_come_from_the_web(players, now_playing):
    class Page(http.server.BaseHTTPRequestHandler):
        def do_GET(self):
            self.send_response(200)
            self.end_headers()
            self.wfile.write(b"cover of " + self.path.encode())

        def log_message(self, *unused):
            pass

    server = http.server.HTTPServer(("127.0.0.1", 0), Page)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    try:
        address = f"http://127.0.0.1:{server.server_port}/a"
        players(track=track(mpris_artUrl=address))
        now_playing.wait_for(artworkHash=digest(b"cover of /a"))
    finally:
        server.shutdown()
        server.server_close()
