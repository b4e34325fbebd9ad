import QtQuick
import Quillbar

// The run beside the closed notch: the symbol on the leading side, the time on the trailing one.
Item {
    id: root

    required property TimerService service
    required property QuillbarSettings settings
    required property string side

    implicitWidth: side === "leading" ? 22 : Math.max(44, time.implicitWidth)
    implicitHeight: 18

    TimerAccent {
        id: accent

        service: root.service
        settings: root.settings
    }

    Symbol {
        anchors.centerIn: parent
        visible: root.side === "leading"
        name: "timer"
        pointSize: 12
        semibold: true
        color: accent.active
    }

    MonospacedDigits {
        id: time

        anchors.centerIn: parent
        visible: root.side === "trailing"
        text: TimerTexts.mmss(root.service.displaySeconds)
        font.family: Fonts.text
        font.pixelSize: 12
        font.weight: Font.DemiBold
    }
}
