pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// The title of the track. A new one comes in from a little larger while the one before fades.
Item {
    id: title

    required property MediaContent content

    implicitHeight: 20

    TrackSwap {
        id: swap

        key: title.content.trackKey
    }

    Repeater {
        model: 2

        MarqueeText {
            id: face

            required property int index
            readonly property bool isFront: swap.front === index
            readonly property real presence: swap.presence(index)

            width: title.width
            height: title.height
            font.family: Fonts.text
            font.pixelSize: 15
            font.weight: Font.DemiBold
            color: "white"
            opacity: presence
            scale: isFront ? 1.02 - 0.02 * presence : 1
            transformOrigin: Item.Left
            visible: presence > 0
            Accessible.ignored: !isFront

            Binding on text {
                when: face.isFront
                value: title.content.title
                restoreMode: Binding.RestoreNone
            }
        }
    }
}
