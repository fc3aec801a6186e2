import QtQuick
import "../../view_kit/qml"

// A preference that is on or off.
Item {
    id: row

    property string text
    property bool checked

    signal toggled(bool on)

    implicitWidth: Math.ceil(label.implicitWidth) + 10 + toggle.width
    width: parent.width
    height: Math.max(22, label.implicitHeight)

    Label {
        id: label
        width: parent.width - toggle.width - 10
        height: parent.height
        text: row.text
        font.pixelSize: theme.metrics.subheadline
        elide: Text.ElideRight
        Accessible.ignored: true
    }
    Toggle {
        id: toggle
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        text: row.text
        checked: row.checked
        onToggled: on => row.toggled(on)
    }
}
