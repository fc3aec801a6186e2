import QtQuick

// A text of a few lines, broken so that they are about equally long.
Label {
    id: label

    property real maximumWidth

    height: implicitHeight
    wrapMode: Text.Wrap
    verticalAlignment: Text.AlignTop

    onMaximumWidthChanged: balance()
    Component.onCompleted: balance()

    // To the least width that takes no more lines than the greatest.
    function balance() {
        probe.width = maximumWidth
        const lines = probe.lineCount
        probe.width = Math.floor(maximumWidth / Math.max(1, lines))
        while (probe.width < maximumWidth && probe.lineCount > lines)
            probe.width += 4
        width = Math.min(probe.width, maximumWidth)
    }

    Text {
        id: probe
        visible: false
        text: label.text
        font: label.font
        onTextChanged: label.balance()
        onFontChanged: label.balance()
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        Accessible.ignored: true
    }
}
