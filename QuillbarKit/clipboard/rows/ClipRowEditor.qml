import QtQuick
import Quillbar

// The text of a clip, open for change.
FocusScope {
    id: root

    required property string draft
    required property color accent

    signal drafted(text: string)
    signal saved
    signal cancelled

    function begin() {
        box.put(root.draft);
        focusLater.start();
    }

    implicitHeight: box.height + 32
    Component.onCompleted: root.begin()

    Timer {
        id: focusLater

        interval: 0
        onTriggered: {
            box.forceActiveFocus();
            box.toEnd();
        }
    }

    TextBox {
        id: box

        width: parent.width
        height: Math.max(56, Math.min(140, contentHeight))
        focus: true
        name: "Edit clip"
        accent: root.accent
        onEdited: root.drafted(box.text())
        onAccepted: root.saved()
        onCancelled: root.cancelled()
    }

    Row {
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        spacing: 4

        SymbolButton {
            symbol: "checkmark"
            tint: root.accent
            restOpacity: 1
            name: help
            help: "Save (⌘↩)"
            onTapped: root.saved()
            Keys.onEscapePressed: root.cancelled()
        }

        SymbolButton {
            symbol: "xmark"
            name: help
            help: "Cancel (esc)"
            onTapped: root.cancelled()
            Keys.onEscapePressed: root.cancelled()
        }
    }
}
