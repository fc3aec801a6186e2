import QtQuick
import "../../view_kit/qml"

// The placeholder until the first text arrives.
Item {
    id: skeleton

    property string title
    property real pulse: 0.9
    // A card that has gone keeps what it showed.
    readonly property bool seen: Window.visibility !== Window.Hidden

    implicitHeight: 3 + 3 * 11 + 2 * 10 + 3
    opacity: theme.reduceMotion ? 0.7 : pulse

    Accessible.role: Accessible.StaticText
    Accessible.name: "Generating " + title

    SequentialAnimation on pulse {
        running: skeleton.seen && !theme.reduceMotion
        loops: Animation.Infinite
        NumberAnimation { to: 0.45; duration: 900; easing.type: Easing.InOutQuad }
        NumberAnimation { to: 0.9; duration: 900; easing.type: Easing.InOutQuad }
    }

    Repeater {
        model: 3
        Rectangle {
            y: 3 + index * 21
            width: index < 2 ? skeleton.width : Math.min(180, skeleton.width)
            height: 11
            radius: 5.5
            color: Qt.alpha(theme.colors.secondary, 0.18)
        }
    }
}
