import QtQuick

// A switch. It shows `checked` and asks for a change; whoever owns the value decides. Turned with the pointer or
// Space; it never takes the focus from a click, so its outline shows after keyboard use only.
Item {
    id: toggle

    property string text // what is switched
    property bool checked

    readonly property bool pressed: mouse.pressed && mouse.containsMouse
    readonly property real knobWidth: pressed ? 20 : 18

    signal toggled(bool on)

    implicitWidth: 38
    implicitHeight: 22
    // Not when it goes together with all that is round it.
    opacity: enabled || !parent.enabled ? 1 : 0.4
    activeFocusOnTab: true

    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: checked
    Accessible.focusable: true
    Accessible.onPressAction: ask()
    Accessible.onToggleAction: ask()

    Keys.onSpacePressed: event => {
        if (!event.isAutoRepeat)
            ask()
    }

    function ask() {
        if (enabled)
            toggled(!checked)
    }

    Surface {
        anchors.fill: parent
        radius: 11
        fill: toggle.checked ? theme.colors.accentFill : theme.colors.switchTrack
        innerEdge: toggle.checked ? "transparent" : theme.colors.switchEdge

        Behavior on fill {
            enabled: !theme.reduceMotion
            ColorAnimation { duration: 90 }
        }
    }
    Surface {
        x: toggle.checked ? toggle.width - width - 2 : 2
        y: 2
        width: toggle.knobWidth
        height: 18
        radius: 9
        margin: 4
        fill: theme.colors.switchKnob
        nearShadow: Qt.rgba(0, 0, 0, 0.28)

        Behavior on x {
            enabled: !theme.reduceMotion
            NumberAnimation { duration: 90 }
        }
    }
    FocusOutline {}
    MouseArea {
        id: mouse
        // Never smaller than a finger's or an unsteady hand's target.
        anchors.fill: parent
        anchors.margins: -4
        onClicked: toggle.ask()
    }
}
