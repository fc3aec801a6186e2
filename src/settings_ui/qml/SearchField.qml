import QtQuick
import "../../view_kit/qml"

// A line to type in. Arrows are left to what it searches in.
FocusScope {
    id: field

    property alias text: input.text
    property string hint

    signal accepted
    signal moved(int delta)

    implicitHeight: Math.max(36, input.implicitHeight + 16)

    Surface {
        anchors.fill: parent
        radius: 12
        fill: theme.colors.field
        innerEdge: input.activeFocus ? theme.colors.accentLine : theme.colors.fieldEdge
        innerEdgeWidth: input.activeFocus ? 2 : 1
    }
    Label {
        anchors.fill: input
        visible: !input.text
        text: field.hint
        font.pixelSize: theme.metrics.subheadline
        color: theme.colors.windowTertiary
        Accessible.ignored: true
    }
    TextInput {
        id: input
        x: 12
        width: field.width - 24
        anchors.verticalCenter: parent.verticalCenter
        focus: true
        clip: true
        activeFocusOnTab: true
        selectByMouse: false // a selection made here is not for other applications
        font.family: theme.metrics.family
        font.pixelSize: theme.metrics.subheadline
        color: theme.colors.label
        selectionColor: theme.colors.textSelection
        selectedTextColor: theme.colors.label

        Accessible.role: Accessible.EditableText
        Accessible.name: field.hint
        Accessible.editable: true
        Accessible.focusable: true

        onAccepted: field.accepted()
        Keys.onUpPressed: field.moved(-1)
        Keys.onDownPressed: field.moved(1)
        // What another application has selected is not pasted here: asking for it could wait for that application.
        Keys.onPressed: event => event.accepted = event.key === Qt.Key_Insert
            && (event.modifiers & Qt.ControlModifier) && (event.modifiers & Qt.ShiftModifier)
        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.MiddleButton
        }
    }
}
