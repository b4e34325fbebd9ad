import QtQuick

// A soft dark ground for a peek: it stands on whatever the desktop shows there, a white window as well.
Item {
    id: shade

    Repeater {
        // Each a point larger than the one above it; in the middle they add up to 0.7.
        model: 6

        Rectangle {
            required property int index

            x: 2 - 2 * index
            y: 2 - index
            width: shade.width - 2 * x
            height: shade.height - 2 * y
            radius: height / 2
            color: Qt.rgba(0, 0, 0, 0.182)
        }
    }
}
