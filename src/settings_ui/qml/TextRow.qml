import QtQuick
import "../../view_kit/qml"

// A row that only says something.
Item {
    id: row

    property string text
    property bool separated: y > 0
    property color color: theme.colors.windowSecondary

    width: parent ? parent.width : 0
    implicitHeight: Math.max(42, label.implicitHeight + 22)

    Hairline {
        visible: row.separated
        x: 14
        width: row.width - x
    }
    Label {
        id: label
        x: 14
        y: 11
        width: row.width - 28
        text: row.text
        font.pixelSize: theme.metrics.subheadline
        lineHeight: theme.metrics.subheadlineLine
        lineHeightMode: Text.FixedHeight
        wrapMode: Text.Wrap
        color: row.color
    }
}
