import QtQuick
import Quillbar

// The colour that the timer shows itself in: the accent, or a green while a pomodoro rests.
QtObject {
    required property TimerService service
    required property QuillbarSettings settings

    readonly property color breakTint: Qt.rgba(0.35, 0.78, 0.62, 1)
    readonly property bool isResting: service.mode === TimerMode.Pomodoro && service.phase === PomodoroPhase.Rest
    readonly property color active: isResting ? breakTint : Contrast.legible(settings.accentColor)
}
