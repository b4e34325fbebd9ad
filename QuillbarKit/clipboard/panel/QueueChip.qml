import QtQuick
import Quillbar

// One clip of the queue with its place in it.
Item {
    id: chip

    required property int index
    required property string displayText
    required property color accent
    readonly property bool hovered: hover.hovered || remove.activeFocus

    signal removed

    implicitWidth: Math.min(label.implicitWidth, 90) + number.width + 30
    implicitHeight: 24
    Accessible.role: Accessible.ListItem
    Accessible.name: (chip.index + 1) + " " + ClipViewTexts.plainTextPreview(chip.displayText)

    HoverHandler {
        id: hover
    }

    Rectangle {
        anchors.fill: parent
        radius: 7
        color: Qt.rgba(chip.accent.r, chip.accent.g, chip.accent.b, chip.hovered ? 0.3 : 0.2)
    }

    Rectangle {
        id: number

        x: 4
        anchors.verticalCenter: parent.verticalCenter
        width: Math.max(16, digits.implicitWidth + 8)
        height: 16
        radius: 8
        color: chip.accent

        Text {
            id: digits

            anchors.centerIn: parent
            text: chip.index + 1
            font.family: Fonts.text
            font.pixelSize: 10
            font.weight: Font.DemiBold
            color: Contrast.on(chip.accent)
            Accessible.ignored: true
        }
    }

    Text {
        id: label

        x: number.x + number.width + 5
        width: Math.min(implicitWidth, 90)
        anchors.verticalCenter: parent.verticalCenter
        elide: Text.ElideRight
        maximumLineCount: 1
        text: ClipViewTexts.plainTextPreview(chip.displayText).replace(/\s+/g, " ")
        textFormat: Text.PlainText
        font.family: Fonts.text
        font.pixelSize: 11
        color: Qt.rgba(1, 1, 1, 0.92)
        Accessible.ignored: true
    }

    SymbolButton {
        id: remove

        anchors.right: parent.right
        anchors.rightMargin: 2
        anchors.verticalCenter: parent.verticalCenter
        width: 18
        height: 18
        opacity: chip.hovered ? 1 : 0
        tappable: chip.hovered
        symbol: "xmark"
        pointSize: 7
        name: help
        help: "Remove from queue"
        onTapped: chip.removed()
    }
}
