import QtQuick
import "../../view_kit/qml"

// A symbol on a tile of its own colour.
Surface {
    property string icon
    property color tint
    property int size: 36

    width: size
    height: size
    radius: size * 0.28
    fill: Qt.alpha(tint, 0.14)

    Symbol {
        anchors.centerIn: parent
        name: parent.icon
        size: parent.size < 36 ? 18 : 20
        weight: "semibold"
        color: parent.tint
    }
}
