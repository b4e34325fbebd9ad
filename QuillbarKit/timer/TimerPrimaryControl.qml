import QtQuick
import Quillbar

// Starts and pauses.
PressableButton {
    id: button

    required property TimerService service
    required property color accent

    readonly property color ink: Contrast.on(accent)
    // 0 the triangle, 1 the bars.
    readonly property real bars: Math.max(0, Math.min(1, turn.value))

    name: service.isRunning ? "Pause" : "Start"
    width: 44
    height: 44
    onTapped: service.startOrPause()

    Spring {
        id: turn

        to: button.service.isRunning ? 1 : 0
        response: 0.25
        damping: 1.0
        epsilon: 0.002
    }

    GlassAccentBackground {
        anchors.fill: parent
        anchors.margins: -margin
        swell: button.swell
        accent: button.accent
    }

    Symbol {
        anchors.centerIn: parent
        // A triangle's weight lies left of its middle.
        anchors.horizontalCenterOffset: 1
        name: "play.fill"
        pointSize: 20
        color: button.ink
        opacity: 1 - button.bars
        visible: opacity > 0
        scale: (0.6 + 0.4 * opacity) * button.swell
    }

    Symbol {
        anchors.centerIn: parent
        name: "pause.fill"
        pointSize: 20
        color: button.ink
        opacity: button.bars
        visible: opacity > 0
        scale: (0.6 + 0.4 * opacity) * button.swell
    }
}
