import QtQuick
import "../../view_kit/qml"

// Running text: it wraps, and its lines have the height that goes with its size.
Label {
    property int size: theme.metrics.callout
    property int line: theme.metrics.textLine

    font.pixelSize: size
    color: theme.colors.windowSecondary
    wrapMode: Text.Wrap
    lineHeightMode: Text.FixedHeight
    lineHeight: line
    verticalAlignment: Text.AlignTop
}
