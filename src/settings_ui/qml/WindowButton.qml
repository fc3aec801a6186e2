import QtQuick
import "../../view_kit/qml"

// A button of a window. Pressed with the pointer, Space or Return; it never takes the focus from a click.
Item {
    id: button

    property string text
    property string symbol
    property bool prominent

    readonly property bool hovered: mouse.containsMouse
    readonly property bool pressed: mouse.pressed && mouse.containsMouse

    signal activated

    implicitWidth: 24 + (symbol ? 22 : 0) + Math.ceil(label.implicitWidth)
    implicitHeight: Math.max(32, theme.metrics.subheadline + 19)
    activeFocusOnTab: true
    opacity: enabled ? 1 : 0.4

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onPressAction: if (enabled) activated()

    Keys.onSpacePressed: event => press(event)
    Keys.onReturnPressed: event => press(event)
    Keys.onEnterPressed: event => press(event)

    // Once for each press: a key held down may have come from another control.
    function press(event) {
        if (!event.isAutoRepeat)
            activated()
    }

    Loader {
        anchors.fill: parent
        sourceComponent: button.prominent ? accent : plain
    }
    Component {
        id: plain
        ControlSurface {
            hovered: button.hovered
            pressed: button.pressed
            outlined: button.activeFocus
        }
    }
    Component {
        id: accent
        AccentSurface {
            radius: 8
            hovered: button.hovered
            pressed: button.pressed

            FocusOutline {
                visible: button.activeFocus
                radius: 12
            }
        }
    }
    Symbol {
        x: 12
        anchors.verticalCenter: parent.verticalCenter
        name: button.symbol
        size: 15
        color: label.color
    }
    Label {
        id: label
        x: button.symbol ? 34 : 12
        height: parent.height
        text: button.text
        font.pixelSize: theme.metrics.subheadline
        color: button.prominent ? theme.colors.onAccent : theme.colors.label
        Accessible.ignored: true
    }
    MouseArea {
        id: mouse
        anchors.fill: parent
        hoverEnabled: true
        onClicked: button.activated()
    }
}
