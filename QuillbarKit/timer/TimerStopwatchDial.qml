import QtQuick
import Quillbar

// A sweep that goes once round a minute.
ProgressRing {
    id: dial

    required property TimerService service

    // The seconds when the service last told them; the frames in between add their own.
    property real told: service.displaySeconds

    fraction: (told + (frames.running ? frames.elapsedTime : 0)) % 60 / 60
    onToldChanged: frames.reset()

    FrameAnimation {
        id: frames

        running: dial.visible && dial.service.isRunning
    }
}
