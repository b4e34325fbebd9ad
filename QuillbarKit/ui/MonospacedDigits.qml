pragma ComponentBehavior: Bound

import QtQuick

// Text in which every digit takes the room of the widest, so that a running time does not tremble.
Item {
    id: root

    required property string text
    property alias font: metrics.font
    property color color: "white"
    // How long a changed character takes to come up; 0 shows it at once.
    property real fadeSeconds: 0

    implicitWidth: row.width
    implicitHeight: row.height

    Accessible.role: Accessible.StaticText
    Accessible.name: root.text

    FontMetrics {
        id: metrics
    }

    Row {
        id: row

        readonly property real digitWidth: {
            let widest = 0;
            for (const digit of "0123456789")
                widest = Math.max(widest, metrics.advanceWidth(digit));
            return Math.ceil(widest * 2) / 2;
        }

        anchors.centerIn: parent

        Repeater {
            // By count, not by text: the delegates stay while the digits change.
            model: root.text.length

            Text {
                id: cell

                required property int index
                readonly property string character: root.text.charAt(index)

                width: character >= "0" && character <= "9" ? row.digitWidth : implicitWidth
                horizontalAlignment: Text.AlignHCenter
                text: character
                font: metrics.font
                color: root.color
                Accessible.ignored: true
                onCharacterChanged: if (root.fadeSeconds > 0 && root.visible)
                    comeUp.restart()

                NumberAnimation {
                    id: comeUp

                    target: cell
                    property: "opacity"
                    from: 0.3
                    to: 1
                    duration: root.fadeSeconds * 1000
                    easing.type: Easing.BezierSpline
                    easing.bezierCurve: [0, 0, 0.58, 1, 1, 1]
                }
            }
        }
    }
}
