import QtQuick
import "../../view_kit/qml"

// Rows that belong together, with a heading above and, where there is more to say, a caption below.
Column {
    id: group

    property string title
    property string caption
    default property alias rows: column.data

    Accessible.role: Accessible.Grouping
    Accessible.name: title

    Label {
        leftPadding: 2
        bottomPadding: 7
        height: Math.max(17, implicitHeight - 7) + 7
        text: group.title
        font.pixelSize: theme.metrics.subheadline
        font.weight: Font.DemiBold
    }
    Item {
        width: group.width
        height: column.height
        z: 1 // what a row shows beside itself covers the caption

        Surface {
            anchors.fill: parent
            margin: 1
            radius: 10
            fill: theme.colors.group
            outerEdge: theme.colors.groupEdge
        }
        Column {
            id: column
            width: parent.width
        }
    }
    Loader {
        active: group.caption
        visible: active
        width: group.width
        sourceComponent: Label {
            leftPadding: 2
            rightPadding: 2
            topPadding: 7
            text: group.caption
            font.pixelSize: theme.metrics.caption
            lineHeight: theme.metrics.captionLine
            lineHeightMode: Text.FixedHeight
            wrapMode: Text.Wrap
            color: theme.colors.windowSecondary
        }
    }
}
