pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// The clips that wait to be pasted in order, and what can be done with them.
Item {
    id: strip

    required property ClipboardPanelModel panel
    required property color accent
    readonly property bool isEmpty: panel.stackCount === 0

    implicitHeight: isEmpty ? 34 : 64

    Text {
        anchors.verticalCenter: parent.verticalCenter
        x: 16
        width: parent.width - 32
        visible: strip.isEmpty
        elide: Text.ElideRight
        text: "Tap clips to queue them, then paste in order."
        font.family: Fonts.text
        font.pixelSize: 11
        color: Qt.rgba(1, 1, 1, 0.6)
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    ListView {
        id: list

        x: 12
        width: parent.width - 24
        height: 30
        visible: !strip.isEmpty
        orientation: ListView.Horizontal
        spacing: 6
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentWidth > width
        model: strip.panel.stackRows
        // What was queued last is in sight.
        onCountChanged: positionViewAtEnd()
        Accessible.role: Accessible.List
        Accessible.name: "Queue"

        delegate: QueueChip {
            y: 3
            accent: strip.accent
            onRemoved: strip.panel.removeStackRow(index)
        }
    }

    Row {
        x: 12
        y: 34
        visible: !strip.isEmpty
        spacing: 6

        TextButton {
            label: "Paste all in order"
            help: "Paste every queued clip in order"
            prominent: true
            accent: strip.accent
            onTapped: strip.panel.pasteAll()
        }

        TextButton {
            label: "Paste next"
            help: "Paste the front item and close"
            onTapped: strip.panel.pasteNext()
        }

        TextButton {
            label: "Clear"
            name: "Clear queue"
            help: "Empty the queue"
            onTapped: strip.panel.clearStack()
        }
    }
}
