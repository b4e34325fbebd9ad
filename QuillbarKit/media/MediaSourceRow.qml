pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// Who made the track and what plays it; at the end the bars and the switch of the lyrics.
Item {
    id: row

    required property MediaContent content
    required property QuillbarSettings settings
    required property color accent

    implicitHeight: 22

    TrackSwap {
        id: swap

        key: row.content.trackKey
    }

    Repeater {
        model: 2

        Item {
            id: face

            required property int index
            readonly property bool isFront: swap.front === index
            property string artist

            width: ending.x - 10
            height: row.height
            opacity: swap.presence(index)
            visible: opacity > 0

            Binding on artist {
                when: face.isFront
                value: row.content.artist
                restoreMode: Binding.RestoreNone
            }

            CoverImage {
                id: icon

                anchors.verticalCenter: parent.verticalCenter
                width: 14
                height: 14
                visible: exists

                Binding on image {
                    when: face.isFront
                    value: row.content.sourceIcon
                    restoreMode: Binding.RestoreNone
                }
            }

            Text {
                x: icon.exists ? icon.width + 3 : 0
                width: parent.width - x
                anchors.verticalCenter: parent.verticalCenter
                elide: Text.ElideRight
                maximumLineCount: 1
                // Beside its icon, whichever way it is read.
                horizontalAlignment: Text.AlignLeft
                text: face.artist
                textFormat: Text.PlainText
                font.family: Fonts.text
                font.pixelSize: 12
                color: Qt.rgba(1, 1, 1, 0.62)
                Accessible.role: Accessible.StaticText
                Accessible.name: text
                Accessible.ignored: !face.isFront || text === ""
            }
        }
    }

    Row {
        id: ending

        anchors.right: parent.right
        height: parent.height
        spacing: 10

        Waveform {
            anchors.verticalCenter: parent.verticalCenter
            isPlaying: row.content.isPlaying
        }

        MediaToggle {
            width: 22
            height: 22
            symbol: "quote.bubble.fill"
            pointSize: 11
            name: help
            help: active ? "Hide synced lyrics" : "Show synced lyrics"
            active: row.settings.lyricsEnabled
            accent: row.accent
            activeGround: 0.16
            inactiveInk: 0.4
            onTapped: row.settings.lyricsEnabled = !row.settings.lyricsEnabled
        }
    }
}
