"""A window with one text field of another toolkit; writes the field's text, a line each time it changes."""

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gtk  # noqa: E402

window = Gtk.Window(title="entry")
window.set_default_size(400, 80)
window.connect("destroy", Gtk.main_quit)
entry = Gtk.Entry()
entry.connect("changed", lambda each: print(f"text {each.get_text()}", flush=True))
window.add(entry)
window.show_all()
entry.grab_focus()
print("shown", flush=True)
Gtk.main()
