pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// The views of the modules, of which one is shown. A change of module fades and scales one out and the other
// in. Hidden ones stay, so that what was typed or scrolled in them is still there when they come back.
Item {
    id: stage

    required property ModuleRegistry registry
    required property QuillbarSettings settings
    required property string shownID

    Repeater {
        model: stage.registry.allIDs

        ModuleViewHost {
            id: host

            required property string modelData
            readonly property bool isShown: stage.shownID === modelData
            // Read fresh whenever it may have changed.
            property bool fills: false
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
            onIsShownChanged: readLayout()

            function readLayout() {
                fills = stage.registry.fillsAvailableHeight(modelData);
            }

            Connections {
                function onChanged() {
                    host.readLayout();
                }

                target: stage.registry
            }

            Connections {
                // With its cover in a corner the media module takes the whole drawer, and the registry tells
                // nothing of that: every view asks anew.
                function onMediaArtPositionChanged() {
                    host.readLayout();
                }

                target: stage.settings
            }

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
