import QtQuick

// A text area as high as its text up to a limit; beyond it, it scrolls. Clipped edges fade out.
Item {
    id: area

    property real textHeight
    property real limit: 240
    // Text that grows is followed to its end.
    property bool followsEnd: false
    // What clipped text fades into.
    property color fade: theme.colors.cardFade
    // How far beside the text the thumb is.
    property int thumbGap: 6
    default property alias content: flick.flickableData
    readonly property alias viewportY: flick.contentY
    readonly property bool overflows: flick.contentHeight > height

    implicitHeight: Math.min(Math.max(textHeight, 1), limit)

    function scrollBy(pixels) {
        flick.contentY = Math.max(0, Math.min(flick.contentHeight - flick.height, flick.contentY + pixels))
    }
    function followEnd() {
        if (!followsEnd)
            return
        // On its way to an end that is no longer the end.
        toEnd.stop()
        toEnd.to = Math.max(0, flick.contentHeight - flick.height)
        if (theme.reduceMotion)
            flick.contentY = toEnd.to
        else if (toEnd.to !== flick.contentY)
            toEnd.start()
    }
    // The span must be seen, as little moved as possible.
    function reveal(top, bottom) {
        if (top < flick.contentY)
            scrollBy(top - flick.contentY)
        else if (bottom > flick.contentY + flick.height)
            scrollBy(bottom - flick.contentY - flick.height)
    }

    Flickable {
        id: flick
        anchors.fill: parent
        contentHeight: area.textHeight
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        flickableDirection: Flickable.VerticalFlick
        interactive: area.overflows
        onContentHeightChanged: area.followEnd()
        onHeightChanged: area.followEnd()
    }
    NumberAnimation {
        id: toEnd
        target: flick
        property: "contentY"
        duration: 150
        easing.type: Easing.OutCubic
    }

    EdgeFade {
        anchors.top: parent.top
        visible: area.overflows && !flick.atYBeginning
        from: area.fade
        to: Qt.alpha(area.fade, 0)
    }
    EdgeFade {
        anchors.bottom: parent.bottom
        visible: area.overflows && !flick.atYEnd
        from: Qt.alpha(area.fade, 0)
        to: area.fade
    }
    Rectangle {
        id: thumb
        readonly property real room: area.height - 4
        readonly property real share: area.height / Math.max(1, flick.contentHeight)
        readonly property real position: flick.contentY / Math.max(1, flick.contentHeight - flick.height)

        visible: area.overflows
        x: area.width + area.thumbGap
        y: 2 + (room - height) * Math.max(0, Math.min(1, position))
        width: 5
        height: Math.min(room, Math.max(28, room * share))
        radius: 3
        color: theme.colors.scrollThumb
    }
}
