import QtQuick
import "../../view_kit/qml"

// A window of some application in the demo.
Item {
    id: demoWindow

    default property alias content: body.data

    width: 384
    Accessible.ignored: true

    BorderImage {
        // The shadow falls 14 px further down.
        x: -52
        y: -52 + 14
        width: parent.width + 104
        height: parent.height + 104
        source: "image://scenery/shadow"
        border { left: 103; right: 103; top: 103; bottom: 103 }
    }
    Surface {
        anchors.fill: parent
        radius: 12
        margin: 2
        fill: colors.page
        outerEdge: colors.pageEdge
    }
    Row {
        x: 12
        y: 10
        spacing: 6

        Repeater {
            model: 3
            Rectangle {
                width: 8
                height: 8
                radius: 4
                color: colors.pageButton
            }
        }
    }
    Rectangle {
        y: 27
        width: parent.width
        height: 1
        color: colors.pageLine
    }
    Item {
        id: body
        y: 28
        width: parent.width
        height: parent.height - 28
    }
}
