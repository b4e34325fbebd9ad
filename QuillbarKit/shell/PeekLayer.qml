import QtQuick
import Quillbar

// What one module says to the left and right of the closed notch. Display only.
Item {
    id: layer

    required property bool isOpen
    required property ModuleRegistry registry
    required property real notchWidth
    required property bool blended

    readonly property string peekID: registry.peekModuleID
    readonly property bool isShown: !isOpen && peekID !== ""
    readonly property real side: (width - notchWidth) / 2
    // The grounds of the peeks where nothing blends; invisible while there is nothing.
    readonly property Item leadingTab: leading.tab
    readonly property Item trailingTab: trailing.tab

    opacity: Math.max(0, Math.min(1, fade.value))
    visible: opacity > 0

    Spring {
        id: fade

        to: layer.isShown ? 1 : 0
        response: 0.42
        damping: 1.0
        epsilon: 0.002
    }

    PeekSlot {
        id: leading

        x: 0
        width: layer.side
        height: layer.height
        isLeading: true
        registry: layer.registry
        peekID: layer.peekID
        blended: layer.blended
    }

    PeekSlot {
        id: trailing

        x: layer.width - layer.side
        width: layer.side
        height: layer.height
        isLeading: false
        registry: layer.registry
        peekID: layer.peekID
        blended: layer.blended
    }
}
