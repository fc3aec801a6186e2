import QtQuick

// A text of any window. Nothing selected, generated or named is ever parsed as markup.
Text {
    textFormat: Text.PlainText
    font.family: theme.metrics.family
    font.pixelSize: theme.metrics.callout
    color: theme.colors.label
    verticalAlignment: Text.AlignVCenter

    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
