pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// A menu over its parent. Its entries are objects of "text" and "action", or of "text" and "entries" for a submenu,
// which unfolds beneath; "enabled" and "destructive" where they differ. Arrows move, Escape and a press elsewhere
// close it, and the keyboard goes back to where it was.
FocusScope {
    id: menu

    property color accent: "white"
    property var entries: []
    // The entry whose submenu is unfolded.
    property int unfolded: -1
    property Item formerFocus: null
    property point anchor
    readonly property alias isOpen: menu.visible

    readonly property var lines: {
        let lines = [];
        for (let at = 0; at < entries.length; ++at) {
            const entry = entries[at];
            lines.push({
                "entry": entry,
                "index": at,
                "inner": false
            });
            if (entry.entries !== undefined && at === unfolded)
                for (const inner of entry.entries)
                    lines.push({
                        "entry": inner,
                        "index": at,
                        "inner": true
                    });
        }
        return lines;
    }

    // At a place of that item.
    function open(entries: var, item: Item, x: real, y: real) {
        menu.unfolded = -1;
        menu.entries = entries;
        menu.anchor = item.mapToItem(menu, x, y);
        menu.formerFocus = menu.Window.activeFocusItem;
        menu.visible = true;
        menu.forceActiveFocus();
    }

    function close() {
        if (!visible)
            return;
        menu.visible = false;
        if (menu.formerFocus)
            menu.formerFocus.forceActiveFocus();
        menu.formerFocus = null;
    }

    function choose(line: var) {
        if (line.entry.entries !== undefined) {
            menu.unfolded = menu.unfolded === line.index ? -1 : line.index;
            return;
        }
        menu.close();
        line.entry.action();
    }

    function step(by: int) {
        let at = -1;
        for (let row = 0; row < rows.count; ++row)
            if (rows.itemAt(row).activeFocus)
                at = row;
        for (let tries = 0; tries < rows.count; ++tries) {
            at = (at + by + rows.count) % rows.count;
            if (rows.itemAt(at).enabled) {
                rows.itemAt(at).forceActiveFocus();
                return;
            }
        }
    }

    anchors.fill: parent
    visible: false
    z: 10
    Accessible.role: Accessible.PopupMenu
    Accessible.name: "Menu"
    Keys.onEscapePressed: menu.close()
    Keys.onDownPressed: menu.step(1)
    Keys.onTabPressed: menu.step(1)
    Keys.onUpPressed: menu.step(-1)
    Keys.onBacktabPressed: menu.step(-1)

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onPressed: menu.close()
        onWheel: event => event.accepted = true
    }

    Rectangle {
        x: Math.max(6, Math.min(menu.anchor.x, menu.width - width - 6))
        y: Math.max(6, Math.min(menu.anchor.y, menu.height - height - 6))
        width: Math.max(150, column.widest + 24)
        height: Math.min(column.implicitHeight + 10, menu.height - 12)
        radius: 9
        color: "#2b2d31"
        border.width: 1
        border.color: Qt.rgba(1, 1, 1, 0.14)

        // So that a press between two entries does not close the menu.
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
        }

        Flickable {
            anchors.fill: parent
            anchors.margins: 5
            clip: true
            contentWidth: width
            contentHeight: column.implicitHeight
            boundsBehavior: Flickable.StopAtBounds
            interactive: contentHeight > height

            Column {
                id: column

                property real widest: 0

                width: parent.width

                Repeater {
                    id: rows

                    model: menu.lines

                    Control {
                        id: line

                        required property var modelData
                        readonly property var entry: modelData.entry
                        readonly property bool unfolds: entry.entries !== undefined
                        readonly property bool marked: enabled && (hovered || activeFocus)

                        name: entry.text
                        enabled: entry.enabled !== false
                        hasFocusRing: false
                        width: column.width
                        height: 26
                        Accessible.role: Accessible.MenuItem
                        onTapped: menu.choose(line.modelData)
                        Component.onCompleted: column.widest = Math.max(column.widest, label.implicitWidth + (modelData.inner ? 22 : 8) + (unfolds ? 20 : 0))

                        Rectangle {
                            anchors.fill: parent
                            radius: 5
                            visible: line.marked
                            color: Qt.rgba(menu.accent.r, menu.accent.g, menu.accent.b, 0.3)
                        }

                        Text {
                            id: label

                            x: line.modelData.inner ? 22 : 8
                            width: parent.width - x - (line.unfolds ? 24 : 8)
                            anchors.verticalCenter: parent.verticalCenter
                            elide: Text.ElideRight
                            text: line.name
                            textFormat: Text.PlainText
                            font.family: Fonts.text
                            font.pixelSize: 12
                            color: line.entry.destructive ? "#ff7a70" : Qt.rgba(1, 1, 1, line.enabled ? 0.92 : 0.4)
                            Accessible.ignored: true
                        }

                        Symbol {
                            anchors.right: parent.right
                            anchors.rightMargin: 8
                            anchors.verticalCenter: parent.verticalCenter
                            visible: line.unfolds
                            name: line.modelData.index === menu.unfolded ? "chevron.down" : "chevron.right"
                            pointSize: 9
                            color: Qt.rgba(1, 1, 1, 0.6)
                        }
                    }
                }
            }
        }
    }
}
