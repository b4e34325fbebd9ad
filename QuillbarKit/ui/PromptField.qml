import QtQuick
import Quillbar

// A line of text to type, with a prompt while it is empty. Neither Return nor Escape goes any further from here.
FocusScope {
    id: field

    required property string prompt
    property color accent: "white"
    property real pointSize: 12
    property alias text: input.text
    readonly property alias editing: input.activeFocus

    signal edited
    signal accepted(modifiers: int)
    signal cancelled

    function selectAll() {
        input.selectAll();
    }

    implicitWidth: 140
    implicitHeight: input.implicitHeight

    TextInput {
        id: input

        anchors.fill: parent
        focus: true
        activeFocusOnTab: true
        verticalAlignment: TextInput.AlignVCenter
        clip: true
        font.family: Fonts.text
        font.pixelSize: field.pointSize
        color: "white"
        selectByMouse: true
        selectionColor: Qt.rgba(field.accent.r, field.accent.g, field.accent.b, 0.5)
        selectedTextColor: "white"
        Accessible.name: field.prompt
        onTextEdited: {
            // A name or a query is one line, whatever is pasted into it.
            const line = text.replace(/[\r\n\u2028\u2029]+/g, " ");
            if (line !== text)
                text = line;
            field.edited();
        }
        Keys.onReturnPressed: event => field.accepted(event.modifiers)
        Keys.onEnterPressed: event => field.accepted(event.modifiers)
        Keys.onEscapePressed: field.cancelled()
    }

    Text {
        anchors.fill: parent
        verticalAlignment: Text.AlignVCenter
        visible: input.text.length === 0 && input.preeditText.length === 0
        elide: Text.ElideRight
        text: field.prompt
        font: input.font
        color: Qt.rgba(1, 1, 1, 0.45)
        Accessible.ignored: true
    }
}
