import QtQuick
import "../../view_kit/qml"

// The pill of the demo.
Item {
    implicitWidth: 14 + 17 + 8 + Math.ceil(label.implicitWidth) + 14
    implicitHeight: 38

    Symbol {
        x: 14
        anchors.verticalCenter: parent.verticalCenter
        name: "calendar.badge.plus"
        size: 17
        weight: "semibold"
        color: theme.colors.tints["indigo"]
    }
    DemoText {
        id: label
        x: 14 + 17 + 8
        height: 38
        text: "Create calendar event"
        font.weight: Font.Medium
    }
}
