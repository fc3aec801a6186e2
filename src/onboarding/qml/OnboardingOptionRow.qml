import QtQuick
import "../../view_kit/qml"

// A permission with its state and the control that changes it.
Item {
    id: option

    property var row
    property bool prominent: false

    signal activated

    readonly property real textHeight: title.height + 1 + detail.height + (note.visible ? 4 + note.height : 0)

    implicitHeight: Math.max(76, 12 + textHeight + 12)

    Surface {
        anchors.fill: parent
        radius: 14
        fill: colors.card
        innerEdge: theme.colors.groupEdge
    }
    OnboardingIconTile {
        id: tile
        x: 14
        anchors.verticalCenter: parent.verticalCenter
        icon: option.row.icon
        tint: theme.colors.tints[option.row.tint]
    }
    Item {
        x: tile.x + tile.width + 14
        width: (button.visible ? button.x : option.width) - 14 - x
        height: option.textHeight
        anchors.verticalCenter: parent.verticalCenter

        Label {
            id: title
            width: parent.width
            height: theme.metrics.statusLine
            text: option.row.title
            font.weight: Font.DemiBold
            elide: Text.ElideRight
        }
        Paragraph {
            id: detail
            y: title.height + 1
            width: parent.width
            text: option.row.detail
            size: theme.metrics.caption
            line: theme.metrics.captionLine
        }
        Paragraph {
            id: note
            visible: text
            y: detail.y + detail.height + 4
            width: parent.width
            text: option.row.note
            size: theme.metrics.caption
            line: theme.metrics.captionLine
            color: theme.colors.label
        }
    }
    GlassButton {
        id: button
        visible: option.row.button
        enabled: option.row.buttonEnabled
        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        prominent: option.prominent
        text: option.row.button
        hint: option.row.title
        symbol: option.row.buttonSymbol
        onActivated: option.activated()
    }
}
