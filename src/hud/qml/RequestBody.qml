import QtQuick
import "../../view_kit/qml"

// Where the user says what is to be done.
Item {
    id: body

    readonly property var presets: [
        { title: "Rename", symbol: "character.cursor.ibeam", prompt: "Rename these to lowercase words separated by dashes" },
        { title: "Zip", symbol: "doc.zipper", prompt: "Compress these into a single zip archive" },
        { title: "Folder", symbol: "folder.badge.plus", prompt: "Move these into a new folder named " },
        { title: "Convert", symbol: "arrow.triangle.2.circlepath", prompt: "Convert these to " }
    ]

    implicitHeight: note.y + note.height

    function focusField() {
        field.focusText()
    }

    Component.onCompleted: focusField()

    Connections {
        target: hud.files
        function onReplaced() { row.contentX = 0 }
    }

    BalancedLabel {
        id: heading
        maximumWidth: body.width
        text: "Perform actions on these files with natural language"
        font.weight: Font.DemiBold
        lineHeightMode: Text.FixedHeight
        lineHeight: theme.metrics.statusLine
    }
    RequestField {
        id: field
        anchors.top: heading.bottom
        anchors.topMargin: 10
        anchors.left: parent.left
        anchors.right: generate.left
        anchors.rightMargin: 8
        placeholder: "e.g. convert to PNG, rename, zip…"
        onSubmitted: hud.files.submit()
    }
    GlassButton {
        id: generate
        anchors.right: parent.right
        anchors.bottom: field.bottom
        prominent: true
        iconOnly: true
        size: Math.max(35, theme.metrics.statusLine + 16)
        text: "Generate command"
        symbol: "arrow.up"
        symbolSize: 18
        symbolWeight: "bold"
        onActivated: field.submit()
    }
    Flickable {
        id: row
        // To the card's very edges, which clip it.
        x: -18
        width: parent.width + 36
        anchors.top: field.bottom
        anchors.topMargin: 10 - 6
        height: presetRow.height + 12
        contentWidth: presetRow.width + 36
        contentHeight: height
        flickableDirection: Flickable.HorizontalFlick
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentWidth > width
        clip: true

        Row {
            id: presetRow
            x: 18
            y: 6
            spacing: 6

            Repeater {
                model: body.presets
                GlassButton {
                    small: true
                    text: modelData.title
                    symbol: modelData.symbol
                    onActivated: {
                        field.replaceText(modelData.prompt)
                        hud.takeKeyboard()
                        body.focusField()
                    }
                    onActiveFocusChanged: if (activeFocus) row.reveal(18 + x, width)
                }
            }
        }
        function reveal(left, width) {
            const most = contentWidth - row.width
            contentX = Math.max(0, Math.min(most, Math.max(left + width + 18 - row.width, Math.min(contentX, left - 18))))
        }
    }
    // A row settles with the next frame; the window's size may be wanted before.
    Connections {
        target: hudWindow
        function onSettling() { presetRow.forceLayout() }
    }
    Label {
        id: note
        anchors.top: row.bottom
        anchors.topMargin: 10 - 6
        width: parent.width
        height: implicitHeight
        text: "Runs locally with your AI backend. You'll review the command before it runs."
        font.pixelSize: theme.metrics.caption2
        color: theme.colors.tertiary
        wrapMode: Text.Wrap
        verticalAlignment: Text.AlignTop
        lineHeightMode: Text.FixedHeight
        lineHeight: theme.metrics.caption2Line + 0.5
    }
}
