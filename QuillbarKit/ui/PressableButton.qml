import QtQuick
import Quillbar

// A control that shrinks under a press and swells under the pointer.
Control {
    id: button

    Spring {
        id: swell

        to: button.pressed ? 0.92 : button.hovered ? 1.06 : 1
        response: 0.3
        damping: 0.6
        epsilon: 0.0005
    }

    scale: swell.value
}
