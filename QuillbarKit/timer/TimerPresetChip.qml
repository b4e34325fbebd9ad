import QtQuick
import Quillbar

// One stored length of the countdown.
PressableButton {
    id: chip

    required property string label

    width: text.implicitWidth + 20
    height: 24

    GlassChipBackground {
        anchors.fill: parent
        cornerRadius: 12
        hovering: chip.hovered
    }

    Text {
        id: text

        anchors.centerIn: parent
        text: chip.label
        font.family: Fonts.text
        font.pixelSize: 11
        font.weight: Font.Medium
        color: Qt.rgba(1, 1, 1, 0.85)
        Accessible.ignored: true
    }
}
