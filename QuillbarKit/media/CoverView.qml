pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// The cover in the drawer. A click on it brings the program that plays to the front.
Control {
    id: cover

    required property MediaContent content
    property real topLeftRadius: 16
    property real topRightRadius: 16
    property real bottomRightRadius: 16
    property real bottomLeftRadius: 16
    property bool hasShade: true

    name: content.sourceName === "" ? "Open the player" : "Open " + content.sourceName
    activeFocusOnTab: content.isSourceRunning
    focusRadius: topLeftRadius
    Accessible.ignored: !content.isSourceRunning
    onTapped: content.activateSource()
    onHoveredChanged: if (hovered)
        content.lookForSource()
    onVisibleChanged: if (visible)
        content.lookForSource()

    TrackSwap {
        id: swap

        objectName: "swap"
        key: cover.content.coverKey
    }

    CoverShade {
        anchors.fill: parent
        anchors.margins: -reach
        visible: cover.hasShade
    }

    component Outline: CoverImage {
        anchors.fill: parent
        topLeftRadius: cover.topLeftRadius
        topRightRadius: cover.topRightRadius
        bottomRightRadius: cover.bottomRightRadius
        bottomLeftRadius: cover.bottomLeftRadius
    }

    Repeater {
        id: faces

        model: 2

        Outline {
            id: face

            required property int index
            readonly property real presence: swap.presence(index)
            // Two of the same picture that fade into one another would show what is behind them.
            readonly property CoverImage inFront: faces.itemAt(swap.front) as CoverImage
            readonly property bool isCovered: swap.front !== index && exists && inFront !== null && inFront.imageKey === imageKey

            strokeWidth: 0.5
            groundTop: Qt.rgba(1, 1, 1, 0.12)
            groundBottom: Qt.rgba(1, 1, 1, 0.04)
            opacity: isCovered ? 1 : presence
            scale: 0.94 + 0.06 * presence
            visible: presence > 0

            Binding on image {
                when: swap.front === face.index
                value: cover.content.cover
                restoreMode: Binding.RestoreNone
            }

            Symbol {
                anchors.centerIn: parent
                visible: !face.exists
                name: "music.note"
                pointSize: 30
                color: Qt.rgba(1, 1, 1, 0.35)
            }
        }
    }

    Outline {
        objectName: "hover"
        groundTop: Qt.rgba(0, 0, 0, 0.22)
        groundBottom: Qt.rgba(0, 0, 0, 0.22)
        opacity: cover.hovered && cover.content.isSourceRunning ? 1 : 0
        visible: opacity > 0

        Symbol {
            anchors.centerIn: parent
            name: "arrow.up.forward.app.fill"
            pointSize: 18
            semibold: true
            color: Qt.rgba(1, 1, 1, 0.9)
        }

        Behavior on opacity {
            NumberAnimation {
                duration: 180
                easing.type: Easing.BezierSpline
                easing.bezierCurve: [0, 0, 0.58, 1, 1, 1]
            }
        }
    }
}
