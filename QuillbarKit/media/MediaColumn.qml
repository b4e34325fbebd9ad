import QtQuick
import Quillbar

// Everything but the cover.
Column {
    id: column

    required property NowPlayingModel model
    required property MediaContent content
    required property QuillbarSettings settings
    required property color accent

    spacing: 4

    MediaTitle {
        width: parent.width
        content: column.content
    }

    MediaSourceRow {
        width: parent.width
        content: column.content
        settings: column.settings
        accent: column.accent
    }

    MediaScrubber {
        width: parent.width
        model: column.model
        content: column.content
        accent: column.accent
    }

    MediaControls {
        anchors.horizontalCenter: parent.horizontalCenter
        model: column.model
        content: column.content
        accent: column.accent
    }
}
