import QtQuick
import Quillbar

// The only content of the notch panel: the black shape that grows from the notch. The window keeps its full
// size; what is not drawn here is transparent.
Item {
    id: root

    required property PanelState panelState
    required property real notchInsetTop
    required property real notchWidth
    required property real expandedWidth
    required property real expandedHeight

    // What the window is cut down to where nothing blends it with what lies beneath.
    readonly property list<Item> drawnItems: [drawer]

    Spring {
        id: drawerWidth

        to: root.panelState.isOpen ? root.expandedWidth : root.notchWidth
        response: 0.42
        damping: 1.0
    }

    Spring {
        id: drawerHeight

        to: root.notchInsetTop + (root.panelState.isOpen ? Math.max(0, root.panelState.contentHeight) : 0)
        response: 0.42
        damping: 1.0
    }

    NotchShapeItem {
        id: drawer

        // Whole pixels on either side of the middle: edges stay sharp, the shape stays centred.
        readonly property real pixel: 1 / Screen.devicePixelRatio
        readonly property real leftEdge: Math.round((root.expandedWidth - drawerWidth.value) / 2 / pixel) * pixel

        x: leftEdge
        width: root.expandedWidth - 2 * leftEdge
        height: Math.round(drawerHeight.value / pixel) * pixel
        topRadius: 7
        bottomRadius: 22
        color: "black"
    }
}
