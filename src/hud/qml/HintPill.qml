import QtQuick
import "../../view_kit/qml"

// The collapsed form: the best action and how many more there are.
Item {
    id: pill

    property string symbol
    property string title
    property color tint
    property int count
    property real maximumWidth: 360

    signal expanded

    readonly property real badgeSpace: badge.visible ? 8 + badge.width : 0

    implicitWidth: 14 + icon.width + 8 + label.width + badgeSpace + 14
    implicitHeight: 9 + Math.max(theme.metrics.textLine, icon.height) + 9

    Accessible.role: Accessible.Button
    Accessible.name: count + " actions available"
    Accessible.description: "Activate to show suggestions"
    Accessible.onPressAction: expanded()

    Symbol {
        id: icon
        x: 14
        anchors.verticalCenter: parent.verticalCenter
        name: pill.symbol
        size: 17
        weight: "semibold"
        color: pill.tint
    }
    Label {
        id: label
        x: 14 + icon.width + 8
        width: Math.min(Math.ceil(implicitWidth), pill.maximumWidth - x - pill.badgeSpace - 14)
        height: parent.height
        text: pill.title
        font.weight: Font.Medium
        elide: Text.ElideRight
        maximumLineCount: 1
        Accessible.ignored: true
    }
    Surface {
        id: badge
        visible: pill.count >= 2
        anchors.left: label.right
        anchors.leftMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        width: Math.ceil(number.implicitWidth) + 10
        height: theme.metrics.caption2Line + 4
        radius: 6
        fill: theme.colors.quaternary

        Label {
            id: number
            anchors.centerIn: parent
            text: "+" + (pill.count - 1)
            font.pixelSize: theme.metrics.caption2
            font.weight: Font.Bold
            color: theme.colors.secondary
            Accessible.ignored: true
        }
    }
    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        // A pill that has appeared under a resting pointer has not been pointed at.
        onEntered: expandIfMoved()
        onPositionChanged: expandIfMoved()
        onClicked: pill.expanded()

        function expandIfMoved() {
            if (hudWindow.pointerHasMoved())
                pill.expanded()
        }
    }
}
