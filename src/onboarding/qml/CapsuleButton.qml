import QtQuick
import "../../view_kit/qml"

// A large button of the window. Pressed with the pointer or Space; it never takes the focus from a click, so its
// outline shows after keyboard use only.
Item {
    id: button

    property string text
    property string symbol
    property int symbolSize: 15
    property bool symbolTrails: false
    property bool prominent: false

    readonly property bool hovered: mouse.containsMouse
    readonly property bool pressed: mouse.pressed && mouse.containsMouse
    readonly property string weight: prominent || symbolTrails ? "semibold" : "regular"

    signal activated

    implicitWidth: 20 + symbolSize + 8 + Math.ceil(label.implicitWidth) + 20
    implicitHeight: Math.max(38, theme.metrics.callout + 24)
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onPressAction: activated()

    Keys.onSpacePressed: event => {
        if (!event.isAutoRepeat)
            activated()
    }

    Loader {
        anchors.fill: parent
        sourceComponent: button.prominent ? accentSurface : glassSurface
    }
    Component {
        id: glassSurface
        GlassSurface {
            radius: height / 2
            hovered: button.hovered
            pressed: button.pressed
        }
    }
    Component {
        id: accentSurface
        AccentSurface {
            radius: height / 2
            hovered: button.hovered
            pressed: button.pressed
        }
    }
    Symbol {
        x: button.symbolTrails ? button.width - 20 - width : 20
        anchors.verticalCenter: parent.verticalCenter
        name: button.symbol
        size: button.symbolSize
        weight: button.weight
        color: label.color
    }
    Label {
        id: label
        x: button.symbolTrails ? 20 : 20 + button.symbolSize + 8
        height: parent.height
        text: button.text
        font.weight: Font.Medium
        color: button.prominent ? theme.colors.onAccent : theme.colors.label
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
