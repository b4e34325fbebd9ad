import QtQuick
import Quillbar

// Dark glass in the outline of the notch. What lies beneath can't be blurred from here, so the pane itself
// carries the contrast: dense enough that white text reads on any wallpaper.
Item {
    id: root

    required property real topRadius
    required property real bottomRadius
    // Nothing shows through where nothing blends windows.
    required property bool translucent

    NotchShapeItem {
        anchors.fill: parent
        topRadius: root.topRadius
        bottomRadius: root.bottomRadius
        color: root.translucent ? "#d0202225" : "#202225"
        endColor: root.translucent ? "#c41a1c1f" : "#1a1c1f"
    }
}
