import QtQuick
import Quillbar

// A snippet open for change, or a new one.
FocusScope {
    id: root

    required property ClipboardPanelModel panel
    required property color accent
    // Of the snippet; empty for a new one.
    property string initialTitle: ""
    property string initialText: ""

    // The keyboard is free again.
    signal ended

    function save() {
        const panel = root.panel;
        root.ended();
        panel.saveSnippet(title.text, box.text());
    }

    function cancel() {
        const panel = root.panel;
        root.ended();
        panel.closeSnippetEditor();
    }

    implicitHeight: 188
    Component.onCompleted: {
        title.text = root.initialTitle;
        box.put(root.initialText);
        focusLater.start();
    }
    Keys.onEscapePressed: root.cancel()

    Timer {
        id: focusLater

        interval: 0
        onTriggered: title.forceActiveFocus()
    }

    Rectangle {
        anchors.fill: parent
        radius: 10
        color: Qt.rgba(1, 1, 1, 0.06)
        border.width: 1
        border.color: Qt.rgba(1, 1, 1, 0.08)
    }

    Rectangle {
        x: 10
        y: 10
        width: parent.width - 20
        height: 30
        radius: 8
        color: Qt.rgba(0, 0, 0, 0.28)
        border.width: 1
        border.color: title.editing ? Qt.rgba(root.accent.r, root.accent.g, root.accent.b, 0.7) : Qt.rgba(1, 1, 1, 0.14)

        PromptField {
            id: title

            anchors.fill: parent
            anchors.leftMargin: 8
            anchors.rightMargin: 8
            focus: true
            prompt: "Title"
            accent: root.accent
            onAccepted: modifiers => {
                if (modifiers & Qt.ControlModifier)
                    root.save();
                else
                    box.forceActiveFocus();
            }
            onCancelled: root.cancel()
        }
    }

    TextBox {
        id: box

        x: 10
        y: 48
        width: parent.width - 20
        height: 96
        name: "Text"
        accent: root.accent
        onAccepted: root.save()
        onCancelled: root.cancel()
    }

    Row {
        anchors.right: parent.right
        anchors.rightMargin: 10
        y: 152
        spacing: 8

        TextButton {
            label: "Cancel"
            height: 26
            onTapped: root.cancel()
        }

        TextButton {
            label: "Save"
            help: "Save (⌘↩)"
            height: 26
            prominent: true
            accent: root.accent
            onTapped: root.save()
        }
    }
}
