pragma ComponentBehavior: Bound

import QtQuick

// A soft dark ground for a peek: it stands on whatever the desktop shows there, a white window as well.
Item {
    id: shade

    Repeater {
        // Each a little larger than the one above it; in the middle they add up to 0.7.
        model: 12

        Rectangle {
            required property int index

            x: 2 - index
            y: 2 - index / 2
            width: shade.width - 2 * x
            height: shade.height - 2 * y
            radius: height / 2
            color: Qt.rgba(0, 0, 0, 0.095)
        }
    }
}
