import QtQuick
import Quillbar

// A Loader of this toolkit can't make bound components, so what they use of their file is not known here.
// qmllint disable unqualified

// One clip: its number, what it is and what is in it, where it came from, and what can be done with it.
Control {
    id: row

    required property int index
    required property string uuid
    required property int kind
    required property string text
    required property string displayText
    required property int detected
    required property string detectedValue
    required property bool pinned
    required property string sourceBundleID
    required property int fileCount
    required property ClipboardPanelModel panel
    required property ClipboardPanelContent content
    required property PopupMenu menu
    required property AlertBox alert
    required property color accent
    required property bool selected
    // What is typed into the open editor; kept by the list, since a row out of sight may go.
    required property string editDraft

    readonly property bool isEditing: panel.editingClip === uuid
    readonly property bool isText: kind === ClipRowsModel.Text
    readonly property string sourceName: content.sourceName(sourceBundleID)
    // A button hides the pointer from the row beneath it.
    readonly property bool pointedAt: hovered || buttonHovered
    property bool buttonHovered: false
    // The keyboard is with the row or one of its buttons.
    readonly property bool holdsFocus: activeFocus || actions.activeFocus
    property bool copied: false

    signal drafted(text: string)
    // The keyboard is free again.
    signal ended

    function copy() {
        row.copied = true;
        uncopy.restart();
        row.content.activate(row.uuid);
    }

    function beginEdit() {
        row.drafted(row.text);
        row.content.beginEditing(row.uuid);
    }

    function commitEdit() {
        row.content.commitEdit(row.uuid, row.editDraft);
        row.ended();
    }

    function cancelEdit() {
        row.panel.endEditing();
        row.ended();
    }

    function addToNewBoard() {
        const content = row.content;
        const uuid = row.uuid;
        row.alert.ask({
            "title": "New board",
            "message": "Name the board to add this clip to.",
            "prompt": "Board name",
            "answer": "Add",
            "action": name => content.addToNewBoard(uuid, name)
        });
    }

    function boardEntries(): var {
        const content = row.content;
        const uuid = row.uuid;
        let entries = [];
        for (const board of content.boardList())
            entries.push({
                "text": board.title,
                "action": () => content.addToBoard(uuid, board.uuid)
            });
        if (entries.length === 0)
            entries.push({
                "text": "No boards yet",
                "enabled": false
            });
        entries.push({
            "text": "New board…",
            "action": () => row.addToNewBoard()
        });
        return entries;
    }

    function openMenu(x: real, y: real) {
        const content = row.content;
        const uuid = row.uuid;
        const board = row.panel.boardFilter.boardID;
        let entries = [
            {
                "text": "Copy",
                "action": () => row.copy()
            }
        ];
        if (row.isText) {
            entries.push({
                "text": "Edit",
                "action": () => row.beginEdit()
            });
            entries.push({
                "text": "Paste as plain text",
                "action": () => content.activatePlain(uuid)
            });
        }
        entries.push({
            "text": row.pinned ? "Unpin" : "Pin",
            "action": () => content.togglePin(uuid)
        });
        entries.push({
            "text": "Add to board",
            "entries": row.boardEntries()
        });
        if (board)
            entries.push({
                "text": "Remove from this board",
                "action": () => content.removeFromBoard(uuid, board)
            });
        entries.push({
            "text": "Delete",
            "destructive": true,
            "action": () => content.deleteClip(uuid)
        });
        row.menu.open(entries, row, x, y);
    }

    name: (index < 9 ? (index + 1) + " " : "") + ClipViewTexts.plainTextPreview(displayText) + (sourceName ? ", " + sourceName : "")
    // The arrows move through the rows; Tab goes into the selected one.
    activeFocusOnTab: selected || activeFocus
    // Space looks into it.
    pressedBySpace: false
    focusRadius: 8
    height: Math.max(44, middle.implicitHeight + 16)
    Accessible.role: Accessible.ListItem
    Accessible.selectable: true
    Accessible.selected: selected
    onTapped: if (!isEditing)
        row.content.activate(row.uuid)
    Keys.onMenuPressed: row.openMenu(40, 30)

    AccessibleSelection {
        item: row
        selected: row.selected
    }

    TapHandler {
        // A finger has no right button, but would be taken for one.
        acceptedDevices: PointerDevice.Mouse | PointerDevice.TouchPad
        acceptedButtons: Qt.RightButton
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: eventPoint => row.openMenu(eventPoint.position.x, eventPoint.position.y)
    }

    PauseAnimation {
        id: uncopy

        duration: 1000
        onFinished: row.copied = false
    }

    Rectangle {
        anchors.fill: parent
        radius: 10
        color: row.selected ? Qt.rgba(row.accent.r, row.accent.g, row.accent.b, 0.24) : Qt.rgba(1, 1, 1, row.pointedAt ? 0.08 : 0)
        border.width: row.selected ? 1 : 0
        border.color: Qt.rgba(row.accent.r, row.accent.g, row.accent.b, 0.4)
    }

    MonospacedDigits {
        x: 8 + (12 - width) / 2
        anchors.verticalCenter: parent.verticalCenter
        visible: row.index < 9
        text: row.index + 1
        font.family: Fonts.text
        font.pixelSize: 11
        font.weight: Font.Medium
        color: Qt.rgba(1, 1, 1, 0.5)
        Accessible.ignored: true
    }

    Symbol {
        x: 27 + (16 - width) / 2
        anchors.verticalCenter: parent.verticalCenter
        name: row.pinned ? "pin.fill" : ClipViewTexts.glyph(row.kind, row.text, row.fileCount, true)
        pointSize: 12
        color: row.pinned ? row.accent : Qt.rgba(1, 1, 1, 0.65)
    }

    Column {
        id: middle

        x: 52
        width: parent.width - x - 10
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        Loader {
            width: parent.width
            active: !row.isEditing
            visible: active

            sourceComponent: ClipRowPreview {
                uuid: row.uuid
                kind: row.kind
                text: row.text
                displayText: row.displayText
                detected: row.detected
                detectedValue: row.detectedValue
                content: row.content
            }
        }

        Loader {
            id: editor

            width: parent.width
            active: row.isEditing
            visible: active

            sourceComponent: ClipRowEditor {
                draft: row.editDraft
                accent: row.accent
                onDrafted: text => row.drafted(text)
                onSaved: row.commitEdit()
                onCancelled: row.cancelEdit()
            }
        }

        Row {
            visible: (row.sourceName || sourceIcon.exists) && !row.isEditing
            spacing: 5

            ClipPicture {
                id: sourceIcon

                anchors.verticalCenter: parent.verticalCenter
                visible: exists
                width: 12
                height: 12
                image: row.content.sourceIcon(row.sourceBundleID)
            }

            Text {
                anchors.verticalCenter: parent.verticalCenter
                width: Math.min(implicitWidth, 200)
                elide: Text.ElideRight
                text: row.sourceName
                textFormat: Text.PlainText
                font.family: Fonts.text
                font.pixelSize: 10
                color: Qt.rgba(1, 1, 1, 0.5)
                Accessible.ignored: true
            }
        }
    }

    Loader {
        id: actions

        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        // Made where it can be seen or reached with Tab.
        active: !row.isEditing && (row.pointedAt || row.selected || activeFocus)
        onActiveChanged: if (!active)
            row.buttonHovered = false

        sourceComponent: ClipRowActions {
            rowHovered: row.hovered
            isText: row.isText
            pinned: row.pinned
            copied: row.copied
            stacking: row.panel.stackModeEnabled
            accent: row.accent
            onHoveredChanged: row.buttonHovered = hovered
            onCopyTapped: row.copy()
            onEditTapped: row.beginEdit()
            onPinTapped: row.content.togglePin(row.uuid)
            onDeleteTapped: row.content.deleteClip(row.uuid)
        }
    }
}
