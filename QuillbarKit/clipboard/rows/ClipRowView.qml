import QtQuick
import Quillbar

// One clip in the drawer's list. A tap copies it.
Control {
    id: row

    required property string uuid
    required property int kind
    required property string text
    required property string displayText
    required property bool pinned
    required property int fileCount
    required property ClipPictures pictures
    required property bool isCopied
    required property color accent

    signal copyRequested

    name: ClipViewTexts.plainTextPreview(displayText)
    focusRadius: 6
    height: 32
    Accessible.role: Accessible.ListItem
    onTapped: row.copyRequested()

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: Qt.rgba(1, 1, 1, row.hovered ? 0.12 : 0.05)
    }

    Row {
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            visible: row.pinned
            name: "pin.fill"
            pointSize: 10
            color: row.accent
        }

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: ClipViewTexts.glyph(row.kind, row.text, row.fileCount, false)
            pointSize: 11
            color: Qt.rgba(1, 1, 1, 0.55)
        }

        ClipThumbnail {
            id: thumbnail

            anchors.verticalCenter: parent.verticalCenter
            visible: exists
            width: 34
            height: 24
            cornerRadius: 4
            pictures: row.pictures
            clip: row.kind === ClipRowsModel.Image ? row.uuid : ""
        }

        Text {
            anchors.verticalCenter: parent.verticalCenter
            visible: !thumbnail.exists
            width: Math.min(implicitWidth, row.width - 100)
            elide: Text.ElideRight
            maximumLineCount: 1
            text: ClipViewTexts.plainTextPreview(row.displayText).replace(/\s+/g, " ")
            textFormat: Text.PlainText
            font.family: Fonts.text
            font.pixelSize: 12
            color: Qt.rgba(1, 1, 1, 0.9)
            Accessible.ignored: true
        }
    }

    SymbolButton {
        anchors.right: parent.right
        anchors.rightMargin: 5
        anchors.verticalCenter: parent.verticalCenter
        symbol: row.isCopied ? "checkmark" : "doc.on.doc"
        tint: row.isCopied ? row.accent : "white"
        restOpacity: row.isCopied ? 1 : 0.55
        name: "Copy"
        onTapped: row.copyRequested()
    }
}
