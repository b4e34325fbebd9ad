import QtQuick
import Quillbar

// What is playing, in the drawer: cover, title, place in the track, and what the player can be told.
Item {
    id: root

    required property NowPlayingModel model
    required property MediaContent content
    required property QuillbarSettings settings

    readonly property int artPosition: settings.mediaArtPosition
    readonly property bool isCorner: artPosition === Settings.MediaArtPosition.Corner || artPosition === Settings.MediaArtPosition.CornerRight
    readonly property bool isLeft: artPosition === Settings.MediaArtPosition.Left || artPosition === Settings.MediaArtPosition.Corner
    readonly property real artSide: MediaLayout.artPoints(settings.mediaArtSize)
    readonly property real padding: 20
    readonly property real topPadding: isCorner ? 6 : 4
    readonly property real bottomPadding: isCorner ? 18 : 22
    readonly property real cornerWidth: 170
    // What the cover takes from one side, with the gap.
    readonly property real taken: isCorner ? cornerWidth + 14 : padding + artSide + 16
    // The cover's colour, or the user's own.
    property color accent: Contrast.legible(model.palette ? model.palette.accent : settings.accentColor)
    property bool appeared: false

    implicitWidth: 600
    implicitHeight: topPadding + Math.max(isCorner ? 0 : artSide, column.height) + bottomPadding
    onVisibleChanged: appear()
    Component.onCompleted: appear()

    function appear() {
        if (visible) {
            appeared = true;
            content.readPosition();
        }
    }

    Behavior on accent {
        enabled: root.visible

        ColorAnimation {
            duration: 450
            easing.type: Easing.BezierSpline
            easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
        }
    }

    Binding {
        target: root.content
        property: "scale"
        value: Screen.devicePixelRatio
        restoreMode: Binding.RestoreNone
    }

    Timer {
        interval: 500
        repeat: true
        running: root.visible && root.content.isMoving
        onTriggered: root.content.readPosition()
    }

    Face {
        id: track

        isShown: root.content.hasMedia && root.appeared
        moves: root.visible

        CoverView {
            content: root.content
            hasShade: !root.isCorner
            x: root.isCorner ? (root.isLeft ? 0 : root.width - width) : root.isLeft ? root.padding : root.width - root.padding - width
            y: root.isCorner ? 0 : root.topPadding + (root.height - root.topPadding - root.bottomPadding - height) / 2
            width: root.isCorner ? root.cornerWidth : root.artSide
            height: root.isCorner ? root.height : root.artSide
            topLeftRadius: !root.isCorner ? 16 : root.isLeft ? 7 : 0
            bottomLeftRadius: !root.isCorner ? 16 : root.isLeft ? 22 : 0
            topRightRadius: !root.isCorner ? 16 : root.isLeft ? 0 : 7
            bottomRightRadius: !root.isCorner ? 16 : root.isLeft ? 0 : 22
        }

        MediaColumn {
            id: column

            x: root.isLeft ? root.taken : root.padding
            y: Math.round(root.topPadding + (root.height - root.topPadding - root.bottomPadding - height) / 2)
            width: root.width - root.taken - root.padding
            model: root.model
            content: root.content
            settings: root.settings
            accent: root.accent
        }
    }

    Face {
        isShown: !root.content.hasMedia && root.appeared
        moves: root.visible

        MediaEmptyState {
            anchors.centerIn: parent
            anchors.verticalCenterOffset: (root.topPadding - root.bottomPadding) / 2
        }
    }

    // A track, or none: one fades into the other.
    component Face: Item {
        id: face

        required property bool isShown
        // Whether it fades, or changes out of sight.
        required property bool moves
        property real presence: isShown ? 1 : 0

        anchors.fill: parent
        opacity: presence
        visible: presence > 0
        enabled: isShown

        Behavior on presence {
            enabled: face.moves

            NumberAnimation {
                duration: 300
                easing.type: Easing.BezierSpline
                easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
            }
        }
    }
}
