import QtQuick
import Quillbar

// Marks the track as a favourite.
PressableButton {
    id: button

    required property bool loved

    readonly property color red: Qt.rgba(1, 0.27, 0.34, 1)
    // 0 not loved, 1 loved; the filled heart swings past it.
    readonly property alias fullness: spring.value
    readonly property real mix: Math.max(0, Math.min(1, fullness))

    name: loved ? "Remove from favorites" : "Add to favorites"
    help: name
    width: 28
    height: 28
    Accessible.role: Accessible.Button
    Accessible.checkable: true
    Accessible.checked: button.loved

    HelpTip {
        target: button
    }

    Spring {
        id: spring

        to: button.loved ? 1 : 0
        response: 0.3
        damping: 0.55
        epsilon: 0.002
    }

    RoundedGround {
        anchors.fill: parent
        anchors.margins: -margin
        swell: button.swell
        color: Qt.rgba(1, 1 + (button.red.g - 1) * button.mix, 1 + (button.red.b - 1) * button.mix, 0.06 + 0.12 * button.mix)
    }

    Symbol {
        anchors.centerIn: parent
        visible: button.mix < 1
        name: "heart"
        pointSize: 12
        semibold: true
        scale: button.swell
        color: Qt.rgba(1, 1, 1, 0.45 * (1 - button.mix))
    }

    Symbol {
        anchors.centerIn: parent
        visible: button.mix > 0
        name: "heart.fill"
        pointSize: 12
        semibold: true
        scale: button.swell * (0.5 + 0.5 * Math.max(0, button.fullness))
        color: Qt.rgba(button.red.r, button.red.g, button.red.b, button.mix)
    }
}
