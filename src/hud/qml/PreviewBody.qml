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
        if (cautions.activeFocus)
            cautions.scrollBy(pages)
        else
            well.scrollBy(pages)
    }
    function copySelection() {
        well.copySelection()
    }

    // Columns settle with the next frame; the window's size may be wanted before.
    Connections {
        target: hudWindow
        function onSettling() {
            rows.forceLayout()
            column.forceLayout()
        }
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
        // However many there are, the buttons stay on the screen.
        Item {
            id: cautions

            readonly property int limit: 140

            width: parent.width
            height: list.height
            visible: preview.content.cautions.length > 0
            activeFocusOnTab: list.overflows

            Accessible.role: Accessible.Grouping
            Accessible.name: "Cautions"
            Accessible.focusable: activeFocusOnTab

            Keys.onUpPressed: list.scrollBy(-theme.metrics.captionLine)
            Keys.onDownPressed: list.scrollBy(theme.metrics.captionLine)

            function scrollBy(pages) {
                list.scrollBy(pages * list.height * 0.9)
            }

            ScrollArea {
                id: list
                width: parent.width
                height: implicitHeight
                limit: cautions.limit
                textHeight: rows.height

                Column {
                    id: rows
                    width: list.width
                    spacing: column.spacing

                    Repeater {
                        model: preview.content.cautions
                        NoteRow {
                            width: rows.width
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
            }
            FocusOutline { radius: 8 }
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
