import QtQuick
import Quillbar

// What is playing beside the closed notch: the cover on the leading side, the bars on the trailing one.
Item {
    id: root

    required property MediaContent content
    required property int side

    readonly property bool isLeading: side === MediaPeekSide.Leading

    implicitWidth: isLeading ? 18 : bars.implicitWidth
    implicitHeight: 18

    Binding {
        target: root.content
        property: "scale"
        value: Screen.devicePixelRatio
        restoreMode: Binding.RestoreNone
    }

    CoverImage {
        id: cover

        anchors.fill: parent
        visible: root.isLeading
        image: root.content.smallCover
        topLeftRadius: 4
        topRightRadius: 4
        bottomRightRadius: 4
        bottomLeftRadius: 4
        groundTop: Qt.rgba(1, 1, 1, 0.12)
        groundBottom: Qt.rgba(1, 1, 1, 0.04)

        Symbol {
            anchors.centerIn: parent
            visible: !cover.exists
            name: "music.note"
            pointSize: 9
            color: Qt.rgba(1, 1, 1, 0.6)
        }
    }

    Waveform {
        id: bars

        anchors.centerIn: parent
        visible: !root.isLeading
        isPlaying: root.content.isPlaying
        steps: 6
    }
}
