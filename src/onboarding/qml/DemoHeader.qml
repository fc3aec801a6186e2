import QtQuick
import "../../view_kit/qml"

// What the demo's card is about.
Item {
    property alias symbol: icon.name
    property alias title: label.text

    height: 26

    Symbol {
        id: icon
        anchors.verticalCenter: parent.verticalCenter
        weight: "semibold"
        color: theme.colors.secondary
    }
    DemoText {
        id: label
        x: 15 + 7
        height: parent.height
        font.pixelSize: 13
        font.weight: Font.Medium
        color: theme.colors.secondary
    }
    DemoButton {
        x: parent.width - width
        size: 26
        symbol: "xmark"
        symbolSize: 12
        symbolWeight: "bold"
    }
}
