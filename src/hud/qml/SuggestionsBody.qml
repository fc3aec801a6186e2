import QtQuick
import "../../view_kit/qml"

// The chips, or that there are none.
Item {
    id: suggestions

    property var chips
    property bool numbered
    property int selected: -1

    signal activated(int index)

    implicitHeight: suggestions.chips.length > 0 ? column.implicitHeight : none.implicitHeight

    // A column settles with the next frame; the window's size may be wanted before.
    Connections {
        target: hudWindow
        function onSettling() { column.forceLayout() }
    }
    Column {
        id: column
        width: parent.width
        spacing: 8

        Repeater {
            model: suggestions.chips
            ActionChip {
                width: column.width
                title: modelData.title
                summary: modelData.summary
                symbol: modelData.symbol
                tint: theme.colors.tints[modelData.tint]
                shortcut: suggestions.numbered ? index + 1 : 0
                selected: index === suggestions.selected
                onActivated: suggestions.activated(index)
            }
        }
    }
    StatusRow {
        id: none
        width: parent.width
        visible: suggestions.chips.length === 0
        symbol: "text.cursor"
        text: "No actions for this selection."
    }
}
