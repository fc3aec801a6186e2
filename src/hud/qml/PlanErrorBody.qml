import QtQuick
import "../../view_kit/qml"

// Why there is no command.
Item {
    id: error

    readonly property Item defaultButton: retry

    signal retried

    implicitHeight: message.implicitHeight + 14 + retry.height

    StatusRow {
        id: message
        width: parent.width
        symbol: "exclamationmark.triangle"
        symbolColor: theme.colors.caution
        color: theme.colors.label
        text: hud.files.content.error
    }
    GlassButton {
        id: retry
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        prominent: true
        text: "Try again"
        symbol: "arrow.clockwise"
        onActivated: error.retried()
    }
}
