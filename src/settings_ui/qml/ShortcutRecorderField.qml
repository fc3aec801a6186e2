import QtQuick
import "../../view_kit/qml"

// Shows the summon shortcut, and records another one. A press anywhere else ends a recording.
Item {
    id: field

    readonly property var recorder: settings.recorder
    readonly property bool recording: recorder.isRecording
    readonly property string hint: "Click, then press a shortcut with at least one modifier (⌘ ⌥ ⌃ ⇧)."

    implicitWidth: Math.max(96, Math.ceil(label.implicitWidth) + 24)
    implicitHeight: Math.max(32, theme.metrics.subheadline + 19)
    activeFocusOnTab: true

    Accessible.role: Accessible.Button
    Accessible.name: "Shortcut"
    Accessible.description: recorder.label + "\n" + hint
    Accessible.focusable: true
    Accessible.onPressAction: press()

    Keys.onSpacePressed: event => { if (!event.isAutoRepeat) press() }
    Keys.onReturnPressed: event => { if (!event.isAutoRepeat) press() }
    Keys.onEnterPressed: event => { if (!event.isAutoRepeat) press() }

    function press() {
        if (enabled)
            recorder.toggle()
    }

    Surface {
        anchors.fill: parent
        radius: 8
        opacity: field.enabled ? 1 : 0.4
        fill: field.recording ? Qt.alpha(theme.colors.accentLine, 0.09)
            : mouse.pressed ? theme.colors.glassPressed : theme.colors.control
        innerEdge: field.recording || field.activeFocus ? theme.colors.accentLine
            : mouse.containsMouse ? theme.colors.controlEdgeHover : theme.colors.controlEdge
        innerEdgeWidth: field.recording || field.activeFocus ? 2 : 1
    }
    Label {
        id: label
        anchors.fill: parent
        horizontalAlignment: Text.AlignHCenter
        text: field.recorder.label
        font.pixelSize: theme.metrics.subheadline
        opacity: field.enabled ? 1 : 0.4
        Accessible.ignored: true
    }
    MouseArea {
        id: mouse
        anchors.fill: parent
        hoverEnabled: true
        onClicked: field.press()
    }
    Timer {
        id: hover
        interval: 600
        running: mouse.containsMouse && field.enabled
    }
    Tooltip {
        anchors.right: parent.right
        anchors.top: parent.bottom
        anchors.topMargin: 6
        visible: field.recording || (mouse.containsMouse && field.enabled && !hover.running)
        text: field.hint
    }
    // Over the whole window while recording; presses go on to what is below.
    MouseArea {
        parent: field.Window.contentItem
        anchors.fill: parent
        visible: field.recording
        acceptedButtons: Qt.AllButtons
        onPressed: event => {
            event.accepted = false
            const inside = mapToItem(field, event.x, event.y)
            if (!field.contains(inside))
                field.recorder.cancel()
        }
    }
    // Within the window; whether that has lost the keyboard the recorder knows better.
    onActiveFocusChanged: if (!activeFocus && Window.active) recorder.cancel()
    Component.onDestruction: recorder.cancel()
}
