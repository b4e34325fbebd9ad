import QtQuick
import Quillbar

// Where the search is typed. Return is the list's and never comes here.
Rectangle {
    id: root

    required property ClipboardPanelModel panel
    required property color accent
    readonly property bool searchFocused: input.editing

    signal escaped

    function focusSearch() {
        input.forceActiveFocus();
    }

    implicitHeight: 34
    radius: 10
    color: Qt.rgba(1, 1, 1, 0.08)
    border.width: 1
    border.color: input.editing ? Qt.rgba(accent.r, accent.g, accent.b, 0.55) : Qt.rgba(1, 1, 1, 0.08)

    Symbol {
        id: glass

        x: 11
        anchors.verticalCenter: parent.verticalCenter
        name: "magnifyingglass"
        pointSize: 12
        color: Qt.rgba(1, 1, 1, 0.55)
    }

    PromptField {
        id: input

        anchors.fill: parent
        anchors.leftMargin: glass.x + glass.width + 8
        anchors.rightMargin: empty.visible ? 34 : 11
        focus: true
        prompt: "Search"
        pointSize: 13
        accent: root.accent
        text: root.panel.query
        onEdited: root.panel.query = text
        onCancelled: root.escaped()

        // What is typed ends the binding of the text.
        Connections {
            target: root.panel
            function onQueryChanged() {
                if (input.text !== root.panel.query)
                    input.text = root.panel.query;
            }
        }
    }

    SymbolButton {
        id: empty

        anchors.right: parent.right
        anchors.rightMargin: 5
        anchors.verticalCenter: parent.verticalCenter
        visible: root.panel.query
        symbol: "xmark.circle.fill"
        pointSize: 12
        semibold: false
        name: "Clear search"
        onTapped: {
            root.panel.query = "";
            root.focusSearch();
        }
    }
}
