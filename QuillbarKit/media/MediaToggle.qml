import QtQuick
import Quillbar

// A small round button that is on or off.
PressableButton {
    id: button

    required property string symbol
    required property bool active
    required property color accent
    property real pointSize: 12
    property real activeGround: 0.18
    property real inactiveInk: 0.45

    width: 28
    height: 28
    // A button that stays down, not one of several.
    Accessible.role: Accessible.Button
    Accessible.checkable: true
    Accessible.checked: button.active

    HelpTip {
        target: button
    }

    RoundedGround {
        anchors.fill: parent
        anchors.margins: -margin
        swell: button.swell
        color: button.active ? Qt.rgba(button.accent.r, button.accent.g, button.accent.b, button.activeGround) : Qt.rgba(1, 1, 1, 0.06)

        Behavior on color {
            ColorChange {}
        }
    }

    Symbol {
        anchors.centerIn: parent
        name: button.symbol
        pointSize: button.pointSize
        semibold: true
        scale: button.swell
        color: button.active ? button.accent : Qt.rgba(1, 1, 1, button.inactiveInk)

        Behavior on color {
            ColorChange {}
        }
    }

    component ColorChange: ColorAnimation {
        duration: 200
        easing.type: Easing.BezierSpline
        easing.bezierCurve: [0, 0, 0.58, 1, 1, 1]
    }
}
