import QtQuick
import Quillbar

// A small round button with a symbol.
PressableButton {
    id: button

    required property string symbol

    width: 32
    height: 32

    RoundedGround {
        anchors.fill: parent
        anchors.margins: -margin
        swell: button.swell
        color: Qt.rgba(1, 1, 1, button.hovered ? 0.2 : 0.13)
    }

    Symbol {
        anchors.centerIn: parent
        name: button.symbol
        pointSize: 13
        semibold: true
        color: "white"
        scale: button.swell
    }
}
