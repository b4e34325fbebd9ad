import QtQuick
import Quillbar

// Shows the clipboard's keyboard shortcut; pressed, it takes a new one from the keyboard.
PressableButton {
    id: recorder

    required property QuillbarSettings settings
    required property HotKeyRecording recording
    readonly property bool isRecording: recording?.recording ?? false
    readonly property bool isShown: visible && Window.window !== null && Window.window.visible

    name: label.text
    help: recorder.isRecording ? "Press a shortcut (with ⌘/⌥/⌃/⇧). Esc to cancel." : "Click to record a new shortcut"
    focusRadius: 7
    width: row.width + 18
    height: 24
    onTapped: recorder.isRecording ? recorder.recording.stop() : recorder.recording.start()
    // Keys taken away for a control that is out of sight would seem dead.
    onIsShownChanged: if (!recorder.isShown)
        recorder.recording?.stop()
    Component.onDestruction: recorder.recording?.stop()

    HelpTip {
        target: recorder
    }

    GlassChipBackground {
        anchors.fill: parent
        cornerRadius: 7
        hovering: recorder.hovered
    }

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 6
        scale: recorder.swell

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            name: recorder.isRecording ? "record.circle" : "keyboard"
            pointSize: 11
            semibold: true
            color: Qt.rgba(1, 1, 1, 0.9)
        }

        Text {
            id: label

            anchors.verticalCenter: parent.verticalCenter
            text: recorder.isRecording ? "Press keys…" : recorder.settings.clipboardHotKeyDisplay
            textFormat: Text.PlainText
            font.family: Fonts.monospaced
            font.pixelSize: 12
            font.weight: Font.DemiBold
            color: Qt.rgba(1, 1, 1, 0.9)
            Accessible.ignored: true
        }
    }
}
