pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// One side of the notch: the peek view of the module that peeks, eight points from the notch.
Item {
    id: slot

    required property bool isLeading
    required property ModuleRegistry registry
    required property string peekID
    // Whether transparent parts of the window show what lies beneath.
    required property bool blended

    // The last one stays while it fades out.
    property string heldID: ""
    property Item shownItem: null
    // What a window that can't be transparent is cut down to.
    readonly property alias tab: tab
    readonly property bool hasPeek: shownItem !== null && shownItem.width > 0

    onPeekIDChanged: {
        if (peekID !== "")
            heldID = peekID;
    }
    Component.onCompleted: heldID = peekID

    PeekShade {
        x: slot.hasPeek ? slot.shownItem.x - reach : 0
        y: slot.hasPeek ? slot.shownItem.y - reach : 0
        width: slot.hasPeek ? slot.shownItem.width + 2 * reach : 0
        height: slot.hasPeek ? slot.shownItem.height + 2 * reach : 0
        visible: slot.hasPeek && slot.blended
    }

    // Nothing fades out there: a small notch of its own.
    NotchShapeItem {
        id: tab

        readonly property real padding: 5

        x: slot.hasPeek ? slot.shownItem.x - padding : 0
        width: slot.hasPeek ? slot.shownItem.width + 2 * padding : 0
        height: slot.height
        topRadius: 0
        bottomRadius: 9
        visible: slot.hasPeek && !slot.blended
    }

    Repeater {
        model: slot.registry.allIDs

        ModuleViewHost {
            id: host

            required property string modelData
            readonly property bool isHeld: slot.heldID === modelData

            x: slot.isLeading ? slot.width - width - 8 : 8
            y: (slot.height - height) / 2
            wanted: isHeld
            visible: isHeld
            view: slot.isLeading ? slot.registry.peekLeading(modelData) : slot.registry.peekTrailing(modelData)
            onIsHeldChanged: publish()
            onLoaded: publish()

            function publish() {
                if (isHeld)
                    slot.shownItem = item ? host : null;
            }
        }
    }
}
