import QtQuick
import Quillbar

// Which phase a pomodoro is in, and how many rounds are done.
Row {
    id: badge

    required property TimerService service
    required property color accent

    spacing: 7

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        width: 7
        height: 7
        radius: 3.5
        color: badge.accent
    }

    Text {
        anchors.verticalCenter: parent.verticalCenter
        text: badge.service.phase === PomodoroPhase.Focus ? "Focus" : "Break"
        font.family: Fonts.text
        font.pixelSize: 12
        font.weight: Font.Medium
        color: "white"
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    MonospacedDigits {
        anchors.verticalCenter: parent.verticalCenter
        text: TimerTexts.rounds(badge.service.completedFocusRounds)
        fadeSeconds: 0.2
        font.family: Fonts.text
        font.pixelSize: 12
        color: Qt.rgba(1, 1, 1, 0.55)
    }
}
