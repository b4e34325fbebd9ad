import QtQuick
import Quillbar

// In place of a track while there is none.
Column {
    spacing: 8

    Symbol {
        anchors.horizontalCenter: parent.horizontalCenter
        name: "music.note"
        pointSize: 22
        color: Qt.rgba(1, 1, 1, 0.3)
    }

    Text {
        anchors.horizontalCenter: parent.horizontalCenter
        text: "Nothing playing"
        font.family: Fonts.text
        font.pixelSize: 12
        color: Qt.rgba(1, 1, 1, 0.45)
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
}
