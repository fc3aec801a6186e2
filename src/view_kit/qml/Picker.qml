import QtQuick

// Shows one of several options and opens the list of them. It asks for a change; whoever owns the value decides.
Item {
    id: picker

    property string text // what is chosen
    property var options: [] // maps with "label", and "symbol" or "dot"
    property int current

    readonly property var option: options[current] || { label: "" }
    readonly property bool open: list.active
    readonly property real labelWidth: Math.min(Math.ceil(label.implicitWidth), 300)

    signal chosen(int index)

    implicitWidth: 11 + (mark.visible ? mark.implicitWidth + 8 : 0) + labelWidth + 10 + 13 + 8
    implicitHeight: Math.max(32, theme.metrics.subheadline + 19)
    activeFocusOnTab: true

    Accessible.role: Accessible.ComboBox
    Accessible.name: text
    Accessible.description: option.label
    Accessible.focusable: true
    Accessible.onPressAction: show()

    Keys.onPressed: event => {
        switch (event.key) {
        case Qt.Key_Space:
        case Qt.Key_Return:
        case Qt.Key_Enter:
        case Qt.Key_Down:
        case Qt.Key_Up:
            if (!event.isAutoRepeat)
                show()
            event.accepted = true
        }
    }

    function show() {
        if (!list.active && options.length > 0)
            list.active = true
    }

    ControlSurface {
        anchors.fill: parent
        hovered: mouse.containsMouse
        pressed: mouse.pressed
        outlined: picker.activeFocus || picker.open
    }
    OptionMark {
        id: mark
        x: 11
        anchors.verticalCenter: parent.verticalCenter
        option: picker.option
        color: theme.colors.label
    }
    Label {
        id: label
        x: mark.visible ? mark.x + mark.implicitWidth + 8 : 11
        width: Math.min(picker.labelWidth, chevron.x - x - 6)
        height: parent.height
        text: picker.option.label
        font.pixelSize: theme.metrics.subheadline
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    Symbol {
        id: chevron
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        name: "chevron.up.chevron.down"
        size: 13
        weight: "semibold"
        color: theme.colors.windowSecondary
    }
    MouseArea {
        id: mouse
        anchors.fill: parent
        hoverEnabled: true
        onPressed: picker.show()
    }
    Loader {
        id: list

        property Item focusBefore

        active: false
        parent: picker.Window.contentItem
        anchors.fill: parent
        sourceComponent: PickerList {
            text: picker.text
            options: picker.options
            current: picker.current
            anchor: picker
            onChosen: index => {
                list.close()
                picker.chosen(index)
            }
            onDismissed: list.close()
        }
        onLoaded: {
            focusBefore = picker.Window.activeFocusItem
            item.forceActiveFocus()
        }

        function close() {
            active = false
            if (focusBefore)
                focusBefore.forceActiveFocus()
        }
    }
    // The options may be replaced while they are shown.
    onOptionsChanged: if (open && options.length === 0) list.close()
}
