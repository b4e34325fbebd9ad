pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// The row of modules, with the highlight that glides to the selected one.
Item {
    id: bar

    required property PanelState panelState
    required property ModuleRegistry registry
    required property QuillbarSettings settings

    readonly property real step: 36
    readonly property var ids: registry.visibleIDs
    readonly property string markedID: registry.markedID(panelState.activeModuleID, registry.visibleIDs)
    // -1 while the selected module is not among the visible ones.
    readonly property int selectedIndex: ids.indexOf(markedID)
    property int hoveredIndex: -1
    readonly property color accent: Contrast.legible(settings.accentColor)

    function select(id) {
        panelState.activeModuleID = id;
    }

    function maySwitchOnHover(id) {
        return id !== "mirror" || settings.mirrorHoverEnabled;
    }

    implicitWidth: row.width
    implicitHeight: row.height

    Item {
        id: highlight

        property int index: -1

        function follow() {
            glide.enabled = index >= 0;
            index = bar.selectedIndex;
            glide.enabled = true;
        }

        objectName: "highlight"
        visible: index >= 0
        x: glide.value
        width: 30
        height: 28

        RoundedGround {
            anchors.fill: parent
            anchors.margins: -margin
            swell: bar.hoveredIndex === highlight.index ? 1.08 : 1
            radius: 8
            color: Qt.rgba(bar.accent.r, bar.accent.g, bar.accent.b, 0.2 * bar.accent.a)
            borderWidth: 1
            borderColor: Qt.rgba(bar.accent.r, bar.accent.g, bar.accent.b, 0.45 * bar.accent.a)

            Behavior on swell {
                NumberAnimation {
                    duration: 120
                    easing.type: Easing.BezierSpline
                    easing.bezierCurve: [0, 0, 0.58, 1, 1, 1]
                }
            }
        }

        Spring {
            id: glide

            to: highlight.index * bar.step
            response: 0.3
            damping: 0.85
        }

        Connections {
            function onSelectedIndexChanged() {
                highlight.follow();
            }

            target: bar
        }
        Component.onCompleted: follow()
    }

    Row {
        id: row

        spacing: bar.step - 30

        Repeater {
            model: bar.registry.visibleIDs

            IconBarButton {
                required property string modelData
                required property int index

                name: bar.registry.title(modelData)
                iconSystemName: bar.registry.iconSystemName(modelData)
                isSelected: bar.markedID === modelData
                accent: bar.accent
                onTapped: bar.select(modelData)
                onHoveredChanged: {
                    if (hovered)
                        bar.hoveredIndex = index;
                    else if (bar.hoveredIndex === index)
                        bar.hoveredIndex = -1;
                    if (hovered && bar.settings.moduleSwitchMode === Settings.ModuleSwitchMode.Hover && bar.maySwitchOnHover(modelData))
                        bar.select(modelData);
                }
            }
        }
    }
}
