pragma ComponentBehavior: Bound

import QtQuick

// Text in which every digit takes the same room, so that a running time does not tremble. Our faces can't be
// asked for their tabular figures; set by their ink rather than by the room they claim, the others stand as evenly.
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

        // The widest ink, and what lies between two digits.
        readonly property real digitWidth: {
            let widest = 0;
            for (const digit of "0123456789")
                widest = Math.max(widest, metrics.tightBoundingRect(digit).width);
            return Math.round((widest + 0.06 * metrics.font.pixelSize) * 2) / 2;
        }

        // A colon stands on the baseline; between digits it belongs at the middle of their height.
        readonly property real colonLift: {
            const digit = metrics.tightBoundingRect("0");
            const colon = metrics.tightBoundingRect(":");
            const lift = colon.y + colon.height / 2 - digit.y - digit.height / 2;
            return Math.round(lift * Screen.devicePixelRatio) / Screen.devicePixelRatio;
        }

        anchors.centerIn: parent

        Repeater {
            // By count, not by text: the delegates stay while the digits change.
            model: root.text.length

            Item {
                id: cell

                required property int index
                readonly property string character: root.text.charAt(index)
                readonly property bool isDigit: character >= "0" && character <= "9"
                readonly property rect ink: metrics.tightBoundingRect(character)

                width: isDigit ? row.digitWidth : glyph.implicitWidth
                height: glyph.implicitHeight
                onCharacterChanged: if (root.fadeSeconds > 0 && root.visible)
                    comeUp.restart()

                Text {
                    id: glyph

                    readonly property string character: cell.character

                    x: cell.isDigit ? (cell.width - cell.ink.width) / 2 - cell.ink.x : 0
                    y: character === ":" ? -row.colonLift : 0
                    text: character
                    font: metrics.font
                    color: root.color
                    Accessible.ignored: true
                }

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
