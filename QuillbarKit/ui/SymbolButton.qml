import QtQuick
import Quillbar

// A small button that is a symbol, on a pane that shows under the pointer.
PressableButton {
    id: button

    required property string symbol
    property real pointSize: 11
    property color tint: "white"
    property real restOpacity: 0.65
    property bool semibold: true

    width: 24
    height: 24

    HelpTip {
        target: button
    }

    Rectangle {
        anchors.fill: parent
        radius: 7
        visible: button.hovered && button.enabled
        color: Qt.rgba(1, 1, 1, 0.12)
    }

    Symbol {
        anchors.centerIn: parent
        name: button.symbol
        pointSize: button.pointSize
        semibold: button.semibold
        scale: button.swell
        color: Qt.rgba(button.tint.r, button.tint.g, button.tint.b, !button.enabled ? 0.28 : button.hovered ? 1 : button.restOpacity)
    }
}
