pragma Singleton

import QtQuick

// The faces of the program.
QtObject {
    readonly property string text: "Inter"
    readonly property string rounded: "Quicksand"
    readonly property string monospaced: "JetBrains Mono"
}
