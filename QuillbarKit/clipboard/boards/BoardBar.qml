pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// What the panel can list, as a line of chips: everything, the pinned clips, the snippets, and the user's boards.
Item {
    id: bar

    required property ClipboardPanelModel panel
    required property ClipboardPanelContent content
    required property PopupMenu menu
    required property AlertBox alert
    required property color accent
    property bool creating: false

    // The field that had the keyboard is gone.
    signal ended

    function beginCreate() {
        field.text = "";
        bar.creating = true;
        focusLater.start();
    }

    function commitCreate() {
        bar.content.createBoard(field.text);
        bar.endCreate();
    }

    function endCreate() {
        bar.creating = false;
        field.text = "";
        bar.ended();
    }

    function reveal(item: Item) {
        const left = item.mapToItem(row, 0, 0).x;
        strip.contentX = Math.max(0, Math.min(left - 8, Math.max(strip.contentX, left + item.width + 24 - strip.width)));
    }

    implicitHeight: 32

    Timer {
        id: focusLater

        interval: 0
        onTriggered: {
            field.field.forceActiveFocus();
            // It has only just come, and stands nowhere yet.
            row.forceLayout();
            bar.reveal(field);
        }
    }

    Flickable {
        id: strip

        width: parent.width - 44
        height: parent.height
        clip: true
        contentWidth: row.width + 24
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentWidth > width

        WheelHandler {
            enabled: strip.interactive
            orientation: Qt.Vertical
            // A wheel that turns only down and up scrolls as well.
            onWheel: event => strip.contentX = Math.max(0, Math.min(strip.contentWidth - strip.width, strip.contentX - event.angleDelta.y / 2))
        }

        Row {
            id: row

            x: 12
            y: 3
            spacing: 6

            BoardChip {
                title: "All"
                systemImage: "tray.full"
                selected: bar.panel.boardFilter.kind === BoardFilterKind.All
                accent: bar.accent
                onTapped: bar.panel.show(BoardFilterKind.All)
                onActiveFocusChanged: if (activeFocus)
                    bar.reveal(this)
            }

            BoardChip {
                title: "Pinned"
                systemImage: "pin.fill"
                selected: bar.panel.boardFilter.kind === BoardFilterKind.Pinned
                accent: bar.accent
                onTapped: bar.panel.show(BoardFilterKind.Pinned)
                onActiveFocusChanged: if (activeFocus)
                    bar.reveal(this)
            }

            BoardChip {
                title: "Snippets"
                systemImage: "text.badge.star"
                selected: bar.panel.boardFilter.kind === BoardFilterKind.Snippets
                accent: bar.accent
                onTapped: bar.panel.show(BoardFilterKind.Snippets)
                onActiveFocusChanged: if (activeFocus)
                    bar.reveal(this)
            }

            Repeater {
                model: bar.content.boards

                UserBoardChip {
                    id: board

                    panel: bar.panel
                    content: bar.content
                    menu: bar.menu
                    alert: bar.alert
                    accent: bar.accent
                    width: implicitWidth
                    height: implicitHeight
                    onEnded: bar.ended()

                    Connections {
                        target: board.Window.window
                        function onActiveFocusItemChanged() {
                            for (let item = board.Window.activeFocusItem; item; item = item.parent)
                                if (item === board)
                                    bar.reveal(board);
                        }
                    }
                }
            }

            BoardNameField {
                id: field

                visible: bar.creating
                systemImage: "rectangle.stack.badge.plus"
                accent: bar.accent
                onAccepted: bar.commitCreate()
                onCancelled: bar.endCreate()
            }
        }
    }

    // In reach however many boards there are.
    BoardChip {
        x: Math.min(12 + row.width + row.spacing, bar.width - width - 12)
        y: 3
        systemImage: "plus"
        name: help
        help: "New board"
        checkable: false
        selected: false
        accent: bar.accent
        onTapped: bar.beginCreate()
    }
}
