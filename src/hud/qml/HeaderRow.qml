import QtQuick
import "../../view_kit/qml"

// What the card is about, and the way out.
Item {
    id: header

    property string symbol
    property alias symbolSize: icon.size
    property string title

    signal dismissed

    implicitHeight: Math.max(26, theme.metrics.subheadline + 13)

    Symbol {
        id: icon
        anchors.verticalCenter: parent.verticalCenter
        name: header.symbol
        weight: "semibold"
        color: theme.colors.secondary
    }
    Label {
        anchors.left: icon.right
        anchors.leftMargin: 7
        anchors.right: dismiss.left
        anchors.rightMargin: 7
        height: header.height
        text: header.title
        font.pixelSize: theme.metrics.subheadline
        font.weight: Font.Medium
        color: theme.colors.secondary
        elide: Text.ElideRight
        maximumLineCount: 1
    }
    GlassButton {
        id: dismiss
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        iconOnly: true
        size: 26
        text: "Dismiss"
        symbol: "xmark"
        symbolSize: 12
        symbolWeight: "bold"
        onActivated: header.dismissed()
    }
}
