import QtQuick
import "../../view_kit/qml"

// One thing that Lumeno can do.
Item {
    property alias icon: tile.icon
    property alias tint: tile.tint
    property alias title: titleLabel.text
    property alias detail: detailLabel.text

    width: parent.width
    height: Math.max(tile.height, detailLabel.y + detailLabel.height)

    OnboardingIconTile {
        id: tile
    }
    Label {
        id: titleLabel
        x: tile.width + 14
        width: parent.width - x
        height: Math.max(theme.metrics.statusLine, implicitHeight)
        font.weight: Font.DemiBold
        wrapMode: Text.Wrap
    }
    Paragraph {
        id: detailLabel
        x: titleLabel.x
        y: titleLabel.height + 2
        width: titleLabel.width
        size: theme.metrics.subheadline
        line: theme.metrics.subheadlineLine
    }
}
