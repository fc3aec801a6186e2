import QtQuick
import "../../view_kit/qml"

// A symbol and a sentence.
Item {
    id: status

    property string symbol
    property color symbolColor: theme.colors.secondary
    property alias text: sentence.text
    property alias color: sentence.color

    implicitHeight: sentence.height + 4

    Item {
        y: 2
        width: 22
        height: theme.metrics.statusLine

        Symbol {
            anchors.centerIn: parent
            name: status.symbol
            size: 17
            weight: "semibold"
            color: status.symbolColor
        }
    }
    Label {
        id: sentence
        x: 22 + 10
        y: 2
        width: status.width - x
        height: implicitHeight
        color: theme.colors.secondary
        wrapMode: Text.Wrap
        lineHeightMode: Text.FixedHeight
        lineHeight: theme.metrics.statusLine
        verticalAlignment: Text.AlignTop
    }
}
