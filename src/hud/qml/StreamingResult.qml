import QtQuick
import "../../view_kit/qml"
import Lumeno.Hud

// The text as it streams in, kept scrolled to its end.
ScrollArea {
    id: area

    property alias text: stream.text

    textHeight: stream.contentHeight
    followsEnd: true

    Accessible.role: Accessible.StaticText
    Accessible.name: "Generating result"

    StreamingText {
        id: stream
        y: area.viewportY
        width: area.width
        height: area.height
        viewportY: area.viewportY
        font.family: theme.metrics.family
        font.pixelSize: theme.metrics.callout
        minimumLineHeight: theme.metrics.textLine
        color: theme.colors.label
        caretColor: theme.colors.accentLine
        Accessible.ignored: true
    }
}
