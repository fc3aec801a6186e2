import QtQuick

// A text of the demo. It belongs to a picture: its size is fixed, and assistive technology passes it over.
Text {
    textFormat: Text.PlainText
    font.family: theme.metrics.family
    font.pixelSize: 14
    color: theme.colors.label
    verticalAlignment: Text.AlignVCenter
    Accessible.ignored: true
}
