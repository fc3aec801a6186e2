import QtQuick

// What a scene shows: in the middle if there is room, else it scrolls, and follows the keyboard's focus.
Flickable {
    id: area

    default property alias content: column.data

    // Room at the sides for the outline of what has the focus.
    readonly property int side: 6
    readonly property Item focused: Window.activeFocusItem
    readonly property bool overflows: contentHeight > height

    contentHeight: column.height + 2 * side
    clip: overflows
    interactive: overflows
    boundsBehavior: Flickable.StopAtBounds
    flickableDirection: Flickable.VerticalFlick

    onFocusedChanged: reveal(focused)

    function scrollBy(pages) {
        moveTo(contentY + pages * height * 0.9)
    }
    function moveTo(y) {
        contentY = Math.max(0, Math.min(contentHeight - height, y))
    }
    function reveal(item) {
        if (!overflows || !isInside(item))
            return
        const top = item.mapToItem(contentItem, 0, 0).y - 2 * side
        const bottom = top + item.height + 4 * side
        if (top < contentY)
            moveTo(top)
        else if (bottom > contentY + height)
            moveTo(bottom - height)
    }
    function isInside(item) {
        for (let ancestor = item; ancestor; ancestor = ancestor.parent) {
            if (ancestor === column)
                return true
        }
        return false
    }

    Column {
        id: column
        x: area.side
        y: Math.max(area.side, (area.height - height) / 2)
        width: area.width - 2 * area.side
    }
    Rectangle {
        parent: area
        visible: area.overflows
        x: area.width - width
        y: 2 + (area.height - 4) * area.visibleArea.yPosition
        width: 5
        height: Math.max(28, (area.height - 4) * area.visibleArea.heightRatio)
        radius: 3
        color: theme.colors.scrollThumb
    }
}
