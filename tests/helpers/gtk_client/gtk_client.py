"""A GTK program at the clipboard. "copy text|rich|image|files" copies, says so and stays; "paste" writes what
it can paste as a line of JSON and ends."""

import json
import sys

import gi

gi.require_version("Gdk", "4.0")
gi.require_version("Gtk", "4.0")
from gi.repository import Gdk, GLib, GObject, Gio, Gtk  # noqa: E402

HTML = "<b>rich</b> text"


def provider(kind):
    if kind == "text":
        return Gdk.ContentProvider.new_for_value("plain täxt")
    if kind == "rich":
        return Gdk.ContentProvider.new_union(
            [
                Gdk.ContentProvider.new_for_bytes("text/html", GLib.Bytes.new(HTML.encode())),
                Gdk.ContentProvider.new_for_value("rich text"),
            ]
        )
    if kind == "image":
        pixels = GLib.Bytes.new(bytes(range(256)) * 120)
        texture = Gdk.MemoryTexture.new(128, 60, Gdk.MemoryFormat.R8G8B8A8, pixels, 512)
        # Formats are known for textures at large, not for one that lies in memory.
        return Gdk.ContentProvider.new_for_value(GObject.Value(Gdk.Texture, texture))
    files = [Gio.File.new_for_path(path) for path in ("/tmp/a b", "/tmp/ä")]
    return Gdk.ContentProvider.new_for_value(Gdk.FileList.new_from_array(files))


def paste(clipboard):
    found = {}
    loop = GLib.MainLoop()
    waiting = []
    streams = []

    def read(name, start, finish):
        waiting.append(name)

        def done(_, result):
            try:
                found[name] = finish(result)
            except GLib.Error:
                pass
            waiting.remove(name)
            if not waiting:
                loop.quit()

        start(done)

    # It learns of another program's copy a turn or two after its start.
    while not clipboard.get_formats().get_mime_types():
        GLib.MainContext.default().iteration(True)
    formats = clipboard.get_formats()
    if formats.contain_mime_type("text/plain;charset=utf-8"):
        read("text", lambda done: clipboard.read_text_async(None, done), clipboard.read_text_finish)
    if formats.contain_mime_type("text/html"):

        def start(done):
            def opened(_, result):
                streams.append(clipboard.read_finish(result)[0])
                streams[0].read_bytes_async(1 << 20, 0, None, done)

            clipboard.read_async(["text/html"], 0, None, opened)

        read("html", start, lambda result: streams[0].read_bytes_finish(result).get_data().decode())
    if formats.contain_mime_type("image/png"):
        read(
            "image",
            lambda done: clipboard.read_texture_async(None, done),
            lambda result: (lambda texture: [texture.get_width(), texture.get_height()])(
                clipboard.read_texture_finish(result)
            ),
        )
    if formats.contain_mime_type("text/uri-list"):
        read(
            "files",
            lambda done: clipboard.read_value_async(Gdk.FileList, 0, None, done),
            lambda result: [each.get_path() for each in clipboard.read_value_finish(result).get_files()],
        )
    if waiting:
        loop.run()
    print(json.dumps(found), flush=True)


def main():
    Gtk.init()
    clipboard = Gdk.Display.get_default().get_clipboard()
    if sys.argv[1] == "paste":
        paste(clipboard)
        return
    clipboard.set_content(provider(sys.argv[2]))
    print("owning", flush=True)
    GLib.MainLoop().run()


main()
