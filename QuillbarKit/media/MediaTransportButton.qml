import QtQuick
import Quillbar

// To the track before or after.
PressableButton {
    id: button

    required property string symbol

    width: 32
    height: 32

    RoundedGround {
        anchors.fill: parent
        anchors.margins: -margin
        swell: button.swell
        color: Qt.rgba(1, 1, 1, button.hovered ? 0.1 : 0)

        Behavior on color {
            ColorAnimation {
                duration: 120
            }
        }
    }

    Symbol {
        anchors.centerIn: parent
        name: button.symbol
        pointSize: 14
        scale: button.swell
        color: Qt.rgba(1, 1, 1, 0.9)
    }
}
