import QtQuick
import Quillbar

// What stands in a list that holds nothing yet.
Column {
    id: root

    required property string symbol
    required property string title
    property string message: ""

    spacing: 6

    Symbol {
        anchors.horizontalCenter: parent.horizontalCenter
        name: root.symbol
        pointSize: 28
        color: Qt.rgba(1, 1, 1, 0.35)
    }

    Item {
        width: 1
        height: 4
    }

    Text {
        width: root.width
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        text: root.title
        font.family: Fonts.text
        font.pixelSize: 13
        font.weight: Font.DemiBold
        color: Qt.rgba(1, 1, 1, 0.75)
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Text {
        width: root.width
        visible: root.message
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        text: root.message
        font.family: Fonts.text
        font.pixelSize: 12
        color: Qt.rgba(1, 1, 1, 0.5)
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
