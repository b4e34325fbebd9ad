import QtQuick
import Quillbar

// A button of the panel's footer.
SymbolButton {
    required property string icon

    symbol: icon
    name: help
    pointSize: 14
    semibold: false
    width: 30
    height: 30
}
