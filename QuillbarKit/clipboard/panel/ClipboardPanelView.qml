import QtQuick
import Quillbar

// The floating clipboard panel: search, boards, the queue, and the clips or snippets.
FocusScope {
    id: root

    required property ClipboardPanelModel model
    required property QuillbarSettings settings
    // Whether what lies beneath shows through.
    property bool blended: true
    // What had it is gone, such as a row that was deleted.
    readonly property bool keyboardIsNobodys: root.Window.activeFocusItem === root || (root.Window.activeFocusItem as ListView) !== null
    // An editor, a name to type, a menu or a question has the keyboard. Then no key is meant for the list.
    readonly property bool keyboardIsHeld: {
        if (searchFocused)
            return false;
        if (menu.isOpen || alert.isOpen)
            return true;
        for (let item = root.Window.activeFocusItem; item; item = item.parent)
            if (item as PromptField || item as ClipRowEditor || item as SnippetEditor)
                return true;
        return false;
    }

    readonly property real cardWidth: 380
    readonly property color accent: Contrast.legible(settings.accentColor)
    readonly property bool searchFocused: search.searchFocused
    readonly property bool rowFocused: clips.rowFocused
    // The keyboard is with something else than the search or a row: a button, an editor, a name to type, a menu, a
    // question. Then Return and Space are not meant for the list.
    readonly property bool keysAreTaken: !searchFocused && !rowFocused && root.Window.activeFocusItem !== null && root.Window.activeFocusItem !== root

    signal closeRequested
    signal openSettingsRequested
    signal aboutRequested
    signal quitRequested

    function focusSearch() {
        search.focusSearch();
    }

    function takeUpKeyboard() {
        if (root.keyboardIsNobodys)
            root.focusSearch();
    }

    implicitWidth: cardWidth
    implicitHeight: content.hasClips ? 500 : 420
    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: "Clipboard"
    Keys.onEscapePressed: root.closeRequested()
    Keys.onMenuPressed: clips.openMenu()
    Component.onCompleted: root.focusSearch()
    onKeyboardIsNobodysChanged: Qt.callLater(root.takeUpKeyboard) // qmllint disable

    ClipboardPanelContent {
        id: content

        model: root.model
    }

    GlassBackground {
        anchors.fill: parent
        topRadius: 22
        bottomRadius: 22
        translucent: root.blended
    }

    // Denser than the drawer's glass, which has large signs where this has lines of text; densest where the notch
    // lies beneath.
    Rectangle {
        anchors.fill: parent
        radius: 22
        visible: root.blended
        gradient: Gradient {
            GradientStop {
                position: 0
                color: "#f4202225"
            }
            GradientStop {
                position: 0.08
                color: "#f4202225"
            }
            GradientStop {
                position: 0.24
                color: "#a8202225"
            }
            GradientStop {
                position: 1
                color: "#a81a1c1f"
            }
        }
    }

    ClipboardHeader {
        id: header

        y: 12
        width: parent.width
        height: implicitHeight
        panel: root.model
        content: content
        menu: menu
        accent: root.accent
        onCloseRequested: root.closeRequested()
    }

    ClipboardSearchField {
        id: search

        x: 12
        y: 54
        width: parent.width - 24
        height: implicitHeight
        focus: true
        panel: root.model
        accent: root.accent
        onEscaped: root.closeRequested()
    }

    BoardBar {
        id: boards

        y: 98
        width: parent.width
        height: implicitHeight
        panel: root.model
        content: content
        menu: menu
        alert: alert
        accent: root.accent
        onEnded: root.focusSearch()
    }

    QueueStrip {
        id: queue

        y: 136
        width: parent.width
        height: visible ? implicitHeight : 0
        visible: root.model.stackModeEnabled
        panel: root.model
        accent: root.accent
    }

    Item {
        id: body

        anchors.top: queue.bottom
        anchors.bottom: divider.top
        width: parent.width

        readonly property bool showsSnippets: root.model.boardFilter.kind === BoardFilterKind.Snippets
        readonly property bool showsNothing: !showsSnippets && !content.hasClips && root.model.query === ""
        readonly property bool showsMessage: !showsSnippets && !showsNothing && root.model.rows.count === 0

        SnippetList {
            anchors.fill: parent
            visible: body.showsSnippets
            panel: root.model
            content: content
            menu: menu
            accent: root.accent
            onEnded: root.focusSearch()
        }

        ClipboardEmptyState {
            anchors.centerIn: parent
            width: parent.width - 80
            visible: body.showsNothing
            symbol: "doc.on.clipboard"
            title: "Nothing copied yet"
            message: "Copied text shows up here, ready to paste again."
        }

        Text {
            anchors.centerIn: parent
            width: parent.width - 60
            visible: body.showsMessage
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            maximumLineCount: 4
            elide: Text.ElideRight
            text: ClipViewTexts.emptyListMessage(root.model.query, root.model.boardFilter.kind)
            textFormat: Text.PlainText
            lineHeight: 1.25
            font.family: Fonts.text
            font.pixelSize: 13
            color: Qt.rgba(1, 1, 1, 0.6)
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }

        ClipList {
            id: clips

            anchors.fill: parent
            visible: !body.showsSnippets && count > 0
            panel: root.model
            content: content
            menu: menu
            alert: alert
            accent: root.accent
            onEnded: root.focusSearch()
        }
    }

    Rectangle {
        id: divider

        anchors.bottom: footer.top
        width: parent.width
        height: 1
        color: Qt.rgba(1, 1, 1, 0.08)
    }

    ClipboardFooter {
        id: footer

        anchors.bottom: parent.bottom
        width: parent.width
        height: implicitHeight
        onOpenSettingsRequested: root.openSettingsRequested()
        onAboutRequested: root.aboutRequested()
        onQuitRequested: root.quitRequested()
    }

    Rectangle {
        anchors.fill: parent
        radius: 22
        color: "transparent"
        border.width: 1
        border.color: Qt.rgba(1, 1, 1, 0.07)
    }

    PopupMenu {
        id: menu

        accent: root.accent
    }

    AlertBox {
        id: alert

        accent: root.accent
    }
}
