import QtQuick
import "../../view_kit/qml"

// One of the services that may answer, from a menu. Space opens it; arrows and Return choose, Escape leaves.
Column {
    id: picker

    property int current: 0
    readonly property var options: [
        {title: "Apple Intelligence", symbol: "apple.logo"},
        {title: "Ollama (your models)", symbol: "server.rack"}
    ]
    readonly property bool isOpen: menu.visible

    signal picked(int index)

    spacing: 6

    Label {
        height: theme.metrics.subheadlineLine
        text: "AI backend"
        font.pixelSize: theme.metrics.subheadline
        Accessible.ignored: true
    }
    Item {
        id: button

        // Only the keyboard's focus is outlined.
        property bool hasPointersFocus: false
        readonly property bool isOutlined: picker.isOpen || activeFocus && !hasPointersFocus

        width: parent.width
        height: Math.max(32, theme.metrics.subheadline + 19)
        activeFocusOnTab: true

        Accessible.role: Accessible.ComboBox
        Accessible.name: "AI backend"
        Accessible.description: picker.options[picker.current].title
        Accessible.focusable: true
        Accessible.onPressAction: menu.toggle()

        Keys.onPressed: event => event.accepted = menu.handleKey(event.key)
        onActiveFocusChanged: {
            if (activeFocus)
                return
            menu.close()
            hasPointersFocus = false
        }

        Surface {
            anchors.fill: parent
            radius: 8
            fill: mouse.pressed ? theme.colors.glassPressed : theme.colors.control
            innerEdge: button.isOutlined ? theme.colors.accentLine : theme.colors.controlEdge
            innerEdgeWidth: button.isOutlined ? 2 : 1
        }
        Symbol {
            x: 11
            anchors.verticalCenter: parent.verticalCenter
            name: picker.options[picker.current].symbol
            size: 16
        }
        Label {
            x: 11 + 16 + 8
            width: chevrons.x - x - 8
            height: parent.height
            text: picker.options[picker.current].title
            font.pixelSize: theme.metrics.subheadline
            elide: Text.ElideRight
            Accessible.ignored: true
        }
        Symbol {
            id: chevrons
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
            onClicked: {
                button.hasPointersFocus = true
                menu.toggle()
            }
        }
    }

    // Lies over everything else, and takes whatever is clicked beside it as leaving.
    Item {
        id: menu

        property int highlighted: 0

        parent: overlay
        anchors.fill: parent
        visible: false

        function toggle() {
            if (visible)
                return close()
            const corner = button.mapToItem(overlay, 0, button.height + 4)
            list.x = corner.x
            list.y = Math.min(corner.y, overlay.height - list.height - 8)
            highlighted = picker.current
            visible = true
            button.forceActiveFocus()
        }
        function close() {
            visible = false
        }
        function pick(index) {
            close()
            picker.picked(index)
        }
        function handleKey(key) {
            if (!visible) {
                if (key === Qt.Key_Space)
                    toggle()
                return key === Qt.Key_Space
            }
            switch (key) {
            case Qt.Key_Up:
            case Qt.Key_Down:
                highlighted = Math.max(0, Math.min(picker.options.length - 1,
                                                   highlighted + (key === Qt.Key_Up ? -1 : 1)))
                return true
            case Qt.Key_Return:
            case Qt.Key_Enter:
            case Qt.Key_Space:
                pick(highlighted)
                return true
            case Qt.Key_Escape:
                close()
                return true
            }
            return false
        }

        MouseArea {
            anchors.fill: parent
            onPressed: menu.close()
        }
        Surface {
            id: list
            width: button.width
            height: rows.height + 10
            radius: 10
            margin: 10
            fill: theme.colors.menu
            outerEdge: theme.colors.menuEdge
            farShadow: theme.colors.shadowFar

            Column {
                id: rows
                x: 5
                y: 5
                width: parent.width - 10

                Repeater {
                    model: picker.options

                    Rectangle {
                        id: row

                        readonly property bool isHighlighted: menu.highlighted === index
                        readonly property color ink: isHighlighted ? theme.colors.onAccent : theme.colors.label

                        width: rows.width
                        height: Math.max(30, theme.metrics.subheadline + 17)
                        radius: 6
                        color: isHighlighted ? theme.colors.accentFill : "transparent"

                        Accessible.role: Accessible.MenuItem
                        Accessible.name: modelData.title
                        Accessible.checkable: true
                        Accessible.checked: picker.current === index
                        Accessible.onPressAction: menu.pick(index)

                        Symbol {
                            x: 9
                            anchors.verticalCenter: parent.verticalCenter
                            visible: picker.current === index
                            name: "checkmark"
                            size: 13
                            weight: "bold"
                            color: row.ink
                        }
                        Symbol {
                            x: 31
                            anchors.verticalCenter: parent.verticalCenter
                            name: modelData.symbol
                            size: 16
                            color: row.ink
                        }
                        Label {
                            x: 55
                            width: parent.width - x - 9
                            height: parent.height
                            text: modelData.title
                            font.pixelSize: theme.metrics.subheadline
                            color: row.ink
                            elide: Text.ElideRight
                            Accessible.ignored: true
                        }
                        MouseArea {
                            anchors.fill: parent
                            hoverEnabled: true
                            onEntered: menu.highlighted = index
                            onClicked: menu.pick(index)
                        }
                    }
                }
            }
        }
    }
}
