import QtQuick

// A button: glass, or prominent in the accent colour; with a text, or the symbol alone. Pressed with the pointer or
// Space; it never takes the focus from a click, so its outline shows after keyboard use only.
Item {
    id: button

    property string text
    property string hint
    property string symbol
    property string symbolWeight: "regular"
    property int symbolSize: small ? 14 : 15
    property int size: small ? Math.max(26, theme.metrics.caption + 14) : Math.max(30, theme.metrics.subheadline + 17)
    property bool prominent: false
    property bool iconOnly: false
    // A lesser one among others of its kind.
    property bool small: false

    readonly property int padding: small ? 10 : 12
    readonly property int gap: small ? 5 : 6
    readonly property bool hovered: mouse.containsMouse
    readonly property bool pressed: mouse.pressed && mouse.containsMouse

    signal activated

    implicitWidth: iconOnly ? size : padding + symbolSize + gap + Math.ceil(label.implicitWidth) + padding
    implicitHeight: size
    // Not when it goes together with all that is round it.
    opacity: enabled || !parent.enabled ? 1 : 0.4
    activeFocusOnTab: enabled

    Accessible.role: Accessible.Button
    Accessible.name: text
    Accessible.description: hint
    Accessible.focusable: enabled
    Accessible.onPressAction: press()

    Keys.onSpacePressed: event => {
        if (!event.isAutoRepeat)
            press()
    }

    // Assistive technology reaches disabled buttons too, and Space one that has gone.
    function press() {
        if (enabled && visible)
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
        x: button.iconOnly ? (parent.width - width) / 2 : button.padding
        anchors.verticalCenter: parent.verticalCenter
        name: button.symbol
        size: button.symbolSize
        weight: button.symbolWeight
        color: label.color
    }
    Label {
        id: label
        visible: !button.iconOnly
        x: button.padding + button.symbolSize + button.gap
        height: parent.height
        text: button.text
        font.pixelSize: button.small ? theme.metrics.caption : theme.metrics.subheadline
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
        onClicked: button.press()
    }
}
