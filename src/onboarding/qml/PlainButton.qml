import QtQuick
import "../../view_kit/qml"

// A button that is only its text until the pointer is over it.
Item {
    id: button

    property string text

    signal activated

    implicitWidth: 8 + Math.ceil(label.implicitWidth) + 8
    implicitHeight: Math.max(30, theme.metrics.subheadline + 17)
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onPressAction: activated()

    Keys.onSpacePressed: event => {
        if (!event.isAutoRepeat)
            activated()
    }

    Surface {
        anchors.fill: parent
        visible: mouse.containsMouse
        radius: height / 2
        fill: theme.colors.quaternary
    }
    Label {
        id: label
        x: 8
        height: parent.height
        text: button.text
        font.pixelSize: theme.metrics.subheadline
        font.weight: Font.Medium
        color: theme.colors.windowSecondary
        opacity: mouse.pressed && mouse.containsMouse ? 0.7 : 1
        Accessible.ignored: true
    }
    FocusOutline {}
    MouseArea {
        id: mouse
        anchors.fill: parent
        hoverEnabled: true
        onClicked: button.activated()
    }
}
