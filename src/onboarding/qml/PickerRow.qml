import QtQuick
import "../../view_kit/qml"

// A preference that is one of several.
Item {
    id: row

    property string text
    property alias options: picker.options
    property alias current: picker.current

    signal chosen(int index)

    // With the widest option, so that a choice moves nothing round it.
    readonly property real widest: font.font ? options.reduce(
        (most, option) => Math.max(most, Math.ceil(font.advanceWidth(option.label))), 0) : 0

    implicitWidth: picker.implicitWidth - picker.labelWidth + widest
    width: parent.width
    height: picker.y + picker.height

    FontMetrics {
        id: font
        font.family: theme.metrics.family
        font.pixelSize: theme.metrics.subheadline
    }
    Label {
        id: label
        width: parent.width
        height: theme.metrics.subheadlineLine
        text: row.text
        font.pixelSize: theme.metrics.subheadline
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    Picker {
        id: picker
        y: label.height + 6
        width: parent.width
        text: row.text
        onChosen: index => row.chosen(index)
    }
}
