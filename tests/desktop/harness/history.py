"""The clipboard history as it lies on the disk."""

import base64
import io
import json

from PIL import Image

from .waiting import wait_until

# Seconds: the clipboard is looked at on a beat of 0.7.
PAST_A_BEAT = 1.0


class History:
    def __init__(self, desktop):
        self.path = desktop.data_home / "Quillbar" / "clipboard.json"

    def clips(self):
        """The saved clips, the latest first; none while there is no file. A file that is there always loads."""
        try:
            text = self.path.read_text(encoding="utf-8")
        except FileNotFoundError:
            return []
        return json.loads(text)["clips"]

    def texts(self):
        return [clip["text"] for clip in self.clips()]

    def latest(self, **fields):
        """The latest clip once its fields have these values."""

        def found():
            clips = self.clips()
            return clips and all(clips[0].get(key) == value for key, value in fields.items()) and clips[0]

        return wait_until(found, what=f"the latest clip has {fields}")


def rich(clip, kind):
    """Of a clip's rich forms the one of that type, as text."""
    return base64.b64decode(clip["richData"][kind]).decode()


def picture(clip):
    return Image.open(io.BytesIO(base64.b64decode(clip["imageData"])))
