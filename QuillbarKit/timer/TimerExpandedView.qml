pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// The timer in the drawer: its three faces, each a ring with the time in its middle beside a few controls.
Item {
    id: root

    required property TimerService service
    required property QuillbarSettings settings

    readonly property real ringSize: 104
    readonly property real ringWidth: 7
    readonly property int mode: service.mode
    readonly property int phaseMinutes: service.phase === PomodoroPhase.Focus ? service.workMinutes : service.breakMinutes
    readonly property real fullSeconds: mode === TimerMode.Pomodoro ? Math.max(1, phaseMinutes) * 60 : service.presetSeconds

    implicitWidth: 600
    implicitHeight: 10 + switcher.height + 10 + ringSize + 14

    TimerAccent {
        id: accent

        service: root.service
        settings: root.settings
    }

    TimerModeSwitcher {
        id: switcher

        y: 10
        anchors.horizontalCenter: parent.horizontalCenter
        service: root.service
        accent: accent.active
    }

    Row {
        id: face

        anchors.top: switcher.bottom
        anchors.topMargin: 10
        anchors.horizontalCenter: parent.horizontalCenter
        height: root.ringSize
        spacing: 28

        Item {
            width: root.ringSize
            height: root.ringSize

            ProgressRing {
                anchors.fill: parent
                visible: root.mode !== TimerMode.Stopwatch
                ringWidth: root.ringWidth
                tint: accent.active
                fraction: root.fullSeconds > 0 ? root.service.remaining / root.fullSeconds : 0
            }

            TimerStopwatchDial {
                anchors.fill: parent
                visible: root.mode === TimerMode.Stopwatch
                ringWidth: root.ringWidth
                tint: accent.active
                service: root.service
            }

            MonospacedDigits {
                anchors.centerIn: parent
                // An hour or two still fits between the ring's sides.
                scale: Math.min(1, (root.ringSize - 2 * root.ringWidth - 10) / implicitWidth)
                fadeSeconds: 0.2
                text: TimerTexts.mmss(root.service.displaySeconds)
                font.family: Fonts.rounded
                font.pixelSize: 28
                font.weight: Font.DemiBold
            }
        }

        Column {
            anchors.verticalCenter: parent.verticalCenter
            spacing: 14

            Row {
                visible: root.mode === TimerMode.Timer && root.settings.timerPresets.length > 0
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: 6

                Repeater {
                    model: root.settings.timerPresets

                    TimerPresetChip {
                        required property var modelData

                        label: TimerTexts.preset(modelData)
                        name: label
                        onTapped: root.service.setPreset(modelData * 60)
                    }
                }
            }

            TimerPhaseBadge {
                visible: root.mode === TimerMode.Pomodoro
                anchors.horizontalCenter: parent.horizontalCenter
                service: root.service
                accent: accent.active
            }

            Row {
                anchors.horizontalCenter: parent.horizontalCenter
                spacing: 14

                TimerGhostControl {
                    anchors.verticalCenter: parent.verticalCenter
                    symbol: "gobackward"
                    name: "Reset"
                    onTapped: root.service.reset()
                }

                TimerPrimaryControl {
                    service: root.service
                    accent: accent.active
                }

                TimerGhostControl {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: root.mode === TimerMode.Timer
                    symbol: "plus"
                    name: "Add a minute"
                    onTapped: root.service.add(60)
                }

                TimerGhostControl {
                    anchors.verticalCenter: parent.verticalCenter
                    visible: root.mode === TimerMode.Pomodoro
                    symbol: "forward.end.fill"
                    name: "Skip"
                    onTapped: root.service.skip()
                }
            }
        }
    }
}
