import QtQuick
import Quillbar

// A question over its parent: a title and a message, a field where there is something to name, and the two answers.
FocusScope {
    id: box

    property color accent: "white"
    property string title: ""
    property string message: ""
    // Empty for a question without a field.
    property string prompt: ""
    property string answer: ""
    property bool destructive: false
    property var action: null
    property Item formerFocus: null
    readonly property alias isOpen: box.visible

    // `question` has "title", "message", "answer" and "action", which is given what was typed; "prompt" and
    // "destructive" where there is a field or a loss.
    function ask(question: var) {
        box.title = question.title;
        box.message = question.message;
        box.prompt = question.prompt ?? "";
        box.answer = question.answer;
        box.destructive = question.destructive ?? false;
        box.action = question.action;
        field.text = "";
        box.formerFocus = box.Window.activeFocusItem;
        box.visible = true;
        if (box.prompt)
            field.forceActiveFocus();
        else
            (box.destructive ? no : yes).forceActiveFocus();
    }

    function close() {
        if (!visible)
            return;
        box.visible = false;
        if (box.formerFocus)
            box.formerFocus.forceActiveFocus();
        box.formerFocus = null;
    }

    function accept() {
        const action = box.action;
        const typed = field.text;
        box.close();
        action(typed);
    }

    anchors.fill: parent
    visible: false
    z: 11
    Accessible.role: Accessible.Dialog
    Accessible.name: box.title
    Accessible.description: box.message
    Keys.onEscapePressed: box.close()
    // The question has the keyboard for itself.
    Keys.onTabPressed: box.turn()
    Keys.onBacktabPressed: box.turn()

    function turn() {
        if (yes.activeFocus)
            no.forceActiveFocus(Qt.TabFocusReason);
        else if (no.activeFocus && box.prompt)
            field.forceActiveFocus(Qt.TabFocusReason);
        else
            yes.forceActiveFocus(Qt.TabFocusReason);
    }

    Rectangle {
        anchors.fill: parent
        radius: 22
        color: "#80000000"
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        hoverEnabled: true
        onWheel: event => event.accepted = true
    }

    Rectangle {
        anchors.centerIn: parent
        width: 280
        height: column.implicitHeight + 36
        radius: 14
        color: "#2b2d31"
        border.width: 1
        border.color: Qt.rgba(1, 1, 1, 0.14)

        Column {
            id: column

            x: 18
            y: 18
            width: parent.width - 36
            spacing: 10

            Text {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                maximumLineCount: 3
                elide: Text.ElideRight
                text: box.title
                textFormat: Text.PlainText
                font.family: Fonts.text
                font.pixelSize: 14
                font.weight: Font.DemiBold
                color: "white"
            }

            Text {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                text: box.message
                textFormat: Text.PlainText
                font.family: Fonts.text
                font.pixelSize: 12
                color: Qt.rgba(1, 1, 1, 0.7)
            }

            Rectangle {
                width: parent.width
                height: 30
                visible: box.prompt
                radius: 8
                color: Qt.rgba(0, 0, 0, 0.3)
                border.width: 1
                border.color: field.editing ? Qt.rgba(box.accent.r, box.accent.g, box.accent.b, 0.7) : Qt.rgba(1, 1, 1, 0.14)

                PromptField {
                    id: field

                    anchors.fill: parent
                    anchors.leftMargin: 10
                    anchors.rightMargin: 10
                    prompt: box.prompt
                    accent: box.accent
                    onAccepted: box.accept()
                    onCancelled: box.close()
                }
            }

            Row {
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: 10

                TextButton {
                    id: no

                    label: "Cancel"
                    width: 110
                    height: 28
                    onTapped: box.close()
                }

                TextButton {
                    id: yes

                    label: box.answer
                    width: 110
                    height: 28
                    prominent: !box.destructive
                    destructive: box.destructive
                    accent: box.accent
                    onTapped: box.accept()
                }
            }
        }
    }
}
