import QtQuick
import Quillbar

// The top of the panel: what it is, how much it shows, and what is done with the whole of it.
Item {
    id: header

    required property ClipboardPanelModel panel
    required property ClipboardPanelContent content
    required property PopupMenu menu
    required property color accent

    signal closeRequested

    implicitHeight: 30

    Row {
        id: heading

        x: 16
        anchors.verticalCenter: parent.verticalCenter
        spacing: 8

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: "doc.on.clipboard.fill"
            pointSize: 14
            color: header.accent
        }

        Text {
            id: title

            anchors.verticalCenter: parent.verticalCenter
            text: "Clipboard"
            font.family: Fonts.text
            font.pixelSize: 15
            font.weight: Font.DemiBold
            color: "white"
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }

        Text {
            anchors.baseline: title.baseline
            text: ClipViewTexts.count(header.panel.rows.count)
            font.family: Fonts.text
            font.pixelSize: 11
            color: Qt.rgba(1, 1, 1, 0.5)
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }

    Row {
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 6

        BoardChip {
            id: stackToggle

            readonly property int queued: header.panel.stackCount

            title: queued > 0 ? "Stack " + queued : "Stack"
            systemImage: "square.stack.3d.up.fill"
            help: header.panel.stackModeEnabled ? "Stack mode on — tap clips to queue them" : "Stack mode: queue clips and paste them in order"
            selected: header.panel.stackModeEnabled
            accent: header.accent
            Accessible.role: Accessible.CheckBox
            onTapped: header.panel.stackModeEnabled = !header.panel.stackModeEnabled
        }

        BoardChip {
            id: clear

            title: "Clear"
            name: "Clear history"
            help: "Clear clipboard history"
            checkable: false
            selected: false
            accent: header.accent
            Accessible.role: Accessible.ButtonMenu
            onTapped: header.menu.open([
                {
                    "text": "Clear unpinned",
                    "action": () => header.content.clearUnpinned()
                },
                {
                    "text": "Clear all",
                    "destructive": true,
                    "action": () => header.content.clear()
                }
            ], clear, 0, clear.height + 4)
        }

        SymbolButton {
            anchors.verticalCenter: parent.verticalCenter
            symbol: "xmark"
            name: "Close"
            onTapped: header.closeRequested()
        }
    }
}
