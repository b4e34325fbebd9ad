pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// The views of the modules, of which one is shown. A change of module fades and scales one out and the other
// in.
Item {
    id: stage

    required property ModuleRegistry registry
    required property string shownID

    Repeater {
        model: stage.registry.visibleIDs

        ModuleViewHost {
            id: host

            required property string modelData
            readonly property bool isShown: stage.shownID === modelData
            readonly property bool fills: (stage.registry.peekModuleID, stage.registry.fillsAvailableHeight(modelData))
            // 0 gone, 1 in place.
            property real presence: isShown ? 1 : 0

            x: fills ? 0 : (stage.width - width) / 2
            y: fills ? 0 : (stage.height - height) / 2
            width: fills ? stage.width : implicitWidth
            height: fills ? stage.height : implicitHeight
            wanted: isShown
            view: stage.registry.expandedView(modelData)
            opacity: presence
            scale: 0.97 + 0.03 * presence
            visible: presence > 0
            enabled: isShown

            Behavior on presence {
                enabled: stage.visible

                NumberAnimation {
                    duration: 220
                    easing.type: Easing.BezierSpline
                    easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
                }
            }
        }
    }
}
