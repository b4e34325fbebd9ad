pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// One side of the notch: the peek view of the module that peeks, eight points from the notch.
Item {
    id: slot

    required property bool isLeading
    required property ModuleRegistry registry
    required property string peekID

    // The last one stays while it fades out.
    property string heldID: ""
    property Item shownItem: null

    onPeekIDChanged: {
        if (peekID !== "")
            heldID = peekID;
    }
    Component.onCompleted: heldID = peekID

    PeekShade {
        x: slot.shownItem ? slot.shownItem.x : 0
        y: slot.shownItem ? slot.shownItem.y : 0
        width: slot.shownItem ? slot.shownItem.width : 0
        height: slot.shownItem ? slot.shownItem.height : 0
        visible: slot.shownItem !== null
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
