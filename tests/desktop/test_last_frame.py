"""The last frame of a movement reaches the display, beside a compositing manager that looks away too."""

import pytest
from Xlib.ext import damage

from harness.waiting import wait_until
from harness.x11 import Rect, connect


class Reports:
    """What a compositing manager is told of a window's drawing."""

    def __init__(self, x, window):
        self.connection = connect(x.name, x.user)
        self.connection.damage_query_version()
        watched = self.connection.create_resource_object("window", window.id)
        watched.damage_create(damage.DamageReportRawRectangles)
        self.connection.sync()
        self.areas = []

    def told(self):
        """The areas since the last `forget`, in their order."""
        while self.connection.pending_events():
            area = self.connection.next_event().area
            self.areas.append(Rect(area.x, area.y, area.width, area.height))
        return self.areas

    def forget(self):
        self.told().clear()


@pytest.mark.desktop(wm="openbox+picom")
def test_a_window_that_has_come_to_rest_is_reported_once_more(desktop):
    desktop.launch()
    place = desktop.panel.geometry
    whole = Rect(0, 0, place.width, place.height)
    reports = Reports(desktop.x, desktop.panel.window)
    for move in (desktop.point_at_notch, desktop.point_away):
        reports.forget()
        move()
        # A busy machine may show us all of the movement at one look.
        wait_until(lambda: any(area != whole for area in reports.told()), what="a frame draws a part of it")
        wait_until(lambda: reports.told()[-1] == whole, what="all of it is reported at the end")
    reports.connection.close()
