import QtQuick
import Quillbar

// Where a board's name is typed, in the place of a chip.
Rectangle {
    id: root

    property string systemImage: ""
    required property color accent
    readonly property alias field: input
    property alias text: input.text

    signal accepted
    signal cancelled

    width: 130
    height: 26
    radius: height / 2
    color: Qt.rgba(0, 0, 0, 0.28)
    border.width: 1
    border.color: Qt.rgba(accent.r, accent.g, accent.b, 0.7)

    Symbol {
        id: symbol

        x: 10
        anchors.verticalCenter: parent.verticalCenter
        visible: root.systemImage
        name: root.systemImage
        pointSize: 10
        color: Qt.rgba(1, 1, 1, 0.75)
    }

    PromptField {
        id: input

        anchors.fill: parent
        anchors.leftMargin: root.systemImage ? symbol.x + symbol.width + 6 : 11
        anchors.rightMargin: 11
        prompt: "Name"
        pointSize: 11
        accent: root.accent
        onAccepted: root.accepted()
        onCancelled: root.cancelled()
    }
}
