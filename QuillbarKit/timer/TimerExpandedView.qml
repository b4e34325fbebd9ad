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
    readonly property real gap: 30
    // What is left beside the ring within 18 points of padding, and no more than looks well.
    readonly property real columnWidth: Math.min(236, width - 2 * 18 - ringSize - gap)
    readonly property list<int> presets: TimerTexts.offeredPresets(settings.timerPresets)
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

    // The ring keeps its place in every mode, and so does the room beside it.
    Item {
        id: face

        anchors.top: switcher.bottom
        anchors.topMargin: 10
        anchors.horizontalCenter: parent.horizontalCenter
        width: root.ringSize + root.gap + root.columnWidth
        height: root.ringSize

        Item {
            width: root.ringSize
            height: root.ringSize

            Face {
                anchors.fill: parent
                isShown: root.mode !== TimerMode.Stopwatch

                ProgressRing {
                    anchors.fill: parent
                    ringWidth: root.ringWidth
                    tint: accent.active
                    fraction: root.fullSeconds > 0 ? root.service.remaining / root.fullSeconds : 0
                }
            }

            Face {
                anchors.fill: parent
                isShown: root.mode === TimerMode.Stopwatch

                TimerStopwatchDial {
                    anchors.fill: parent
                    ringWidth: root.ringWidth
                    tint: accent.active
                    service: root.service
                }
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

        Item {
            id: column

            readonly property bool hasHeading: root.mode === TimerMode.Pomodoro || root.mode === TimerMode.Timer && root.presets.length > 0

            x: root.ringSize + root.gap
            width: root.columnWidth
            height: parent.height

            Face {
                y: 6
                // More than the column holds may run on to the padding.
                width: root.width - 18 - face.x - column.x
                height: 34
                isShown: root.mode === TimerMode.Timer && root.presets.length > 0

                TimerPresetRow {
                    anchors.fill: parent
                    service: root.service
                    minutes: root.presets
                    middleWidth: column.width
                }
            }

            Face {
                y: 6
                width: parent.width
                height: 34
                isShown: root.mode === TimerMode.Pomodoro

                TimerPhaseBadge {
                    anchors.centerIn: parent
                    service: root.service
                    accent: accent.active
                }
            }

            Row {
                x: (parent.width - width) / 2 + aside.value
                y: lift.value
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

                Item {
                    anchors.verticalCenter: parent.verticalCenter
                    width: 32
                    height: 32

                    Face {
                        anchors.fill: parent
                        isShown: root.mode === TimerMode.Timer

                        TimerGhostControl {
                            symbol: "plus"
                            name: "Add a minute"
                            onTapped: root.service.add(60)
                        }
                    }

                    Face {
                        anchors.fill: parent
                        isShown: root.mode === TimerMode.Pomodoro

                        TimerGhostControl {
                            symbol: "forward.end.fill"
                            name: "Skip"
                            onTapped: root.service.skip()
                        }
                    }
                }
            }

            Spring {
                id: aside

                // Without the third control the two others stand in the middle.
                to: root.mode === TimerMode.Stopwatch ? (32 + 14) / 2 : 0
                response: 0.4
                damping: 0.82
            }

            Spring {
                id: lift

                to: column.hasHeading ? 54 : (root.ringSize - 44) / 2
                response: 0.4
                damping: 0.82
            }
        }
    }

    // What belongs to one mode: a change of mode fades it in or out.
    component Face: Item {
        id: part

        required property bool isShown

        opacity: Math.max(0, Math.min(1, presence.value))
        visible: opacity > 0
        enabled: isShown

        Spring {
            id: presence

            to: part.isShown ? 1 : 0
            response: 0.4
            damping: 0.82
            epsilon: 0.002
        }
    }
}
