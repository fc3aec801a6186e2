import QtQuick
import "../../view_kit/qml"

// A row of a group: a label at the left, controls at the right, a line above it unless it is the first.
Item {
    id: row

    property string text
    property bool dimmed
    property bool separated: y > 0
    property real inset: 0 // what stands before the label
    property bool spoken: true // no control of the row has the label's name
    default property alias controls: trailing.data

    width: parent ? parent.width : 0
    implicitHeight: Math.max(42, Math.max(label.implicitHeight, trailing.height) + 12)

    Hairline {
        visible: row.separated
        x: 14 + row.inset
        width: row.width - x
    }
    Label {
        id: label
        x: 14 + row.inset
        width: trailing.x - 12 - x
        height: row.height
        text: row.text
        wrapMode: Text.Wrap
        opacity: row.dimmed ? 0.45 : 1
        Accessible.ignored: !row.spoken
    }
    Row {
        id: trailing
        anchors.right: parent.right
        anchors.rightMargin: 14
        anchors.verticalCenter: parent.verticalCenter
        spacing: 12
    }
}
