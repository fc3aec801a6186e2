import QtQuick
import Lumeno.ViewKit

// What stands before an option: a dot, a symbol, or nothing.
Item {
    id: mark

    property var option
    property color color

    readonly property bool isDot: option.dot !== undefined

    implicitWidth: isDot ? 14 : option.symbol ? 16 : 0
    implicitHeight: 16
    visible: implicitWidth > 0

    Loader {
        anchors.centerIn: parent
        active: mark.isDot
        sourceComponent: AccentDot {
            width: 14
            height: 14
            color: mark.option.dot
        }
    }
    Symbol {
        anchors.centerIn: parent
        visible: !mark.isDot
        name: mark.option.symbol || ""
        size: 16
        color: mark.color
    }
}
