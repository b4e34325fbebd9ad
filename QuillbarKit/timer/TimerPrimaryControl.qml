import QtQuick
import Quillbar

// Starts and pauses.
PressableButton {
    id: button

    required property TimerService service
    required property color accent

    name: service.isRunning ? "Pause" : "Start"
    width: 44
    height: 44
    onTapped: service.startOrPause()

    Rectangle {
        anchors.fill: parent
        radius: width / 2
        color: button.accent

        Behavior on color {
            ColorAnimation {
                duration: 150
            }
        }
    }

    Symbol {
        anchors.centerIn: parent
        // A triangle's weight lies left of its middle.
        anchors.horizontalCenterOffset: button.service.isRunning ? 0 : 1
        name: button.service.isRunning ? "pause.fill" : "play.fill"
        pointSize: 20
        // On a light accent white would vanish.
        color: 0.299 * button.accent.r + 0.587 * button.accent.g + 0.114 * button.accent.b > 0.7 ? "black" : "white"
    }
}
