import QtQuick
import "../../view_kit/qml"

// Takes an entry out of a list.
Item {
    id: button

    property string subject // what is removed

    signal activated

    implicitWidth: 28
    implicitHeight: 28
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: "Remove"
    Accessible.description: subject
    Accessible.focusable: true
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
        radius: 14
        fill: mouse.containsMouse ? theme.colors.quaternary : "transparent"
    }
    Symbol {
        anchors.centerIn: parent
        name: "xmark.circle.fill"
        size: 17
        color: theme.colors.windowTertiary
        opacity: mouse.pressed ? 0.7 : 1
    }
    FocusOutline {}
    MouseArea {
        id: mouse
        // Never smaller than a finger's or an unsteady hand's target.
        anchors.fill: parent
        anchors.margins: -1
        hoverEnabled: true
        onClicked: button.activated()
    }
}
