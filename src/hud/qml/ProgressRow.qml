import QtQuick
import "../../view_kit/qml"

// Something that takes its time.
Item {
    id: progress

    property alias text: label.text

    implicitHeight: 3 + theme.metrics.statusLine + 3

    ProgressRing {
        id: ring
        anchors.verticalCenter: parent.verticalCenter
    }
    Label {
        id: label
        x: ring.width + 10
        width: parent.width - x
        height: parent.height
        color: theme.colors.secondary
        elide: Text.ElideRight
        maximumLineCount: 1
    }
}
