import QtQuick
import "../../view_kit/qml"

// A short line above a heading.
Item {
    property alias text: label.text
    property string symbol

    width: parent.width
    height: theme.metrics.subheadlineLine + 8

    Symbol {
        visible: parent.symbol
        y: (theme.metrics.subheadlineLine - height) / 2
        name: parent.symbol
        weight: "semibold"
        color: colors.highlight
    }
    Label {
        id: label
        x: parent.symbol ? 15 + 7 : 0
        height: theme.metrics.subheadlineLine
        font.pixelSize: theme.metrics.subheadline
        font.weight: Font.DemiBold
        color: colors.highlight
    }
}
