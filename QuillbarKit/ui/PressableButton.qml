import QtQuick
import Quillbar

// A control that shrinks under a press and swells under the pointer. What it holds takes its size from `swell`:
// a ground is painted at it, a symbol or text scaled by it.
Control {
    id: button

    readonly property alias swell: spring.value

    Spring {
        id: spring

        to: button.pressed ? 0.92 : button.hovered ? 1.06 : 1
        response: 0.3
        damping: 0.6
        epsilon: 0.0005
    }
}
