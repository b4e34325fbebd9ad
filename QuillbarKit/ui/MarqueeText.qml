import QtQuick
import Quillbar

// A line of text that runs through when it is too long for its place.
Item {
    id: root

    property string text
    property alias font: first.font
    property alias color: first.color
    property real gap: 44
    // Points a second.
    property real speed: 30

    readonly property real textWidth: first.implicitWidth
    readonly property bool overflows: Marquee.shouldScroll(textWidth, width)
    property bool animate: false
    readonly property alias offset: run.offset

    // From the start again; on the next turn, when everything has its new size.
    function restart() {
        animate = false;
        Qt.callLater(begin); // qmllint disable
    }

    function begin() {
        animate = visible && overflows;
    }

    implicitWidth: first.implicitWidth
    implicitHeight: first.implicitHeight
    clip: overflows
    onTextChanged: restart()
    onTextWidthChanged: restart()
    onWidthChanged: restart()
    onVisibleChanged: restart()
    Component.onCompleted: restart()

    Accessible.role: Accessible.StaticText
    Accessible.name: root.text

    NumberAnimation {
        id: run

        property real offset: 0

        target: run
        property: "offset"
        running: root.animate
        from: 0
        to: -(root.textWidth + root.gap)
        duration: 1000 * Marquee.duration(root.textWidth, root.gap, root.speed)
        loops: Animation.Infinite
        onStopped: offset = 0
    }

    // Whole pixels: letters stay sharp, and a step that would not be seen draws nothing.
    Item {
        x: Math.round(root.offset * Screen.devicePixelRatio) / Screen.devicePixelRatio
        height: root.height

        Text {
            id: first

            height: root.height
            verticalAlignment: Text.AlignVCenter
            text: root.text
            textFormat: Text.PlainText
            maximumLineCount: 1
            Accessible.ignored: true
        }

        Text {
            x: root.textWidth + root.gap
            height: root.height
            verticalAlignment: Text.AlignVCenter
            visible: root.overflows
            text: visible ? root.text : ""
            textFormat: Text.PlainText
            maximumLineCount: 1
            font: first.font
            color: first.color
            Accessible.ignored: true
        }
    }
}
