import QtQuick
import QtQuick.Window
import Quillbar

// What the program is, in which version, and by whom.
FocusScope {
    id: root

    required property string version

    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: "About Quillbar"
    Keys.onEscapePressed: root.Window.window.close()

    DragHandler {
        target: null
        onActiveChanged: if (active)
            root.Window.window.startSystemMove()
    }

    Column {
        anchors.centerIn: parent
        spacing: 8

        Image {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 72
            height: 72
            // In device pixels, or it would be drawn small and enlarged.
            sourceSize.width: width * Screen.devicePixelRatio
            sourceSize.height: height * Screen.devicePixelRatio
            source: "qrc:/application/com.vennor.quillbar.svg"
            Accessible.ignored: true
        }

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Quillbar"
            font.family: Fonts.text
            font.pixelSize: 22
            font.bold: true
            color: "white"
        }

        Text {
            anchors.horizontalCenter: parent.horizontalCenter
            text: "Version " + root.version
            textFormat: Text.PlainText
            font.family: Fonts.text
            font.pixelSize: 11
            color: Qt.rgba(1, 1, 1, 0.4)
        }

        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: 6

            Text {
                anchors.baseline: maker.baseline
                text: "by"
                font.family: Fonts.text
                font.pixelSize: 13
                color: Qt.rgba(1, 1, 1, 0.6)
            }

            Text {
                id: maker

                text: "Dorvane"
                font.family: Fonts.text
                font.pixelSize: 16
                color: "white"
            }
        }
    }
}
