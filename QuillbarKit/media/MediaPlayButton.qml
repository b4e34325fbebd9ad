import QtQuick
import Quillbar

// Plays and pauses.
PressableButton {
    id: button

    required property bool isPlaying
    required property color accent

    readonly property color ink: Contrast.on(accent)

    name: isPlaying ? "Pause" : "Play"
    width: 42
    height: 42

    RoundedGround {
        anchors.fill: parent
        anchors.margins: -margin
        swell: button.swell
        color: button.accent
        borderWidth: 0.5
        borderColor: Qt.rgba(1, 1, 1, 0.22)
    }

    Symbol {
        anchors.centerIn: parent
        // A triangle's weight lies left of its middle.
        anchors.horizontalCenterOffset: button.isPlaying ? 0 : 1
        name: button.isPlaying ? "pause.fill" : "play.fill"
        pointSize: 20
        color: button.ink
        scale: button.swell
    }
}
