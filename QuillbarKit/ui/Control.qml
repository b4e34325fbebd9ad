import QtQuick

// What every control of ours has in common: it is reached with Tab, pressed with Space or Return, named for
// a screen reader, and shows its focus. What it looks like is its children's affair.
Item {
    id: control

    // What it is called, or what it does where a symbol alone tells it.
    required property string name
    property string help: ""
    property bool checkable: false
    property bool checked: false
    // False where Space has another meaning.
    property bool pressedBySpace: true
    // Where the ring that shows the focus stands.
    property real focusRadius: Math.min(width, height) / 2
    // False while it can't be seen; keyboard and screen reader press it all the same.
    property bool tappable: true
    // Where something else shows the focus there is none.
    property bool hasFocusRing: true
    readonly property bool hovered: hover.containsMouse
    readonly property bool pressed: tap.pressed

    signal tapped

    activeFocusOnTab: true
    // A key held down is one press.
    Keys.onSpacePressed: event => {
        event.accepted = control.pressedBySpace;
        if (control.pressedBySpace && !event.isAutoRepeat)
            control.tapped();
    }
    Keys.onReturnPressed: event => event.isAutoRepeat || control.tapped()
    Keys.onEnterPressed: event => event.isAutoRepeat || control.tapped()

    Accessible.role: control.checkable ? Accessible.RadioButton : Accessible.Button
    Accessible.name: control.name
    Accessible.description: control.help
    Accessible.checkable: control.checkable
    Accessible.checked: control.checked
    Accessible.focusable: true
    Accessible.focused: control.activeFocus
    Accessible.onPressAction: control.tapped()
    // What a radio button is told in place of a press.
    Accessible.onToggleAction: control.tapped()

    // Not a HoverHandler: the toolkit notes each of its hover events in a list until the next press, so a
    // panel that is pointed at for days without a click would grow.
    MouseArea {
        id: hover

        anchors.fill: parent
        acceptedButtons: Qt.NoButton
        hoverEnabled: true
    }

    TapHandler {
        id: tap

        enabled: control.tappable
        gesturePolicy: TapHandler.ReleaseWithinBounds
        onTapped: control.tapped()
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: -2
        z: 1
        visible: control.activeFocus && control.hasFocusRing
        radius: control.focusRadius + 2
        color: "transparent"
        border.width: 1.5
        border.color: "#ccffffff"
    }
}
