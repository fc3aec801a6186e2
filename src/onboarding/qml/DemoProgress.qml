import QtQuick
import "../../view_kit/qml"

// A ring that turns, and what it is waiting for.
Item {
    id: progress

    property alias text: label.text
    property bool turns

    implicitHeight: 25

    Symbol {
        y: 4.5
        name: progress.turns ? "progress.ring" : "progress.ring.still"
        size: 16
        color: theme.colors.secondary

        RotationAnimation on rotation {
            running: progress.turns
            loops: Animation.Infinite
            from: 0
            to: 360
            duration: 900
        }
    }
    DemoText {
        id: label
        x: 26
        height: parent.height
        color: theme.colors.secondary
    }
}
