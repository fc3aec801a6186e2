import QtQuick
import "../../view_kit/qml"

// A remark with its symbol, after everything else of a scene.
Item {
    property string symbol
    property int symbolSize: 18
    property color symbolColor: colors.highlight
    property int gap: 10
    property alias text: paragraph.text

    width: parent.width
    height: Math.max(symbolSize, paragraph.height)

    Symbol {
        y: Math.max(0, (theme.metrics.subheadlineLine - height) / 2)
        name: parent.symbol
        size: parent.symbolSize
        color: parent.symbolColor
    }
    Paragraph {
        id: paragraph
        x: parent.symbolSize + parent.gap
        width: parent.width - x
        size: theme.metrics.subheadline
        line: theme.metrics.subheadlineLine
    }
}
