import QtQuick
import "../../view_kit/qml"

// One suggestion that the user can run: by clicking it, by Return while it is selected, or by its number.
Item {
    id: chip

    property string title
    property string summary
    property string symbol
    property color tint
    property int shortcut: 0 // 0: none
    property bool selected: false

    signal activated

    readonly property real textHeight: title.height + (summary.visible ? summary.implicitHeight : 0)

    implicitHeight: Math.max(52, 9 + textHeight + 9)

    Accessible.role: Accessible.Button
    Accessible.name: chip.title
    Accessible.description: chip.summary
    Accessible.selectable: true
    Accessible.selected: chip.selected
    Accessible.focusable: chip.shortcut > 0
    Accessible.onPressAction: activated()

    // So that assistive technology follows the highlight.
    onSelectedChanged: if (selected) forceActiveFocus()
    Component.onCompleted: if (selected) forceActiveFocus()

    GlassSurface {
        anchors.fill: parent
        radius: 14
        hovered: mouse.containsMouse
        pressed: mouse.pressed && mouse.containsMouse
    }
    Surface {
        anchors.fill: parent
        visible: chip.selected
        radius: 14
        innerEdge: theme.colors.accentLine
        innerEdgeWidth: 2
    }
    Symbol {
        x: 12 + (26 - width) / 2
        anchors.verticalCenter: parent.verticalCenter
        name: chip.symbol
        size: 20
        weight: "semibold"
        color: chip.tint
    }
    Item {
        x: 12 + 26 + 12
        width: trailing.x - 12 - x
        height: chip.textHeight
        anchors.verticalCenter: parent.verticalCenter

        Label {
            id: title
            width: parent.width
            height: theme.metrics.titleLine
            text: chip.title
            font.weight: Font.DemiBold
            elide: Text.ElideRight
            maximumLineCount: 1
            Accessible.ignored: true
        }
        Label {
            id: summary
            anchors.top: title.bottom
            width: parent.width
            visible: text
            text: chip.summary
            font.pixelSize: theme.metrics.caption
            color: theme.colors.secondary
            wrapMode: Text.Wrap
            elide: Text.ElideRight
            maximumLineCount: 3
            lineHeightMode: Text.FixedHeight
            lineHeight: theme.metrics.captionLine
            Accessible.ignored: true
        }
    }
    Item {
        id: trailing
        anchors.right: parent.right
        anchors.rightMargin: 12
        anchors.verticalCenter: parent.verticalCenter
        width: chip.shortcut > 0 ? key.width : 14
        height: 16

        Surface {
            id: key
            visible: chip.shortcut > 0
            width: Math.max(16, theme.metrics.caption2 + 5)
            height: width
            anchors.verticalCenter: parent.verticalCenter
            radius: 4
            fill: theme.colors.quaternary

            Label {
                anchors.centerIn: parent
                text: chip.shortcut
                font.pixelSize: theme.metrics.caption2
                font.weight: Font.Bold
                color: theme.colors.secondary
                Accessible.ignored: true
            }
        }
        Symbol {
            visible: chip.shortcut === 0
            anchors.centerIn: parent
            name: "arrow.forward"
            size: 14
            weight: "bold"
            color: theme.colors.tertiary
        }
    }
    MouseArea {
        id: mouse
        anchors.fill: parent
        hoverEnabled: true
        onClicked: chip.activated()
    }
}
