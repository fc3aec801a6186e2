import QtQuick
import "../../view_kit/qml"

// What a scene is about, in large letters.
Label {
    property int size: theme.metrics.heading
    property int line: theme.metrics.headingLine

    width: parent.width
    font.pixelSize: size
    font.weight: Font.Bold
    font.letterSpacing: -0.022 * size
    wrapMode: Text.Wrap
    lineHeightMode: Text.FixedHeight
    lineHeight: line
    verticalAlignment: Text.AlignTop

    Accessible.role: Accessible.Heading
}
