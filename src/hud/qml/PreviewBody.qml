import QtQuick
import "../../view_kit/qml"

// The command to be reviewed, with what there is to know about it.
Item {
    id: preview

    readonly property var content: hud.files.content
    readonly property Item defaultButton: run
    readonly property alias hasSelection: well.hasSelection

    signal edited
    signal confirmed

    implicitHeight: column.height + 14 + run.height

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

        TextWell {
            id: well
            width: parent.width
            height: implicitHeight
            label: "Command"
            limit: 140
            text: preview.content.command
            marks: preview.content.cautions
        }
        NoteRow {
            width: parent.width
            symbol: "folder"
            text: preview.content.folder
            wrapMode: Text.WrapAnywhere
            maximumLines: 4
        }
        NoteRow {
            width: parent.width
            visible: preview.content.blocked
            symbol: "exclamationmark.triangle.fill"
            symbolColor: theme.colors.caution
            color: theme.colors.label
            text: preview.content.blockedReason
        }
        Repeater {
            model: preview.content.cautions
            NoteRow {
                width: column.width
                symbol: "exclamationmark.triangle"
                symbolColor: theme.colors.caution
                text: modelData.text

                // Pointing at a caution points out the piece of the command that it is about.
                HoverHandler {
                    onHoveredChanged: {
                        if (hovered)
                            well.highlightedMark = index
                        else if (well.highlightedMark === index)
                            well.highlightedMark = -1
                    }
                }
            }
        }
    }

    GlassButton {
        anchors.left: parent.left
        anchors.bottom: parent.bottom
        iconOnly: true
        text: "Edit request"
        symbol: "pencil"
        onActivated: preview.edited()
    }
    GlassButton {
        id: run
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        enabled: !preview.content.blocked
        opacity: preview.content.blocked ? 0.4 : 1
        prominent: true
        text: "Run"
        hint: "Runs the command on your files"
        symbol: "play.fill"
        symbolSize: 13
        onActivated: preview.confirmed()
    }
}
