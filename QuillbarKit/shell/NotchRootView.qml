import QtQuick
import Quillbar

// The only content of the notch panel: the shape that grows from the notch, the peeks beside it while it is
// closed, the icon bar and the module shown. The window keeps its full size; what is not drawn here is
// transparent.
Item {
    id: root

    required property PanelState panelState
    required property ModuleRegistry registry
    required property QuillbarSettings settings
    required property NowPlayingModel nowPlaying
    // Whether transparent parts of the window show what lies beneath.
    required property bool blended
    required property real notchInsetTop
    required property real notchWidth
    required property real expandedWidth
    required property real expandedHeight

    readonly property bool isOpen: panelState.isOpen
    readonly property bool isGlass: settings.notchGlass && isOpen
    readonly property real contentBottom: notchInsetTop + Math.max(0, panelState.contentHeight)
    readonly property string shownID: registry.shownID(panelState.activeModuleID, registry.visibleIDs)
    // One device pixel.
    readonly property real pixel: 1 / Screen.devicePixelRatio

    // What the window is cut down to where nothing blends it with what lies beneath.
    readonly property list<Item> drawnItems: [drawer, peeks.leadingTab, peeks.trailingTab]

    component ContentFade: NumberAnimation {
        property: "opacity"
        duration: 180
        easing.type: Easing.BezierSpline
        easing.bezierCurve: [0, 0, 0.58, 1, 1, 1]
    }

    PeekLayer {
        id: peeks

        width: root.expandedWidth
        height: root.notchInsetTop
        isOpen: root.isOpen
        registry: root.registry
        notchWidth: root.notchWidth
        blended: root.blended
    }

    Spring {
        id: drawerWidth

        to: root.isOpen ? root.expandedWidth : root.notchWidth
        response: 0.42
        damping: 1.0
    }

    Spring {
        id: drawerHeight

        to: root.isOpen ? root.contentBottom : root.notchInsetTop
        response: 0.42
        damping: 1.0
    }

    NotchShapeItem {
        id: drawer

        // Whole pixels on either side of the middle: edges stay sharp, the shape stays centred.
        readonly property real leftEdge: Math.round((root.expandedWidth - drawerWidth.value) / 2 / root.pixel) * root.pixel

        x: leftEdge
        width: root.expandedWidth - 2 * leftEdge
        height: Math.round(drawerHeight.value / root.pixel) * root.pixel
        topRadius: 7
        bottomRadius: 22
        color: root.isGlass ? "transparent" : "black"
        clip: true

        GlassBackground {
            anchors.fill: parent
            visible: root.isGlass
            topRadius: drawer.topRadius
            bottomRadius: drawer.bottomRadius
            translucent: root.blended
        }

        NotchShapeItem {
            anchors.fill: parent
            visible: root.isGlass
            topRadius: drawer.topRadius
            bottomRadius: drawer.bottomRadius
            color: "#40000000"
        }

        PaletteGlow {
            id: glow

            readonly property var palette: root.nowPlaying.palette
            property real presence: root.isOpen && root.shownID === "media" && palette !== undefined ? 1 : 0
            // The last one stays while it fades out.
            property color accent: "transparent"

            objectName: "glow"
            anchors.fill: parent
            topRadius: drawer.topRadius
            bottomRadius: drawer.bottomRadius
            color: accent
            opacity: presence
            visible: presence > 0
            onPaletteChanged: {
                if (palette !== undefined)
                    accent = palette.accent;
            }

            Behavior on presence {
                NumberAnimation {
                    duration: 220
                    easing.type: Easing.BezierSpline
                    easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
                }
            }

            Behavior on accent {
                enabled: glow.visible

                ColorAnimation {
                    duration: 450
                    easing.type: Easing.BezierSpline
                    easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
                }
            }
        }

        Item {
            id: content

            objectName: "content"
            x: -drawer.x
            width: root.expandedWidth
            height: root.contentBottom
            opacity: 0
            // Out of sight is out of reach, for a screen reader too.
            visible: opacity > 0

            states: State {
                name: "open"
                when: root.isOpen

                PropertyChanges {
                    content.opacity: 1
                }
            }

            transitions: [
                Transition {
                    to: "open"

                    SequentialAnimation {
                        // The shape grows first.
                        PauseAnimation {
                            duration: 120
                        }
                        ContentFade {}
                    }
                },
                Transition {
                    from: "open"

                    ContentFade {}
                }
            ]

            IconBar {
                id: iconBar

                y: root.notchInsetTop + 18
                anchors.horizontalCenter: parent.horizontalCenter
                panelState: root.panelState
                registry: root.registry
                settings: root.settings
            }

            ModuleStage {
                anchors.top: iconBar.bottom
                anchors.topMargin: 4
                anchors.bottom: parent.bottom
                width: parent.width
                registry: root.registry
                settings: root.settings
                shownID: root.shownID
            }
        }

        NotchFrameItem {
            // It comes and goes with the panel, and in its own time when the user switches it.
            property real switchedOn: root.settings.notchFrameEnabled ? 1 : 0

            anchors.fill: parent
            visible: opacity > 0
            opacity: switchedOn * Math.max(0, Math.min(1, openness.value))
            topRadius: drawer.topRadius
            bottomRadius: drawer.bottomRadius
            color: root.settings.accentColor

            Behavior on switchedOn {
                NumberAnimation {
                    duration: 250
                    easing.type: Easing.BezierSpline
                    easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
                }
            }

            Spring {
                id: openness

                to: root.isOpen ? 1 : 0
                response: 0.42
                damping: 1.0
                epsilon: 0.002
            }
        }
    }

    Connections {
        // A module that is no longer enabled can't stay the selected one.
        function onChoiceChanged() {
            const shown = root.registry.shownID(root.panelState.activeModuleID, root.registry.visibleIDs);
            if (shown !== "" && shown !== root.panelState.activeModuleID)
                root.panelState.activeModuleID = shown;
        }

        target: root.registry
    }
}
