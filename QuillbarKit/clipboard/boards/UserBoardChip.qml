import QtQuick
import Quillbar

// One board of the user's: a chip, or a field while it is renamed.
Item {
    id: root

    required property string uuid
    required property string title
    required property ClipboardPanelModel panel
    required property ClipboardPanelContent content
    required property PopupMenu menu
    required property AlertBox alert
    required property color accent
    property bool renaming: false

    signal ended

    function beginRename() {
        field.text = root.title;
        root.renaming = true;
        focusLater.start();
    }

    function endRename() {
        root.renaming = false;
        root.ended();
    }

    function confirmDelete() {
        const content = root.content;
        const uuid = root.uuid;
        root.alert.ask({
            "title": "Delete “" + root.title + "”?",
            "message": "The board is removed. Your clips stay in the history.",
            "answer": "Delete",
            "destructive": true,
            "action": () => content.deleteBoard(uuid)
        });
    }

    function openMenu(x: real, y: real) {
        root.menu.open([
            {
                "text": "Rename",
                "action": () => root.beginRename()
            },
            {
                "text": "Delete",
                "destructive": true,
                "action": () => root.confirmDelete()
            }
        ], root, x, y);
    }

    implicitWidth: renaming ? field.width : chip.width
    implicitHeight: 26

    Timer {
        id: focusLater

        interval: 0
        onTriggered: {
            field.field.forceActiveFocus();
            field.field.selectAll();
        }
    }

    BoardChip {
        id: chip

        visible: !root.renaming
        title: root.title
        selected: root.panel.boardFilter.boardID === root.uuid
        accent: root.accent
        onTapped: root.panel.showBoard(root.uuid)
        Keys.onMenuPressed: root.openMenu(0, height + 4)

        TapHandler {
            // A finger has no right button, but would be taken for one.
            acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
            acceptedButtons: Qt.RightButton
            gesturePolicy: TapHandler.ReleaseWithinBounds
            onTapped: eventPoint => root.openMenu(eventPoint.position.x, eventPoint.position.y)
        }
    }

    BoardNameField {
        id: field

        visible: root.renaming
        accent: root.accent
        onAccepted: {
            root.content.renameBoard(root.uuid, text);
            root.endRename();
        }
        onCancelled: root.endRename()

        Connections {
            target: field.field
            function onEditingChanged() {
                // Who turns to something else has not meant it.
                if (!field.field.editing)
                    root.renaming = false;
            }
        }
    }
}
