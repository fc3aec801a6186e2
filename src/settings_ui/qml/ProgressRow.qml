import QtQuick
import "../../view_kit/qml"

// A row that says what is under way.
Item {
    id: row

    property string text

    width: parent ? parent.width : 0
    implicitHeight: Math.max(42, label.implicitHeight + 12)

    Accessible.role: Accessible.ProgressBar
    Accessible.name: text

    ProgressRing {
        x: 14
        anchors.verticalCenter: parent.verticalCenter
        color: theme.colors.windowSecondary
    }
    Label {
        id: label
        x: 40
        width: row.width - x - 14
        height: row.height
        text: row.text
        font.pixelSize: theme.metrics.subheadline
        color: theme.colors.windowSecondary
        Accessible.ignored: true
    }
}
