pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// The clips that the filter and the query leave.
ListView {
    id: list

    required property ClipboardPanelModel panel
    required property ClipboardPanelContent content
    required property PopupMenu menu
    required property AlertBox alert
    required property color accent
    property string editDraft: ""
    // Whether the keyboard is with a row itself rather than with something in it.
    readonly property bool rowFocused: (list.Window.activeFocusItem as ClipRow) !== null

    // The keyboard is free again.
    signal ended

    // Of the selected row, for who has no right button.
    function openMenu() {
        const row = list.itemAtIndex(list.panel.selection) as ClipRow;
        if (row)
            row.openMenu(40, 30);
    }

    function follow() {
        list.positionViewAtIndex(list.panel.selection, ListView.Contain);
    }

    clip: true
    spacing: 2
    topMargin: 6
    bottomMargin: 6
    boundsBehavior: Flickable.StopAtBounds
    cacheBuffer: 200
    // Follows a row that is being edited, which so is kept also out of sight.
    highlightFollowsCurrentItem: false
    currentIndex: -1
    model: panel.rows
    Accessible.role: Accessible.List
    Accessible.name: "Clips"

    delegate: ClipRow {
        id: row

        x: 8
        width: list.width - 16
        panel: list.panel
        content: list.content
        menu: list.menu
        alert: list.alert
        accent: list.accent
        selected: index === list.panel.selection
        editDraft: list.editDraft
        onDrafted: text => list.editDraft = text
        onEnded: list.ended()
        // The keyboard goes on with the selection.
        onSelectedChanged: if (!selected && holdsFocus)
            list.itemAtIndex(list.panel.selection)?.forceActiveFocus()
        onIsEditingChanged: {
            if (isEditing)
                list.currentIndex = index;
            else if (list.currentIndex === index)
                list.currentIndex = -1;
        }
    }

    Connections {
        target: list.panel
        function onSelectionChanged() {
            const wasFocused = list.rowFocused;
            list.follow();
            if (wasFocused)
                list.itemAtIndex(list.panel.selection)?.forceActiveFocus();
        }
    }
}
