pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// The clipboard history in the drawer.
Item {
    id: root

    required property ClipboardList list
    required property QuillbarSettings settings

    readonly property bool isEmpty: list.rows.count === 0
    readonly property color accent: Contrast.legible(settings.accentColor)

    implicitWidth: 600
    implicitHeight: 158

    Column {
        anchors.centerIn: parent
        visible: root.isEmpty
        spacing: 10

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "doc.on.clipboard"
            pointSize: 24
            color: Qt.rgba(1, 1, 1, 0.35)
        }

        Text {
            text: "No clipboard history"
            font.family: Fonts.text
            font.pixelSize: 12
            color: Qt.rgba(1, 1, 1, 0.55)
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    ListView {
        id: view

        x: 18
        y: 4
        width: parent.width - 2 * x
        height: parent.height - y - 40
        visible: !root.isEmpty
        clip: true
        spacing: 4
        boundsBehavior: Flickable.StopAtBounds
        cacheBuffer: 100
        model: root.list.rows
        Accessible.role: Accessible.List
        Accessible.name: "Clips"

        delegate: ClipRowView {
            id: row

            required property int index

            width: view.width
            pictures: root.list.pictures
            isCopied: root.list.copied === uuid
            accent: root.accent
            onCopyRequested: root.list.copy(uuid)
            onActiveFocusChanged: if (activeFocus)
                view.positionViewAtIndex(index, ListView.Contain)
        }
    }

    TextButton {
        anchors.right: view.right
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 10
        visible: !root.isEmpty
        label: "Clear"
        name: "Clear history"
        help: "Clear clipboard history"
        onTapped: root.list.clear()
    }
}
