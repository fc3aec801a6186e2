import QtQuick
import "../../view_kit/qml"

// One fact with its caption.
Item {
    id: row

    property string symbol
    property string caption
    property string value

    implicitHeight: captionLabel.height + 1 + valueLabel.height

    Accessible.role: Accessible.StaticText
    Accessible.name: row.caption + ": " + row.value

    Symbol {
        x: (18 - width) / 2
        y: (captionLabel.height - height) / 2
        name: row.symbol
        size: 15
        weight: "semibold"
        color: theme.colors.secondary
    }
    Label {
        id: captionLabel
        x: 18 + 10
        height: theme.metrics.caption2Line
        text: row.caption
        font.pixelSize: theme.metrics.caption2
        color: theme.colors.tertiary
        Accessible.ignored: true
    }
    Label {
        id: valueLabel
        x: 18 + 10
        anchors.top: captionLabel.bottom
        anchors.topMargin: 1
        width: parent.width - x
        height: implicitHeight
        text: row.value
        wrapMode: Text.Wrap
        elide: Text.ElideRight
        maximumLineCount: 4
        verticalAlignment: Text.AlignTop
        lineHeightMode: Text.FixedHeight
        lineHeight: theme.metrics.statusLine
        Accessible.ignored: true
    }
}
