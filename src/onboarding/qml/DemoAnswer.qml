import QtQuick
import "../../view_kit/qml"

// The answer as it is streamed, with a caret at its end, and then with what can be done with it.
Item {
    id: answer

    property alias text: body.text
    property bool isFinished

    implicitHeight: body.height + (isFinished ? 14 + 30 : 0)

    DemoText {
        id: body
        width: parent.width
        wrapMode: Text.Wrap
        lineHeightMode: Text.FixedHeight
        lineHeight: 20
        verticalAlignment: Text.AlignTop
        onLineLaidOut: line => {
            if (line.isLast)
                caret.x = line.x + line.implicitWidth + 4
        }
    }
    Rectangle {
        id: caret
        visible: !answer.isFinished
        y: body.height - 18
        width: 7
        height: 15
        color: theme.colors.accentLine
    }
    Item {
        visible: answer.isFinished
        y: body.height + 14
        width: parent.width
        height: 30

        DemoButton {
            id: back
            symbol: "chevron.left"
            symbolWeight: "semibold"
        }
        Symbol {
            id: badge
            x: back.width + 8
            anchors.verticalCenter: parent.verticalCenter
            name: "sparkles"
            size: 14
            color: theme.colors.tertiary
        }
        DemoText {
            x: badge.x + 14 + 5
            height: parent.height
            text: "On-device AI"
            font.pixelSize: 11
            font.weight: Font.Medium
            color: theme.colors.tertiary
        }
        DemoButton {
            anchors.right: copy.left
            anchors.rightMargin: 8
            symbol: "arrow.left.arrow.right"
            text: "Replace"
        }
        DemoButton {
            id: copy
            anchors.right: parent.right
            prominent: true
            symbol: "doc.on.doc"
            text: "Copy"
        }
    }
}
