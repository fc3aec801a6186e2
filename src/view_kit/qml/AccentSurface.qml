import QtQuick

// The surface of a prominent button.
Surface {
    property bool hovered
    property bool pressed

    margin: 4
    fill: pressed ? Qt.tint(theme.colors.accentFill, Qt.rgba(0, 0, 0, 0.16))
        : hovered ? Qt.tint(theme.colors.accentFill, Qt.rgba(1, 1, 1, 0.10)) : theme.colors.accentFill
    innerEdge: Qt.rgba(0, 0, 0, 0.12)
    topLight: Qt.rgba(1, 1, 1, 0.22)
    nearShadow: Qt.rgba(0, 0, 0, 0.16)

    Behavior on fill {
        enabled: !theme.reduceMotion
        ColorAnimation { duration: 90 }
    }
}
