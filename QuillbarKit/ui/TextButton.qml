import QtQuick
import Quillbar

// A small button with a word or a few on a faint pane, or on the accent where it is the one to press.
PressableButton {
    id: button

    required property string label
    property bool prominent: false
    property bool destructive: false
    property color accent: "white"

    name: label
    focusRadius: 7
    // Whole points keep the edges sharp.
    width: Math.ceil(text.implicitWidth) + 20
    height: 24

    HelpTip {
        target: button
    }

    GlassChipBackground {
        anchors.fill: parent
        anchors.margins: -margin
        swell: button.swell
        cornerRadius: 7
        hovering: button.hovered
        visible: !button.prominent
    }

    GlassAccentBackground {
        anchors.fill: parent
        anchors.margins: -margin
        swell: button.swell
        radius: 7
        accent: button.accent
        visible: button.prominent
    }

    Text {
        id: text

        anchors.centerIn: parent
        text: button.label
        font.family: Fonts.text
        font.pixelSize: 11
        font.weight: Font.Medium
        color: button.destructive ? "#ff7a70" : button.prominent ? Contrast.on(button.accent) : Qt.rgba(1, 1, 1, 0.9)
        scale: button.swell
        Accessible.ignored: true
    }
}
