import QtQuick
import "../../view_kit/qml"

// Something that went wrong, in a sentence.
Item {
    id: problem

    property string text

    implicitHeight: Math.max(16, label.implicitHeight)

    Symbol {
        y: (theme.metrics.captionLine - height) / 2
        name: "exclamationmark.triangle.fill"
        size: 15
        color: theme.colors.tints.orange
    }
    Label {
        id: label
        x: 22
        width: parent.width - x
        text: problem.text
        font.pixelSize: theme.metrics.caption
        lineHeight: theme.metrics.captionLine
        lineHeightMode: Text.FixedHeight
        wrapMode: Text.Wrap
        color: theme.colors.label
    }
}
