import QtQuick
import Quillbar

// One snippet: its title and how it begins.
Control {
    id: row

    required property string uuid
    required property string title
    required property string text
    required property ClipboardPanelModel panel
    required property ClipboardPanelContent content
    required property PopupMenu menu
    required property color accent
    // A button hides the pointer from the row beneath it.
    readonly property bool pointedAt: hovered || edit.hovered || remove.hovered
    readonly property bool shown: pointedAt || edit.activeFocus || remove.activeFocus

    function openMenu(x: real, y: real) {
        const content = row.content;
        const panel = row.panel;
        const uuid = row.uuid;
        row.menu.open([
            {
                "text": "Paste",
                "action": () => content.activateSnippet(uuid)
            },
            {
                "text": "Edit",
                "action": () => panel.editSnippet(uuid)
            },
            {
                "text": "Delete",
                "destructive": true,
                "action": () => content.deleteSnippet(uuid)
            }
        ], row, x, y);
    }

    name: title
    focusRadius: 8
    implicitHeight: Math.max(44, words.implicitHeight + 16)
    Accessible.role: Accessible.ListItem
    Accessible.description: ClipViewTexts.plainTextPreview(text)
    onTapped: row.content.activateSnippet(row.uuid)
    Keys.onMenuPressed: row.openMenu(40, 30)

    TapHandler {
        // A finger has no right button, but would be taken for one.
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        acceptedButtons: Qt.RightButton
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: eventPoint => row.openMenu(eventPoint.position.x, eventPoint.position.y)
    }

    Rectangle {
        anchors.fill: parent
        radius: 10
        color: Qt.rgba(1, 1, 1, row.pointedAt ? 0.1 : 0)
    }

    Symbol {
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        name: "text.badge.star"
        pointSize: 13
        color: row.accent
    }

    Column {
        id: words

        x: 40
        width: parent.width - x - 10
        anchors.verticalCenter: parent.verticalCenter
        spacing: 3

        Text {
            width: parent.width
            elide: Text.ElideRight
            maximumLineCount: 1
            text: row.title
            textFormat: Text.PlainText
            font.family: Fonts.text
            font.pixelSize: 13
            font.weight: Font.Medium
            color: Qt.rgba(1, 1, 1, 0.92)
            Accessible.ignored: true
        }

        Text {
            width: parent.width
            visible: text
            wrapMode: Text.Wrap
            elide: Text.ElideRight
            maximumLineCount: 2
            text: ClipViewTexts.plainTextPreview(row.text)
            textFormat: Text.PlainText
            font.family: Fonts.text
            font.pixelSize: 11
            color: Qt.rgba(1, 1, 1, 0.55)
            Accessible.ignored: true
        }
    }

    Rectangle {
        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        width: buttons.width + 8
        height: 30
        radius: 9
        opacity: row.shown ? 1 : 0
        color: "#f02e3034"
        border.width: 1
        border.color: Qt.rgba(1, 1, 1, 0.1)

        Row {
            id: buttons

            anchors.centerIn: parent
            spacing: 2

            SymbolButton {
                id: edit

                tappable: row.shown
                symbol: "pencil"
                name: help
                help: "Edit"
                onTapped: row.panel.editSnippet(row.uuid)
            }

            SymbolButton {
                id: remove

                tappable: row.shown
                symbol: "trash"
                name: help
                help: "Delete"
                onTapped: row.content.deleteSnippet(row.uuid)
            }
        }
    }
}
