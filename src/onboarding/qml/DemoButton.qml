import QtQuick
import "../../view_kit/qml"

// The picture of a button: with a text, or the symbol alone.
Item {
    id: button

    property string text
    property string symbol
    property int symbolSize: 15
    property string symbolWeight: "regular"
    property int size: 30
    property bool prominent: false

    readonly property color ink: prominent ? theme.colors.onAccent : theme.colors.label

    width: text ? 12 + symbolSize + 6 + Math.ceil(label.implicitWidth) + 12 : size
    height: size

    Loader {
        anchors.fill: parent
        sourceComponent: button.prominent ? accent : glass
    }
    Component {
        id: accent
        AccentSurface { radius: height / 2 }
    }
    Component {
        id: glass
        GlassSurface { radius: height / 2 }
    }
    Symbol {
        x: button.text ? 12 : (parent.width - width) / 2
        anchors.verticalCenter: parent.verticalCenter
        name: button.symbol
        size: button.symbolSize
        weight: button.symbolWeight
        color: button.ink
    }
    DemoText {
        id: label
        x: 12 + button.symbolSize + 6
        height: parent.height
        text: button.text
        font.pixelSize: 13
        font.weight: Font.Medium
        color: button.ink
    }
}
