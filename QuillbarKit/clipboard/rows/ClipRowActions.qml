import QtQuick
import Quillbar

// What can be done with a clip, at the end of its row: there under the pointer, or when Tab comes to it.
Item {
    id: root

    required property bool rowHovered
    required property bool isText
    required property bool pinned
    required property bool copied
    required property bool stacking
    required property color accent
    readonly property bool shown: rowHovered || hovered || hasFocus
    readonly property bool hovered: copy.hovered || edit.hovered || pin.hovered || remove.hovered
    readonly property bool hasFocus: copy.activeFocus || edit.activeFocus || pin.activeFocus || remove.activeFocus

    signal copyTapped
    signal editTapped
    signal pinTapped
    signal deleteTapped

    implicitWidth: buttons.width + 8
    implicitHeight: 30
    opacity: shown ? 1 : 0

    // Over the text that it covers.
    Rectangle {
        anchors.fill: parent
        radius: 9
        color: "#2e3034"
        border.width: 1
        border.color: Qt.rgba(1, 1, 1, 0.1)
    }

    Row {
        id: buttons

        anchors.centerIn: parent
        spacing: 2

        SymbolButton {
            id: copy

            tappable: root.shown
            symbol: root.copied ? "checkmark" : "doc.on.doc"
            tint: root.copied ? root.accent : "white"
            name: help
            help: root.stacking ? "Add to stack" : "Copy"
            onTapped: root.copyTapped()
        }

        SymbolButton {
            id: edit

            tappable: root.shown
            visible: root.isText
            symbol: "pencil"
            name: help
            help: "Edit"
            onTapped: root.editTapped()
        }

        SymbolButton {
            id: pin

            tappable: root.shown
            symbol: root.pinned ? "pin.fill" : "pin"
            name: help
            help: root.pinned ? "Unpin" : "Pin"
            onTapped: root.pinTapped()
        }

        SymbolButton {
            id: remove

            tappable: root.shown
            symbol: "trash"
            name: help
            help: "Delete"
            onTapped: root.deleteTapped()
        }
    }
}
