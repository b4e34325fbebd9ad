import QtQuick
import Quillbar

// Tells the help of a control once the pointer has rested on it for a while; above everything in its window.
Rectangle {
    id: tip

    required property Control target
    readonly property bool wanted: target.hovered && target.visible && target.help !== ""

    function place() {
        const below = target.mapToItem(tip.parent, 0, target.height + 5);
        tip.x = Math.max(6, Math.min(below.x + (target.width - tip.width) / 2, tip.parent.width - tip.width - 6));
        tip.y = below.y + tip.height > tip.parent.height - 4 ? below.y - target.height - tip.height - 10 : below.y;
        tip.visible = true;
    }

    parent: target.Window.contentItem
    visible: false
    z: 20
    width: text.width + 14
    height: text.height + 8
    radius: 6
    color: "#f43a3c41"
    border.width: 1
    border.color: Qt.rgba(1, 1, 1, 0.14)
    onWantedChanged: {
        if (wanted) {
            wait.restart();
        } else {
            wait.stop();
            tip.visible = false;
        }
    }

    PauseAnimation {
        id: wait

        duration: 700
        onFinished: if (tip.wanted && tip.parent)
            tip.place()
    }

    Text {
        id: text

        x: 7
        y: 4
        width: Math.min(implicitWidth, 250)
        wrapMode: Text.Wrap
        text: tip.target.help
        textFormat: Text.PlainText
        font.family: Fonts.text
        font.pixelSize: 11
        color: Qt.rgba(1, 1, 1, 0.9)
        Accessible.ignored: true
    }
}
