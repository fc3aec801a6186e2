import QtQuick
import "../../view_kit/qml"

// A permission with its state and the control that changes it: beside the text, or below it where that would
// become too narrow to read.
Item {
    id: option

    property var row
    property bool prominent: false

    signal activated

    readonly property real textWidth: width - body.x - 14
    readonly property real widthBeside: textWidth - button.width - 14
    readonly property bool isStacked: button.visible && widthBeside < 180
    readonly property real bodyHeight: body.height + (isStacked ? 10 + button.height : 0)

    implicitHeight: Math.max(76, 12 + bodyHeight + 12)

    Surface {
        anchors.fill: parent
        radius: 14
        fill: colors.card
        innerEdge: theme.colors.groupEdge
    }
    OnboardingIconTile {
        id: tile
        x: 14
        anchors.verticalCenter: body.verticalCenter
        icon: option.row.icon
        tint: theme.colors.tints[option.row.tint]
    }
    Item {
        id: body
        x: tile.x + tile.width + 14
        y: (option.height - option.bodyHeight) / 2
        width: button.visible && !option.isStacked ? option.widthBeside : option.textWidth
        height: title.height + 1 + detail.height + (note.visible ? 4 + note.height : 0)

        Label {
            id: title
            width: parent.width
            height: Math.max(theme.metrics.statusLine, implicitHeight)
            text: option.row.title
            font.weight: Font.DemiBold
            wrapMode: Text.Wrap
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
        x: option.isStacked ? body.x : option.width - 14 - width
        y: option.isStacked ? body.y + body.height + 10 : (option.height - height) / 2
        prominent: option.prominent
        text: option.row.button
        hint: option.row.title
        symbol: option.row.buttonSymbol
        onActivated: option.activated()
        // The focus does not leave by itself.
        onVisibleChanged: if (!visible && activeFocus) root.forceActiveFocus()
    }
}
