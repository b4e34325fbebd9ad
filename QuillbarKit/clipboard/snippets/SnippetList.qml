import QtQuick
import Quillbar

// A Loader of this toolkit can't make bound components, so what they use of their file is not known here.
// qmllint disable unqualified

// The user's snippets, and the editor of the one that is open.
Item {
    id: root

    required property ClipboardPanelModel panel
    required property ClipboardPanelContent content
    required property PopupMenu menu
    required property color accent
    readonly property bool isCreating: panel.snippetEditing.kind === SnippetEditKind.New

    // The keyboard is free again.
    signal ended

    Item {
        id: heading

        x: 16
        y: 6
        width: parent.width - 28
        height: 30

        Text {
            anchors.verticalCenter: parent.verticalCenter
            text: "Snippets"
            font.family: Fonts.text
            font.pixelSize: 12
            font.weight: Font.DemiBold
            color: Qt.rgba(1, 1, 1, 0.7)
        }

        TextButton {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            label: "New snippet"
            help: "Save a reusable snippet"
            onTapped: root.panel.beginSnippet()
        }
    }

    ClipboardEmptyState {
        x: 40
        width: parent.width - 80
        y: heading.height + (parent.height - heading.height - height) / 2
        visible: root.content.snippets.count === 0 && !root.isCreating
        symbol: "text.badge.star"
        title: "No snippets yet"
        message: "Save reusable text — signatures, replies, code — and paste it anytime."
    }

    ListView {
        id: list

        anchors.top: heading.bottom
        anchors.topMargin: 4
        anchors.bottom: parent.bottom
        width: parent.width
        clip: true
        spacing: 2
        bottomMargin: 6
        boundsBehavior: Flickable.StopAtBounds
        // Follows the snippet that is being edited, which so is kept also out of sight.
        highlightFollowsCurrentItem: false
        currentIndex: -1
        model: root.content.snippets
        Accessible.role: Accessible.List
        Accessible.name: "Snippets"

        header: Loader {
            x: 8
            width: list.width - 16
            height: active ? 194 : 0
            active: root.isCreating
            sourceComponent: SnippetEditor {
                panel: root.panel
                accent: root.accent
                height: 188
                onEnded: root.ended()
            }
            // It comes above what is shown.
            onHeightChanged: Qt.callLater(list.positionViewAtBeginning)
        }

        delegate: Item {
            id: place

            required property int index
            required property string uuid
            required property string title
            required property string text
            readonly property bool isEdited: root.panel.snippetEditing.kind === SnippetEditKind.Existing && root.panel.snippetEditing.snippetID === uuid

            x: 8
            width: list.width - 16
            height: isEdited ? 188 : row.implicitHeight
            onIsEditedChanged: {
                if (isEdited)
                    list.currentIndex = index;
                else if (list.currentIndex === index)
                    list.currentIndex = -1;
            }

            SnippetRow {
                id: row

                anchors.fill: parent
                visible: !place.isEdited
                uuid: place.uuid
                title: place.title
                text: place.text
                panel: root.panel
                content: root.content
                menu: root.menu
                accent: root.accent
                onActiveFocusChanged: if (activeFocus)
                    list.positionViewAtIndex(place.index, ListView.Contain)
            }

            Loader {
                anchors.fill: parent
                active: place.isEdited
                sourceComponent: SnippetEditor {
                    panel: root.panel
                    accent: root.accent
                    initialTitle: place.title
                    initialText: place.text
                    onEnded: root.ended()
                }
                onLoaded: list.positionViewAtIndex(place.index, ListView.Contain)
            }
        }
    }
}
