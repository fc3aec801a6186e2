import QtQuick
import "../../view_kit/qml"

// One tab: a symbol over its name.
Item {
    id: tab

    property string text
    property string symbol
    property bool selected

    signal activated

    implicitWidth: Math.max(92, Math.ceil(label.implicitWidth) + 16)
    implicitHeight: Math.max(52, 37 + label.implicitHeight)
    activeFocusOnTab: selected || activeFocus

    Accessible.role: Accessible.PageTab
    Accessible.name: text
    Accessible.focusable: true
    Accessible.selectable: true
    Accessible.selected: selected
    Accessible.onPressAction: activated()

    Keys.onSpacePressed: event => press(event)
    Keys.onReturnPressed: event => press(event)
    Keys.onEnterPressed: event => press(event)

    // Once for each press: a key held down may have come from another control.
    function press(event) {
        if (!event.isAutoRepeat)
            activated()
    }

    Surface {
        anchors.fill: parent
        radius: 10
        fill: tab.selected || mouse.pressed ? theme.colors.quaternary
            : mouse.containsMouse ? Qt.alpha(theme.colors.quaternary, theme.colors.quaternary.a / 2) : "transparent"
    }
    Column {
        anchors.centerIn: parent
        spacing: 4

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: tab.symbol
            size: 20
            color: tab.selected ? theme.colors.accentLine : theme.colors.windowSecondary
        }
        Label {
            id: label
            anchors.horizontalCenter: parent.horizontalCenter
            height: Math.max(15, implicitHeight)
            text: tab.text
            font.pixelSize: theme.metrics.caption
            font.weight: tab.selected ? Font.DemiBold : Font.Medium
            color: tab.selected ? theme.colors.label : theme.colors.windowSecondary
            Accessible.ignored: true
        }
    }
    FocusOutline { radius: 14 }
    MouseArea {
        id: mouse
        anchors.fill: parent
        hoverEnabled: true
        onClicked: tab.activated()
    }
}
