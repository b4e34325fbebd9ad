pragma ComponentBehavior: Bound

import QtQuick
import Quillbar

// A look into the files of a clip, one at a time.
FocusScope {
    id: root

    required property QuickLookModel model
    readonly property real barHeight: 56
    readonly property real margin: 12

    signal closeRequested

    function scroll(by: real) {
        reading.contentY = Math.max(0, Math.min(reading.contentHeight - reading.height, reading.contentY + by));
    }

    focus: true
    Accessible.role: Accessible.Pane
    Accessible.name: "Preview of " + root.model.title
    Accessible.description: (root.model.position ? root.model.position + ", " : "") + root.model.summary
    // A key held down is one press.
    Keys.onSpacePressed: event => event.isAutoRepeat || root.closeRequested()
    Keys.onEscapePressed: event => event.isAutoRepeat || root.closeRequested()
    Keys.onLeftPressed: root.model.showPrevious()
    Keys.onRightPressed: root.model.showNext()
    Keys.onUpPressed: root.scroll(-40)
    Keys.onDownPressed: root.scroll(40)
    Keys.onPressed: event => {
        switch (event.key) {
        case Qt.Key_PageUp:
            root.scroll(-reading.height * 0.9);
            break;
        case Qt.Key_PageDown:
            root.scroll(reading.height * 0.9);
            break;
        case Qt.Key_Home:
            root.scroll(-reading.contentHeight);
            break;
        case Qt.Key_End:
            root.scroll(reading.contentHeight);
            break;
        default:
            return;
        }
        event.accepted = true;
    }

    GlassBackground {
        anchors.fill: parent
        topRadius: 22
        bottomRadius: 22
        // It stands above the panel, whose letters would show among its own.
        translucent: false
    }

    Text {
        id: title

        x: 18
        y: root.model.state === QuickLookModel.Facts ? 19 : 11
        width: buttons.x - x - 12
        elide: Text.ElideMiddle
        text: root.model.title
        textFormat: Text.PlainText
        maximumLineCount: 1
        font.family: Fonts.text
        font.pixelSize: 13
        font.weight: Font.DemiBold
        color: Qt.rgba(1, 1, 1, 0.92)
    }

    Text {
        anchors.left: title.left
        anchors.right: title.right
        anchors.top: title.bottom
        anchors.topMargin: 2
        visible: root.model.state === QuickLookModel.Picture || root.model.state === QuickLookModel.Text
        elide: Text.ElideRight
        text: root.model.summary + (root.model.isCut ? ", only its beginning is shown" : "")
        textFormat: Text.PlainText
        maximumLineCount: 1
        font.family: Fonts.text
        font.pixelSize: 11
        color: Qt.rgba(1, 1, 1, 0.6)
    }

    Row {
        id: buttons

        anchors.right: parent.right
        anchors.rightMargin: 12
        y: 16
        spacing: 4

        Text {
            anchors.verticalCenter: parent.verticalCenter
            Accessible.role: Accessible.StaticText
            Accessible.name: text
            visible: root.model.position
            rightPadding: 4
            text: root.model.position
            textFormat: Text.PlainText
            font.family: Fonts.text
            font.pixelSize: 12
            color: Qt.rgba(1, 1, 1, 0.7)
        }

        SymbolButton {
            visible: root.model.position
            enabled: !root.model.isFirst
            symbol: "chevron.left"
            name: "Previous file"
            pressedBySpace: false
            onTapped: root.model.showPrevious()
        }

        SymbolButton {
            visible: root.model.position
            enabled: !root.model.isLast
            symbol: "chevron.right"
            name: "Next file"
            pressedBySpace: false
            onTapped: root.model.showNext()
        }

        SymbolButton {
            symbol: "xmark"
            name: "Close preview"
            pressedBySpace: false
            onTapped: root.closeRequested()
        }
    }

    Item {
        id: body

        x: root.margin
        y: root.barHeight
        width: parent.width - 2 * root.margin
        height: parent.height - y - root.margin

        // What has shades of transparency is told apart from the dark and the light on a grey.
        Rectangle {
            anchors.fill: picture
            visible: picture.visible && root.model.isTransparent
            radius: picture.cornerRadius
            color: "#7d8086"
        }

        ClipPicture {
            id: picture

            readonly property size whole: root.model.pictureSize
            readonly property real shrinking: exists ? Math.min(1, body.width / whole.width, body.height / whole.height) : 1

            anchors.centerIn: parent
            visible: root.model.state === QuickLookModel.Picture
            width: whole.width * shrinking
            height: whole.height * shrinking
            cornerRadius: Math.min(10, width / 8, height / 8)
            image: root.model.picture
            Accessible.role: Accessible.Graphic
            Accessible.name: root.model.title
            Accessible.description: root.model.summary
        }

        Rectangle {
            anchors.fill: parent
            visible: reading.visible
            radius: 10
            color: Qt.rgba(1, 1, 1, 0.05)
        }

        Flickable {
            id: reading

            objectName: "reading"
            anchors.fill: parent
            visible: root.model.state === QuickLookModel.Text
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            contentWidth: width
            contentHeight: words.height + 24

            Text {
                id: words

                objectName: "words"
                x: 14
                y: 12
                width: reading.width - 28
                wrapMode: Text.Wrap
                text: root.model.text
                textFormat: Text.PlainText
                lineHeight: root.model.isCode ? 1.1 : 1.2
                font.family: root.model.isCode ? Fonts.monospaced : Fonts.text
                font.pixelSize: root.model.isCode ? 12 : 13
                color: Qt.rgba(1, 1, 1, 0.9)
                onTextChanged: reading.contentY = 0
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
        }

        Rectangle {
            anchors.right: parent.right
            anchors.rightMargin: 3
            y: 4 + reading.visibleArea.yPosition * (body.height - 8)
            width: 4
            height: reading.visibleArea.heightRatio * (body.height - 8)
            visible: reading.visible && reading.visibleArea.heightRatio < 1
            radius: 2
            color: Qt.rgba(1, 1, 1, 0.25)
        }

        Row {
            anchors.centerIn: parent
            width: Math.min(implicitWidth, body.width - 32)
            visible: root.model.state === QuickLookModel.Facts
            spacing: 24

            Symbol {
                id: icon

                anchors.verticalCenter: parent.verticalCenter
                name: root.model.symbol
                pointSize: 64
                color: Qt.rgba(1, 1, 1, 0.7)
            }

            Column {
                anchors.verticalCenter: parent.verticalCenter
                spacing: 5

                Repeater {
                    model: [root.model.title, root.model.typeName, root.model.byteCount, root.model.modified ? "Changed " + root.model.modified : ""]

                    Text {
                        required property string modelData
                        required property int index

                        width: Math.min(implicitWidth, body.width - icon.width - 72)
                        visible: modelData
                        elide: Text.ElideMiddle
                        text: modelData
                        textFormat: Text.PlainText
                        maximumLineCount: 1
                        font.family: Fonts.text
                        font.pixelSize: index === 0 ? 15 : 12
                        font.weight: index === 0 ? Font.DemiBold : Font.Normal
                        color: Qt.rgba(1, 1, 1, index === 0 ? 0.92 : 0.65)
                        Accessible.role: Accessible.StaticText
                        Accessible.name: text
                    }
                }
            }
        }
    }

    Rectangle {
        anchors.fill: parent
        radius: 22
        color: "transparent"
        border.width: 1
        border.color: Qt.rgba(1, 1, 1, 0.07)
    }
}
