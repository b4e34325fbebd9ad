pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// The stored lengths in one line; those that don't fit are scrolled to. Only chips near the line are made, since
// the list is the user's and may be of any length.
Item {
    id: row

    required property TimerService service
    // The lengths to offer.
    required property list<int> minutes

    // The part of the width that the chips stand in the middle of while they fit in it.
    required property real middleWidth

    // Room for the ring that shows the focus, and for a chip that swells.
    readonly property real slack: 4

    implicitHeight: 26 + 2 * slack
    clip: true

    ListView {
        id: list

        readonly property real before: contentX - originX
        readonly property real after: contentWidth - before - width

        // How much is seen of a chip that reaches `over` points past an end of the line, while `beyond` points lie
        // past it. By chip, since a shade over the end would show on glass.
        function strength(over, beyond) {
            return Math.max(0.12, Math.min(1, 1 - (over + Math.max(0, Math.min(20, beyond))) / 40));
        }

        x: row.slack + Math.max(0, Math.round((row.middleWidth - 2 * row.slack - contentWidth) / 2))
        y: row.slack
        width: row.width - 2 * row.slack
        height: 26
        orientation: ListView.Horizontal
        spacing: 6
        interactive: contentWidth > width
        boundsBehavior: Flickable.StopAtBounds
        // As far as Tab may go at once.
        cacheBuffer: 400
        model: row.minutes

        delegate: TimerPresetChip {
            required property int index
            required property int modelData
            readonly property real fromStart: x - list.contentX

            strength: activeFocus ? 1 : Math.min(list.strength(-fromStart, list.before), list.strength(fromStart + width - list.width, list.after))
            label: TimerTexts.preset(modelData)
            name: label
            onTapped: row.service.setPreset(modelData * 60)
            onActiveFocusChanged: if (activeFocus)
                list.positionViewAtIndex(index, ListView.Contain)
        }

        WheelHandler {
            enabled: list.interactive
            orientation: Qt.Vertical
            // A wheel that turns only down and up scrolls as well.
            onWheel: event => {
                const last = list.originX + list.contentWidth - list.width;
                list.contentX = Math.max(list.originX, Math.min(last, list.contentX - event.angleDelta.y / 2));
            }
        }
    }
}
