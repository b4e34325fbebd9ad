pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// The three faces of the timer, with a capsule that slides to the one shown.
Rectangle {
    id: switcher

    required property TimerService service
    required property color accent

    implicitWidth: row.width
    implicitHeight: row.height
    radius: height / 2
    color: Qt.rgba(1, 1, 1, 0.05)
    border.width: 1 / Screen.devicePixelRatio
    border.color: Qt.rgba(1, 1, 1, 0.06)

    Rectangle {
        id: capsule

        property Item selected: null

        x: slide.value
        width: stretch.value
        height: switcher.height
        radius: height / 2
        color: Qt.rgba(switcher.accent.r, switcher.accent.g, switcher.accent.b, 0.32 * switcher.accent.a)

        Spring {
            id: slide

            to: capsule.selected ? capsule.selected.x : 0
            response: 0.4
            damping: 0.82
        }

        Spring {
            id: stretch

            to: capsule.selected ? capsule.selected.width : 0
            response: 0.4
            damping: 0.82
        }
    }

    Row {
        id: row

        Repeater {
            model: TimerTexts.modes()

            Control {
                id: segment

                required property int modelData
                readonly property bool isSelected: switcher.service.mode === modelData

                name: TimerTexts.title(modelData)
                checkable: true
                checked: isSelected
                width: label.implicitWidth + 28
                height: label.implicitHeight + 12
                onTapped: switcher.service.setMode(modelData)
                onIsSelectedChanged: if (isSelected)
                    capsule.selected = segment
                Component.onCompleted: if (isSelected)
                    capsule.selected = segment

                Text {
                    id: label

                    anchors.centerIn: parent
                    text: segment.name
                    font.family: Fonts.text
                    font.pixelSize: 11
                    font.weight: Font.Medium
                    color: Qt.rgba(1, 1, 1, segment.isSelected ? 1 : 0.45)
                    Accessible.ignored: true
                }
            }
        }
    }
}
