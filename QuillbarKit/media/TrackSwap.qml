import QtQuick

// Which of two faces shows the track. Both hold what they show; a new track takes the one behind and brings it to
// the front while the other leaves with what it has.
Item {
    id: swap

    required property string key
    property int milliseconds: 350

    // 0 or 1.
    property int front: 0
    // How far the one in front has come, from 0 to 1; the other is as far gone.
    property real progress: 1
    property bool isReady: false

    function presence(face: int): real {
        return face === front ? progress : 1 - progress;
    }

    visible: parent.visible
    onKeyChanged: {
        if (!isReady)
            return;
        front = 1 - front;
        if (visible)
            turn.restart();
        else
            turn.complete();
    }
    Component.onCompleted: isReady = true

    NumberAnimation {
        id: turn

        target: swap
        property: "progress"
        from: 0
        to: 1
        duration: swap.milliseconds
        easing.type: Easing.BezierSpline
        easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
    }
}
