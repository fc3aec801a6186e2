import QtQuick
import "../../view_kit/qml"

// A symbol and a note in small print.
Item {
    id: note

    property string symbol
    property color symbolColor: theme.colors.secondary
    property alias text: label.text
    property alias color: label.color
    property alias wrapMode: label.wrapMode
    property alias maximumLines: label.maximumLineCount

    implicitHeight: label.implicitHeight

    Symbol {
        y: (theme.metrics.captionLine - height) / 2
        name: note.symbol
        size: 15
        color: note.symbolColor
    }
    Label {
        id: label
        x: 15 + 6
        width: note.width - x
        height: implicitHeight
        font.pixelSize: theme.metrics.caption
        color: theme.colors.secondary
        wrapMode: Text.Wrap
        elide: Text.ElideRight
        verticalAlignment: Text.AlignTop
        lineHeightMode: Text.FixedHeight
        lineHeight: theme.metrics.captionLine
    }
}
