import QtQuick
import Quillbar

// What the player can be told, in one centred row.
Row {
    id: row

    required property NowPlayingModel model
    required property MediaContent content
    required property color accent

    readonly property var repeatNames: ["Repeat off", "Repeat all", "Repeat one"]

    function nextRepeat() {
        if (content.repeatMode === RepeatMode.Off)
            return RepeatMode.All;
        return content.repeatMode === RepeatMode.All ? RepeatMode.One : RepeatMode.Off;
    }

    spacing: 14

    MediaToggle {
        anchors.verticalCenter: parent.verticalCenter
        visible: row.content.canControlShuffleRepeat
        symbol: "shuffle"
        name: "Shuffle"
        help: active ? "Shuffle is on" : "Shuffle is off"
        active: row.content.shuffle
        accent: row.accent
        onTapped: row.model.setShuffle(!row.content.shuffle)
    }

    MediaTransportButton {
        anchors.verticalCenter: parent.verticalCenter
        symbol: "backward.fill"
        name: "Previous"
        onTapped: row.model.previous()
    }

    MediaPlayButton {
        isPlaying: row.content.isPlaying
        accent: row.accent
        onTapped: row.model.togglePlayPause()
    }

    MediaTransportButton {
        anchors.verticalCenter: parent.verticalCenter
        symbol: "forward.fill"
        name: "Next"
        onTapped: row.model.next()
    }

    MediaToggle {
        anchors.verticalCenter: parent.verticalCenter
        visible: row.content.canControlShuffleRepeat
        symbol: row.content.repeatMode === RepeatMode.One ? "repeat.1" : "repeat"
        name: row.repeatNames[row.content.repeatMode]
        help: name
        active: row.content.repeatMode !== RepeatMode.Off
        accent: row.accent
        onTapped: row.model.setRepeat(row.nextRepeat())
    }

    MediaHeart {
        anchors.verticalCenter: parent.verticalCenter
        visible: row.content.canLove
        loved: row.content.isLoved
        onTapped: row.model.setLoved(!row.content.isLoved)
    }
}
