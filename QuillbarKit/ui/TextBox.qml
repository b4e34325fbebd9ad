import QtQuick
import Quillbar

// Several lines of text to type. Control with Return accepts, Escape cancels.
FocusScope {
    id: box

    required property string name
    property color accent: "white"
    property string family: Fonts.text
    readonly property alias editing: input.activeFocus
    readonly property real contentHeight: input.contentHeight + 16

    // Somebody has changed the text.
    signal edited
    signal accepted
    signal cancelled

    function put(text: string) {
        input.filling = true;
        input.text = text;
        exact.begin(text);
        input.filling = false;
    }

    function text(): string {
        return exact.text();
    }

    // Puts the caret behind the text.
    function toEnd() {
        input.cursorPosition = input.length;
    }

    ExactText {
        id: exact

        document: input.textDocument
    }

    Rectangle {
        anchors.fill: parent
        radius: 8
        color: Qt.rgba(0, 0, 0, 0.28)
        border.width: 1
        border.color: input.activeFocus ? Qt.rgba(box.accent.r, box.accent.g, box.accent.b, 0.7) : Qt.rgba(1, 1, 1, 0.14)
    }

    Flickable {
        id: view

        function reveal(place: rect) {
            if (place.y < contentY)
                contentY = Math.max(0, place.y);
            else if (place.y + place.height > contentY + height)
                contentY = place.y + place.height - height;
        }

        anchors.fill: parent
        anchors.margins: 8
        clip: true
        contentWidth: width
        contentHeight: input.contentHeight
        boundsBehavior: Flickable.StopAtBounds

        TextEdit {
            id: input

            property bool filling: false

            width: view.width
            height: Math.max(view.height, contentHeight)
            focus: true
            activeFocusOnTab: true
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            font.family: box.family
            font.pixelSize: 12
            color: "white"
            selectByMouse: true
            selectionColor: Qt.rgba(box.accent.r, box.accent.g, box.accent.b, 0.5)
            selectedTextColor: "white"
            // The toolkit gives this role to a line of text, but not to several.
            Accessible.role: Accessible.EditableText
            Accessible.multiLine: true
            Accessible.name: box.name
            onTextChanged: if (!filling)
                box.edited()
            onCursorRectangleChanged: view.reveal(cursorRectangle)
            // A tab goes on to the buttons, as everywhere in the panel.
            Keys.onTabPressed: nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
            Keys.onBacktabPressed: nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
            Keys.onEscapePressed: box.cancelled()
            Keys.onPressed: event => {
                if ((event.key === Qt.Key_Return || event.key === Qt.Key_Enter) && event.modifiers & Qt.ControlModifier) {
                    event.accepted = true;
                    box.accepted();
                }
            }
        }
    }
}
