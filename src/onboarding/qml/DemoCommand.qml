import QtQuick
import "../../view_kit/qml"

// A command to be looked at before it runs, or what it has done.
Item {
    id: command

    property alias text: label.text
    property bool isDone

    readonly property int wellTop: isDone ? 19 + 12 : 0

    implicitHeight: wellTop + 38 + 12 + (isDone ? 0 : 16 + 12) + 2 + 30

    Symbol {
        visible: command.isDone
        y: 1
        name: "checkmark.circle.fill"
        size: 17
        color: theme.colors.done
    }
    DemoText {
        visible: command.isDone
        x: 25
        height: 19
        text: "Done"
        font.weight: Font.DemiBold
    }
    Surface {
        y: command.wellTop
        width: parent.width
        height: 38
        radius: 12
        fill: theme.colors.well
        innerEdge: theme.colors.wellEdge

        DemoText {
            id: label
            x: 10
            height: parent.height
            font.family: theme.metrics.mono.family
            font.pixelSize: 12
        }
    }
    Symbol {
        visible: !command.isDone
        y: 50
        name: "folder"
        color: theme.colors.secondary
    }
    DemoText {
        visible: !command.isDone
        x: 21
        y: 50
        height: 16
        text: "~/Pictures"
        font.pixelSize: 12
        color: theme.colors.secondary
    }
    Item {
        y: command.implicitHeight - 30
        width: parent.width
        height: 30

        DemoButton {
            symbol: command.isDone ? "arrow.uturn.left" : "pencil"
            text: command.isDone ? "Another" : ""
        }
        DemoButton {
            visible: command.isDone
            anchors.right: go.left
            anchors.rightMargin: 8
            symbol: "doc.on.doc"
        }
        DemoButton {
            id: go
            anchors.right: parent.right
            prominent: true
            symbol: command.isDone ? "checkmark" : "play.fill"
            symbolSize: command.isDone ? 15 : 13
            symbolWeight: "semibold"
            text: command.isDone ? "Done" : "Run"
        }
    }
}
