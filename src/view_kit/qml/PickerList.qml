import QtQuick

// The open list of a picker, over the whole window: below the picker where there is room, else moved up. Arrows,
// Home, End and the first letters move; Return chooses; Escape or a click elsewhere closes.
Item {
    id: overlay

    property string text
    property var options: []
    property int current
    property Item anchor

    signal chosen(int index)
    signal dismissed

    readonly property int rowHeight: Math.max(30, theme.metrics.subheadline + 17)
    readonly property point corner: anchor.mapToItem(overlay, anchor.width, anchor.height)
    property string typed

    Keys.onPressed: event => {
        event.accepted = true
        switch (event.key) {
        case Qt.Key_Up: move(list.currentIndex - 1); break
        case Qt.Key_Down: move(list.currentIndex + 1); break
        case Qt.Key_Home: move(0); break
        case Qt.Key_End: move(options.length - 1); break
        case Qt.Key_Return:
        case Qt.Key_Enter:
            if (!event.isAutoRepeat)
                choose(list.currentIndex)
            break
        case Qt.Key_Escape:
        case Qt.Key_Tab:
        case Qt.Key_Backtab: dismissed(); break
        case Qt.Key_Space:
            if (!typed) {
                if (!event.isAutoRepeat)
                    choose(list.currentIndex)
                break
            }
            type(event.text)
            break
        default:
            if (event.text && !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier)))
                type(event.text)
            else
                event.accepted = false
        }
    }

    function move(index) {
        list.currentIndex = Math.max(0, Math.min(options.length - 1, index))
        list.positionViewAtIndex(list.currentIndex, ListView.Contain)
    }
    function choose(index) {
        if (index >= 0)
            chosen(index)
        else
            dismissed()
    }
    function type(text) {
        forgetTyped.restart()
        typed += text.toLowerCase()
        // The same letter again goes on to the next option with it.
        const isRepeated = typed.length > 1 && typed.split("").every(letter => letter === typed[0])
        const wanted = isRepeated ? typed[0] : typed
        const first = list.currentIndex + (isRepeated || typed.length === 1 ? 1 : 0)
        for (let i = 0; i < options.length; ++i) {
            const index = (first + i) % options.length
            if (options[index].label.toLowerCase().startsWith(wanted)) {
                move(index)
                return
            }
        }
    }

    Timer {
        id: forgetTyped
        interval: 1000
        onTriggered: overlay.typed = ""
    }
    FontMetrics {
        id: font
        font.family: theme.metrics.family
        font.pixelSize: theme.metrics.subheadline
    }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.AllButtons
        onPressed: overlay.dismissed()
        onWheel: {} // what is behind stays where it is
    }

    Item {
        id: card

        readonly property real widest: overlay.options.reduce(
            (most, option) => Math.max(most, font.advanceWidth(option.label)), 0)
        readonly property bool hasMarks: overlay.options.length > 0
            && (overlay.options[0].dot !== undefined || overlay.options[0].symbol !== undefined)

        width: Math.min(overlay.width - 16, Math.max(178, overlay.anchor.width, Math.ceil(widest)
            + 5 + 9 + 13 + 9 + (hasMarks ? 25 : 0) + 9 + 5 + 4))
        height: Math.min(overlay.height - 16, overlay.options.length * overlay.rowHeight + 10)
        x: Math.max(8, overlay.corner.x - width)
        y: Math.max(8, Math.min(overlay.corner.y + 6, overlay.height - height - 8))

        Surface {
            anchors.fill: parent
            margin: 10
            radius: 10
            fill: theme.colors.menu
            outerEdge: theme.colors.menuEdge
            nearShadow: theme.colors.shadowNear
            farShadow: theme.colors.shadowFar
        }
        // A press between the rows is no press elsewhere.
        MouseArea { anchors.fill: parent }
        ListView {
            id: list
            anchors.fill: parent
            anchors.margins: 5
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            interactive: contentHeight > height
            // All of them at once: what has no item cannot be reached by other means than keys.
            cacheBuffer: 100000
            model: overlay.options
            currentIndex: overlay.current
            highlightFollowsCurrentItem: false

            Accessible.role: Accessible.List
            Accessible.name: overlay.text

            Component.onCompleted: positionViewAtIndex(Math.max(0, currentIndex), ListView.Contain)

            delegate: Item {
                id: row

                readonly property bool highlighted: ListView.isCurrentItem
                readonly property color textColor: highlighted ? theme.colors.onAccent : theme.colors.label

                width: list.width
                height: overlay.rowHeight

                Accessible.role: Accessible.ListItem
                Accessible.name: modelData.label
                Accessible.selectable: true
                Accessible.selected: index === overlay.current
                Accessible.onPressAction: overlay.choose(index)

                Surface {
                    anchors.fill: parent
                    radius: 6
                    fill: row.highlighted ? theme.colors.accentFill : "transparent"
                }
                Symbol {
                    x: 9
                    anchors.verticalCenter: parent.verticalCenter
                    visible: index === overlay.current
                    name: "checkmark"
                    size: 13
                    weight: "bold"
                    color: row.textColor
                }
                OptionMark {
                    id: mark
                    x: 31
                    anchors.verticalCenter: parent.verticalCenter
                    option: modelData
                    color: row.textColor
                }
                Label {
                    x: mark.visible ? mark.x + mark.implicitWidth + 9 : 31
                    width: row.width - x - 9
                    height: parent.height
                    text: modelData.label
                    font.pixelSize: theme.metrics.subheadline
                    color: row.textColor
                    elide: Text.ElideRight
                    Accessible.ignored: true
                }
                MouseArea {
                    anchors.fill: parent
                    hoverEnabled: true
                    onPositionChanged: list.currentIndex = index
                    onClicked: overlay.choose(index)
                }
            }
        }
    }
}
