import QtQuick
import "../../view_kit/qml"

// A hint below the right end of a control.
Item {
    id: tooltip

    property string text

    width: Math.ceil(label.implicitWidth) + 18
    height: Math.ceil(label.implicitHeight) + 12

    Surface {
        anchors.fill: parent
        margin: 10
        radius: 7
        fill: theme.colors.tooltip
        farShadow: theme.colors.shadowFar
    }
    Label {
        id: label
        anchors.centerIn: parent
        text: tooltip.text
        font.pixelSize: theme.metrics.caption
        color: theme.colors.tooltipText
        Accessible.ignored: true
    }
}
