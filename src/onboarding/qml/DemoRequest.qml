import QtQuick
import "../../view_kit/qml"

// The request as it is typed.
Item {
    property alias text: typed.text

    implicitHeight: 35

    Surface {
        width: parent.width - 35 - 8
        height: 35
        radius: 12
        fill: theme.colors.field
        innerEdge: theme.colors.accentLine
        innerEdgeWidth: 2

        DemoText {
            id: typed
            x: 12
            height: parent.height
        }
        Rectangle {
            x: 12 + typed.implicitWidth + 1
            y: 9
            width: 1.5
            height: 16
            color: theme.colors.accentLine
        }
    }
    DemoButton {
        x: parent.width - width
        size: 35
        prominent: true
        symbol: "arrow.up"
        symbolSize: 18
        symbolWeight: "bold"
    }
}
