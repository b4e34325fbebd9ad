import QtQuick
import Quillbar

// Behind a small control: a faint pane that lights up under the pointer.
RoundedGround {
    id: chip

    property real cornerRadius: 8
    property bool hovering: false
    property color tint: "white"

    radius: cornerRadius
    color: Qt.rgba(tint.r, tint.g, tint.b, (hovering ? 0.2 : 0.12) * tint.a)
    borderWidth: 0.5
    borderColor: Qt.rgba(tint.r, tint.g, tint.b, (hovering ? 0.24 : 0.16) * tint.a)

    Behavior on color {
        ColorAnimation {
            duration: 120
        }
    }
}
