import QtQuick
import Quillbar

// One module in the icon bar. The highlight of the selected one belongs to the bar, since it glides.
Control {
    id: button

    required property string iconSystemName
    required property bool isSelected
    required property color accent

    // 0 unselected, 1 selected.
    readonly property alias selection: selectionSpring.value
    property real hovering: hovered ? 1 : 0

    width: 30
    height: 28
    focusRadius: 8
    checkable: true
    checked: isSelected
    scale: 1 + 0.08 * hovering

    Behavior on hovering {
        NumberAnimation {
            duration: 120
            easing.type: Easing.BezierSpline
            easing.bezierCurve: [0, 0, 0.58, 1, 1, 1]
        }
    }

    Spring {
        id: selectionSpring

        to: button.isSelected ? 1 : 0
        response: 0.3
        damping: 0.85
        epsilon: 0.002
    }

    Symbol {
        readonly property real white: 0.45 + 0.25 * button.hovering
        readonly property real mix: Math.max(0, Math.min(1, button.selection))

        anchors.centerIn: parent
        name: button.iconSystemName
        pointSize: 13
        semibold: true
        color: Qt.rgba(1 + (button.accent.r - 1) * mix, 1 + (button.accent.g - 1) * mix, 1 + (button.accent.b - 1) * mix, white + (button.accent.a - white) * mix)
    }
}
