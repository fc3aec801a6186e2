import QtQuick
import "../../view_kit/qml"
import Lumeno.Hud

// A text in the fixed-width font, of any length: as high as it is up to a limit, beyond which it scrolls. It can be
// selected with the pointer.
Item {
    id: well

    property string label // what it is called
    property alias text: view.text
    property alias marks: view.marks
    property alias limit: area.limit
    property int highlightedMark: -1
    readonly property alias hasSelection: view.hasSelection

    implicitHeight: 10 + area.implicitHeight + 10

    function scrollBy(pages) {
        area.scrollBy(pages * area.height * 0.9)
    }
    function copySelection() {
        view.copy()
    }

    onHighlightedMarkChanged: {
        if (highlightedMark < 0)
            return
        const extent = view.markExtent(highlightedMark)
        area.reveal(extent.x, extent.y)
    }

    Surface {
        anchors.fill: parent
        radius: 12
        fill: theme.colors.well
        innerEdge: theme.colors.wellEdge
    }
    ScrollArea {
        id: area
        x: 10
        y: 10
        width: parent.width - 20
        height: implicitHeight
        textHeight: view.contentHeight
        fade: theme.colors.wellFade
        thumbGap: 3

        Accessible.role: Accessible.Grouping
        Accessible.name: well.label

        LongTextView {
            id: view
            y: area.viewportY
            width: area.width
            height: area.height
            viewportY: area.viewportY
            font: theme.metrics.mono
            minimumLineHeight: theme.metrics.monoLine
            color: theme.colors.label
            selectionColor: theme.colors.textSelection
            markColor: theme.colors.caution
            highlightedMark: well.highlightedMark

            Accessible.role: Accessible.StaticText
            Accessible.name: excerpt

            MouseArea {
                anchors.fill: parent
                cursorShape: Qt.IBeamCursor
                preventStealing: true

                property bool selectsWord: false

                onPressed: mouse => {
                    selectsWord = false
                    view.beginSelection(mouse.x, mouse.y)
                }
                onDoubleClicked: mouse => {
                    selectsWord = true
                    view.selectWord(mouse.x, mouse.y)
                }
                onPositionChanged: mouse => {
                    if (selectsWord)
                        return
                    view.extendSelection(mouse.x, mouse.y)
                    if (mouse.y < 0)
                        area.scrollBy(mouse.y)
                    else if (mouse.y > height)
                        area.scrollBy(mouse.y - height)
                }
            }
        }
    }
}
