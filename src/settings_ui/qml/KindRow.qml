import QtQuick
import "../../view_kit/qml"

// The switch of one kind of action, with the kind's symbol on a tile in its tint.
SwitchRow {
    id: row

    property var kind

    readonly property color tint: theme.colors.tints[kind.tint]

    text: kind.title
    inset: 38
    implicitHeight: Math.max(40, theme.metrics.statusLine + 12)
    checked: !settings.disabledActionKinds.includes(kind.kind)
    onToggled: on => settings.setActionKind(kind.kind, on)

    Surface {
        parent: row
        x: 14
        y: (row.height - height) / 2
        width: 26
        height: 26
        radius: 7.28
        fill: Qt.alpha(row.tint, 0.14)

        Symbol {
            anchors.centerIn: parent
            name: row.kind.symbol
            size: 16
            weight: "semibold"
            color: row.tint
        }
    }
}
