import QtQuick
import Quillbar

// One stored length of the countdown.
PressableButton {
    id: chip

    required property string label
    // 0 not seen at all, 1 in full.
    property real strength: 1

    // Whole points keep the edges of a line of chips sharp.
    width: Math.max(38, Math.ceil(text.width) + 20)
    height: 26

    GlassChipBackground {
        anchors.fill: parent
        anchors.margins: -margin
        swell: chip.swell
        cornerRadius: 13
        tint: Qt.rgba(1, 1, 1, chip.strength)
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
        color: Qt.rgba(1, 1, 1, 0.85 * chip.strength)
        scale: chip.swell
        Accessible.ignored: true
    }
}
