import QtQuick

// A button: glass, or prominent in the accent colour; with a text, or the symbol alone. Pressed with the pointer or
// Space; it never takes the focus from a click, so its outline shows after keyboard use only.
Item {
    id: button

    property string text
    property string hint
    property string symbol
    property string symbolWeight: "regular"
    property int symbolSize: 15
    property int size: Math.max(30, theme.metrics.subheadline + 17)
    property bool prominent: false
    property bool iconOnly: false

    readonly property bool hovered: mouse.containsMouse
    readonly property bool pressed: mouse.pressed && mouse.containsMouse

    signal activated

    implicitWidth: iconOnly ? size : 12 + symbolSize + 6 + Math.ceil(label.implicitWidth) + 12
    implicitHeight: size
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: hint
    Accessible.focusable: true
    Accessible.onPressAction: activated()

    Keys.onSpacePressed: activated()

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
        x: button.iconOnly ? (parent.width - width) / 2 : 12
        anchors.verticalCenter: parent.verticalCenter
        name: button.symbol
        size: button.symbolSize
        weight: button.symbolWeight
        color: label.color
    }
    Label {
        id: label
        visible: !button.iconOnly
        x: 12 + button.symbolSize + 6
        height: parent.height
        text: button.text
        font.pixelSize: theme.metrics.subheadline
        font.weight: Font.Medium
        color: button.prominent ? theme.colors.onAccent : theme.colors.label
        Accessible.ignored: true
    }
    FocusOutline {}
    MouseArea {
        id: mouse
        // Never smaller than a finger's or an unsteady hand's target.
        anchors.fill: parent
        anchors.margins: Math.min(0, (button.size - 30) / 2)
        hoverEnabled: true
        onClicked: button.activated()
    }
}
