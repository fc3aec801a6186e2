import QtQuick
import "../../view_kit/qml"

// The row of tabs at the top of the window. The selected one can be reached by Tab, its neighbours by arrows.
Rectangle {
    id: tabs

    implicitHeight: row.height + 12
    color: theme.colors.titleArea

    Accessible.role: Accessible.PageTabList
    Accessible.name: "Settings"

    function select(index) {
        if (index < 0 || index >= settings.tabs.length)
            return
        settings.tab = index
        row.children[index].forceActiveFocus()
    }

    Row {
        id: row
        y: 2
        anchors.horizontalCenter: parent.horizontalCenter
        spacing: 4

        Repeater {
            model: settings.tabs

            SettingsTab {
                text: modelData.label
                symbol: modelData.symbol
                selected: settings.tab === index
                onActivated: settings.tab = index
                Keys.onLeftPressed: tabs.select(index - 1)
                Keys.onRightPressed: tabs.select(index + 1)
            }
        }
    }
    Hairline {
        anchors.bottom: parent.bottom
        width: parent.width
    }
}
