import QtQuick
import Quillbar

// Behind a control that stands for the accent: filled while it is enabled, a faint pane otherwise.
RoundedGround {
    id: pane

    property color accent: "white"

    color: enabled ? accent : Qt.rgba(1, 1, 1, 0.08)
    borderWidth: 0.5
    borderColor: Qt.rgba(1, 1, 1, enabled ? 0.22 : 0.08)

    Behavior on color {
        ColorAnimation {
            duration: 150
        }
    }
}
