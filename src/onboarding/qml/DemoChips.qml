import QtQuick
import "../../view_kit/qml"

// The suggestions of the demo; the first lights up when it is picked.
Column {
    id: chips

    property bool isFirstLit

    spacing: 8

    Repeater {
        model: [
            {symbol: "wand.and.stars", tint: "purple", title: "Make professional",
                summary: "Polish tone for a work reply"},
            {symbol: "arrowshape.turn.up.left", tint: "blue", title: "Draft a reply",
                summary: "Write a friendly response"},
            {symbol: "text.badge.checkmark", tint: "orange", title: "Fix grammar",
                summary: "Correct spelling & grammar"},
            {symbol: "list.bullet.rectangle", tint: "teal", title: "Summarize", summary: "Capture the key points"}
        ]

        GlassSurface {
            width: chips.width
            height: 52
            radius: 14
            hovered: index === 0 && chips.isFirstLit

            Symbol {
                x: 15
                anchors.verticalCenter: parent.verticalCenter
                name: modelData.symbol
                size: 20
                weight: "semibold"
                color: theme.colors.tints[modelData.tint]
            }
            DemoText {
                x: 50
                y: 9
                height: 18
                text: modelData.title
                font.weight: Font.DemiBold
            }
            DemoText {
                x: 50
                y: 27
                height: 16
                text: modelData.summary
                font.pixelSize: 12
                color: theme.colors.secondary
            }
            Symbol {
                x: parent.width - 12 - width
                anchors.verticalCenter: parent.verticalCenter
                name: "arrow.forward"
                size: 14
                weight: "bold"
                color: theme.colors.tertiary
            }
        }
    }
}
