import QtQuick
import Quillbar

// Bars that swing while something plays and sink to a flat line when it pauses.
WaveformBars {
    id: bars

    required property bool isPlaying
    // How many drawn steps a swing one way takes; 0: as many as the display shows frames. Beside the closed notch the
    // bars show all day: there, as few as the eye takes for a movement. A timer counts whole milliseconds: of these
    // steps a swing has a whole number.
    property int steps: 0
    readonly property int swingMilliseconds: 450

    liveliness: isPlaying ? 1 : 0

    Behavior on liveliness {
        enabled: bars.visible

        NumberAnimation {
            duration: 350
            easing.type: Easing.BezierSpline
            easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
        }
    }

    SequentialAnimation on phase {
        objectName: "swing"
        running: bars.visible && bars.isPlaying && bars.steps === 0
        loops: Animation.Infinite

        NumberAnimation {
            to: 1
            duration: bars.swingMilliseconds
            easing.type: Easing.BezierSpline
            easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
        }

        NumberAnimation {
            to: 0
            duration: bars.swingMilliseconds
            easing.type: Easing.BezierSpline
            easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
        }
    }

    Timer {
        property int step: 0

        objectName: "steps"
        interval: bars.swingMilliseconds / Math.max(1, bars.steps)
        repeat: true
        running: bars.visible && bars.isPlaying && bars.steps > 0
        onRunningChanged: step = 0
        onTriggered: {
            step = (step + 1) % (2 * bars.steps);
            // There, and back again.
            const way = step <= bars.steps ? step / bars.steps : 2 - step / bars.steps;
            bars.phase = Ease.inOut(way);
        }
    }
}
