import QtQuick
import Quillbar

// One stored length of the countdown.
PressableButton {
    id: chip

    required property string label

    width: Math.max(38, text.width + 20)
    height: 26

    GlassChipBackground {
        anchors.fill: parent
        cornerRadius: 13
        hovering: chip.hovered
    }

    Text {
        id: text

        anchors.centerIn: parent
        width: Math.min(implicitWidth, 90)
        elide: Text.ElideRight
        text: chip.label
        font.family: Fonts.text
        font.pixelSize: 11
        font.weight: Font.Medium
        color: Qt.rgba(1, 1, 1, 0.85)
        Accessible.ignored: true
    }
}
