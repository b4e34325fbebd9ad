import QtQuick
import Quillbar

// A capsule with a symbol, a title or both, that stands for what the panel can list.
Control {
    id: chip

    property string title: ""
    property string systemImage: ""
    required property bool selected
    required property color accent

    name: title
    checkable: true
    checked: selected
    focusRadius: height / 2
    width: content.implicitWidth + (title ? 20 : 14)
    height: 26

    HelpTip {
        target: chip
    }

    Rectangle {
        anchors.fill: parent
        radius: height / 2
        color: chip.selected ? Qt.rgba(chip.accent.r, chip.accent.g, chip.accent.b, 0.28) : Qt.rgba(1, 1, 1, chip.hovered ? 0.16 : 0.08)
        border.width: 1
        border.color: chip.selected ? Qt.rgba(chip.accent.r, chip.accent.g, chip.accent.b, 0.55) : Qt.rgba(1, 1, 1, 0.07)
    }

    Row {
        id: content

        anchors.centerIn: parent
        spacing: 5

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: chip.systemImage
            name: chip.systemImage
            pointSize: 10
            semibold: true
            color: Qt.rgba(1, 1, 1, chip.selected ? 1 : 0.75)
        }

        Text {
            anchors.verticalCenter: parent.verticalCenter
            visible: chip.title
            // A long name is cut, so that the chips beside it stay in reach.
            width: Math.min(implicitWidth, 140)
            elide: Text.ElideRight
            text: chip.title
            textFormat: Text.PlainText
            font.family: Fonts.text
            font.pixelSize: 11
            font.weight: Font.Medium
            color: Qt.rgba(1, 1, 1, chip.selected ? 1 : 0.8)
            Accessible.ignored: true
        }
    }
}
