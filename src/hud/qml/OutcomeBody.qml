import QtQuick
import "../../view_kit/qml"

// What came of the command.
Item {
    id: outcome

    readonly property var content: hud.files.content
    readonly property Item defaultButton: done
    readonly property alias hasSelection: well.hasSelection

    signal restarted
    signal copied
    signal finished

    implicitHeight: column.height + 14 + done.height

    function scrollBy(pages) {
        well.scrollBy(pages)
    }
    function copySelection() {
        well.copySelection()
    }

    // A column settles with the next frame; the window's size may be wanted before.
    Connections {
        target: hudWindow
        function onSettling() { column.forceLayout() }
    }
    Column {
        id: column
        width: parent.width
        spacing: 12

        Item {
            width: parent.width
            height: status.height + (notice.visible ? notice.height + 4 : 0)

            Symbol {
                id: symbol
                y: (status.height - height) / 2
                name: outcome.content.failed ? "xmark.octagon.fill" : "checkmark.circle.fill"
                size: 17
                color: outcome.content.failed ? theme.colors.failed : theme.colors.done
            }
            Label {
                id: status
                x: symbol.width + 8
                height: theme.metrics.statusLine
                text: outcome.content.failed ? "Command failed" : "Done"
                font.weight: Font.DemiBold
            }
            Label {
                id: notice
                visible: text
                x: status.x
                anchors.top: status.bottom
                anchors.topMargin: 4
                width: parent.width - x
                height: implicitHeight
                text: outcome.content.stopNotice
                font.pixelSize: theme.metrics.caption
                color: theme.colors.secondary
                wrapMode: Text.Wrap
                verticalAlignment: Text.AlignTop
                lineHeightMode: Text.FixedHeight
                lineHeight: theme.metrics.captionLine
            }
        }
        TextWell {
            id: well
            width: parent.width
            height: implicitHeight
            label: "Output"
            limit: 220
            text: hud.files.output
        }
    }

    GlassButton {
        anchors.left: parent.left
        anchors.bottom: parent.bottom
        text: "Another"
        symbol: "arrow.uturn.left"
        onActivated: outcome.restarted()
    }
    GlassButton {
        anchors.right: done.left
        anchors.rightMargin: 8
        anchors.bottom: parent.bottom
        iconOnly: true
        text: "Copy output"
        symbol: "doc.on.doc"
        onActivated: outcome.copied()
    }
    GlassButton {
        id: done
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        prominent: true
        text: "Done"
        symbol: "checkmark"
        symbolWeight: "semibold"
        onActivated: outcome.finished()
    }
}
