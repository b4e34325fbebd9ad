import QtQuick
import Quillbar

// The program's name, and the ways to what is not the clipboard.
Item {
    id: footer

    signal openSettingsRequested
    signal aboutRequested
    signal quitRequested

    implicitHeight: 58

    Text {
        x: 18
        anchors.verticalCenter: parent.verticalCenter
        text: "Quillbar"
        font.family: Fonts.rounded
        font.pixelSize: 13
        font.weight: Font.DemiBold
        color: Qt.rgba(1, 1, 1, 0.55)
    }

    Row {
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        HubButton {
            // There is no settings window yet.
            enabled: false
            icon: "gear"
            help: "Settings"
            onTapped: footer.openSettingsRequested()
        }

        HubButton {
            icon: "info.circle"
            help: "About Quillbar"
            onTapped: footer.aboutRequested()
        }

        HubButton {
            icon: "power"
            help: "Quit Quillbar"
            onTapped: footer.quitRequested()
        }
    }
}
