import QtQuick
import Quillbar

// A Loader of this toolkit can't make bound components, so what they use of their file is not known here.
// qmllint disable unqualified

// What a row shows of its clip, by what the clip is.
Item {
    id: root

    required property string uuid
    required property int kind
    required property string text
    required property string displayText
    required property int detected
    required property string detectedValue
    required property ClipboardPanelContent content

    implicitHeight: shown.implicitHeight

    Loader {
        id: shown

        width: root.width
        sourceComponent: {
            if (root.kind === ClipRowsModel.Image)
                return image;
            if (root.kind === ClipRowsModel.Text && root.detected === ClipRowsModel.Color)
                return colour;
            if (root.kind === ClipRowsModel.Text && root.detected === ClipRowsModel.Link)
                return link;
            return words;
        }
    }

    Component {
        id: image

        Item {
            implicitHeight: 40

            Rectangle {
                width: 52
                height: 40
                radius: 6
                color: Qt.rgba(1, 1, 1, 0.08)

                Symbol {
                    anchors.centerIn: parent
                    visible: !thumbnail.exists
                    name: "photo"
                    pointSize: 15
                    color: Qt.rgba(1, 1, 1, 0.5)
                }

                ClipThumbnail {
                    id: thumbnail

                    anchors.fill: parent
                    cornerRadius: 6
                    pictures: root.content.pictures
                    clip: root.uuid
                    maxPixel: 72
                }
            }

            Line {
                x: 62
                width: parent.width - x
                anchors.verticalCenter: parent.verticalCenter
                text: root.displayText
            }
        }
    }

    Component {
        id: colour

        Item {
            implicitHeight: 22

            Rectangle {
                width: 22
                height: 22
                radius: 6
                color: ClipViewTexts.swatch(root.detectedValue)
                border.width: 1
                border.color: Qt.rgba(1, 1, 1, 0.25)
            }

            Line {
                x: 32
                width: parent.width - x
                anchors.verticalCenter: parent.verticalCenter
                text: root.detectedValue
                font.family: Fonts.monospaced
            }
        }
    }

    Component {
        id: link

        Item {
            implicitHeight: preview.title ? 34 : 18

            ClipLinkPreview {
                id: preview

                content: root.content
                url: root.detectedValue
            }

            ClipPicture {
                id: icon

                y: 1
                width: exists ? 16 : 0
                height: 16
                cornerRadius: 3
                image: preview.icon
            }

            Line {
                id: title

                x: icon.width > 0 ? 23 : 0
                width: parent.width - x
                visible: preview.title
                text: preview.title
            }

            Line {
                x: preview.title ? 0 : title.x
                y: preview.title ? 19 : 0
                width: parent.width - x
                text: ClipViewTexts.plainTextPreview(root.detectedValue)
                font.pixelSize: preview.title ? 11 : 13
                color: preview.title ? Qt.rgba(1, 1, 1, 0.55) : Qt.rgba(1, 1, 1, 0.92)
            }
        }
    }

    Component {
        id: words

        Text {
            readonly property bool isCode: root.kind === ClipRowsModel.Text && root.detected === ClipRowsModel.Code

            wrapMode: isCode ? Text.NoWrap : Text.Wrap
            maximumLineCount: isCode ? 3 : 2
            elide: Text.ElideRight
            text: ClipViewTexts.plainTextPreview(root.kind === ClipRowsModel.Text ? root.text : root.displayText)
            textFormat: Text.PlainText
            font.family: isCode ? Fonts.monospaced : Fonts.text
            font.pixelSize: isCode ? 11 : 13
            color: Qt.rgba(1, 1, 1, 0.92)
            Accessible.ignored: true
        }
    }

    component Line: Text {
        elide: Text.ElideRight
        maximumLineCount: 1
        textFormat: Text.PlainText
        font.family: Fonts.text
        font.pixelSize: 13
        color: Qt.rgba(1, 1, 1, 0.92)
        Accessible.ignored: true
    }
}
