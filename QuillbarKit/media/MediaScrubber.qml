import QtQuick
import Quillbar

// Where in the track the player is, and the way to another place in it.
Item {
    id: scrubber

    required property NowPlayingModel model
    required property MediaContent content
    required property color accent

    property bool isDragging: false
    // Of the track, from 0 to 1, while dragging and until the player has followed.
    property real dragFraction: 0
    readonly property bool isHeld: isDragging || landing.running

    readonly property real duration: Math.max(0.001, content.duration)
    readonly property real fraction: isHeld ? dragFraction : held(content.position / duration)
    readonly property real shownSeconds: isHeld ? dragFraction * duration : content.position
    readonly property string elapsedText: content.mmss(shownSeconds)
    readonly property string remainingText: "-" + content.mmss(Math.max(0, duration - shownSeconds))
    // One press of an arrow key.
    readonly property real step: 5

    // For assistive software, which writes it as well.
    property real value: 0
    readonly property real minimumValue: 0
    readonly property real maximumValue: content.duration
    readonly property real stepSize: step

    function held(part: real): real {
        return Math.max(0, Math.min(1, part));
    }

    function seek(seconds: real) {
        if (content.duration > 0)
            model.seek(Math.max(0, Math.min(content.duration, seconds)));
    }

    function drag(x: real) {
        isDragging = true;
        dragFraction = held(x / track.width);
    }

    implicitHeight: 22 + times.height
    activeFocusOnTab: true
    onShownSecondsChanged: value = shownSeconds
    onValueChanged: if (value !== shownSeconds)
        seek(value)

    Accessible.role: Accessible.Slider
    Accessible.name: "Position"
    Accessible.description: scrubber.content.duration > 0 ? scrubber.elapsedText + " of " + scrubber.content.mmss(scrubber.content.duration) : scrubber.elapsedText
    Accessible.focusable: true
    Accessible.focused: scrubber.activeFocus
    Accessible.onIncreaseAction: scrubber.seek(scrubber.content.position + scrubber.step)
    Accessible.onDecreaseAction: scrubber.seek(scrubber.content.position - scrubber.step)
    Keys.onRightPressed: scrubber.seek(scrubber.content.position + scrubber.step)
    Keys.onLeftPressed: scrubber.seek(scrubber.content.position - scrubber.step)

    // What is shown would jump back to the old place otherwise, for the player takes a moment to follow.
    Timer {
        id: landing

        interval: 500
    }

    Connections {
        target: scrubber.content
        function onPositionChanged() {
            if (Math.abs(scrubber.content.position - scrubber.dragFraction * scrubber.duration) < 1)
                landing.stop();
        }
        function onCoverKeyChanged() {
            landing.stop();
        }
    }

    Item {
        id: track

        width: parent.width
        height: 22

        ScrubberTrack {
            anchors.fill: parent
            accent: scrubber.accent
            fraction: fill.value
            thickness: 5 + 2 * grip.value
        }

        // At rest the fill follows the position; under the pointer it is where the pointer is.
        Item {
            id: fill

            property real value: scrubber.fraction

            Behavior on value {
                enabled: scrubber.visible && !scrubber.isHeld

                NumberAnimation {
                    duration: 450
                    easing.type: Easing.BezierSpline
                    easing.bezierCurve: [0, 0, 0.58, 1, 1, 1]
                }
            }
        }

        Spring {
            id: grip

            to: scrubber.isDragging ? 1 : 0
            response: 0.28
            damping: 0.62
            epsilon: 0.01
        }

        Spring {
            id: place

            to: scrubber.fraction * track.width
            response: 0.28
            damping: 0.62
            epsilon: 0.1
            enabled: scrubber.visible && track.width > 0
        }

        ScrubberKnob {
            readonly property real pixel: 1 / Screen.devicePixelRatio
            readonly property real middle: Math.max(diameter / 2, Math.min(track.width - diameter / 2, place.value))

            // Half pixels: what moves less is not drawn anew.
            x: Math.round(2 * (middle - width / 2) / pixel) * pixel / 2
            width: 25
            height: 25
            anchors.verticalCenter: parent.verticalCenter
            diameter: Math.round((11 + 4 * grip.value) * 4) / 4
        }

        MouseArea {
            anchors.fill: parent
            preventStealing: true
            onPressed: event => scrubber.drag(event.x)
            onPositionChanged: event => {
                if (pressed)
                    scrubber.drag(event.x);
            }
            onReleased: event => {
                scrubber.drag(event.x);
                scrubber.seek(scrubber.dragFraction * scrubber.content.duration);
                if (scrubber.content.duration > 0)
                    landing.restart();
                scrubber.isDragging = false;
            }
            onCanceled: scrubber.isDragging = false
        }

        Rectangle {
            anchors.fill: parent
            anchors.leftMargin: -4
            anchors.rightMargin: -4
            visible: scrubber.activeFocus
            radius: height / 2
            color: "transparent"
            border.width: 1.5
            border.color: "#ccffffff"
        }
    }

    Item {
        id: times

        anchors.top: track.bottom
        anchors.topMargin: -2
        width: parent.width
        height: elapsed.height

        Time {
            id: elapsed

            text: scrubber.elapsedText
        }

        Time {
            anchors.right: parent.right
            text: scrubber.remainingText
        }
    }

    component Time: MonospacedDigits {
        font.family: Fonts.text
        font.pixelSize: 10
        font.weight: Font.DemiBold
        color: Qt.rgba(1, 1, 1, 0.5)
    }
}
