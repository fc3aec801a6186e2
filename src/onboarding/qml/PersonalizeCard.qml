import QtQuick
import "../../view_kit/qml"

// Some preferences that belong together. All cards of a row are as high as the highest; none should be narrower
// than its controls need.
Item {
    id: card

    property alias icon: tile.icon
    property alias tint: tile.tint
    property alias title: titleLabel.text
    property alias detail: detailLabel.text
    default property alias controls: controlColumn.data

    implicitWidth: 28 + Array.from(controlColumn.children).reduce(
        (most, control) => Math.max(most, control.implicitWidth), 0)
    implicitHeight: detailLabel.y + detailLabel.height + 10 + controlColumn.height + 14

    Surface {
        anchors.fill: parent
        radius: 16
        fill: colors.card
        innerEdge: theme.colors.groupEdge
    }
    OnboardingIconTile {
        id: tile
        x: 14
        y: 14
        size: 30
    }
    Label {
        id: titleLabel
        x: tile.x + tile.width + 10
        y: tile.y
        width: card.width - x - 14
        height: Math.max(tile.height, implicitHeight)
        font.weight: Font.DemiBold
        wrapMode: Text.Wrap
    }
    Paragraph {
        id: detailLabel
        x: 14
        y: titleLabel.y + titleLabel.height + 8
        width: card.width - 28
        size: theme.metrics.caption
        line: theme.metrics.captionLine
    }
    Column {
        id: controlColumn
        x: 14
        anchors.bottom: parent.bottom
        anchors.bottomMargin: 14
        width: card.width - 28
        spacing: 8
    }
}
