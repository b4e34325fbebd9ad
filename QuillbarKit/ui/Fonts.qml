pragma Singleton

import QtQuick

// The two faces of the program.
QtObject {
    readonly property string text: "Inter"
    readonly property string rounded: "Quicksand"
}
