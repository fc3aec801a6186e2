import QtQuick

// The surface of a prominent button.
Rectangle {
    id: surface

    property bool hovered
    property bool pressed

    color: theme.colors.accentFill

    Rectangle {
        anchors.fill: parent
        radius: surface.radius
        color: surface.pressed ? Qt.rgba(0, 0, 0, 0.16)
                               : surface.hovered ? Qt.rgba(1, 1, 1, 0.10) : Qt.rgba(1, 1, 1, 0)

        Behavior on color {
            enabled: !theme.reduceMotion
            ColorAnimation { duration: 90 }
        }
    }
    TopLight {
        radius: surface.radius
        color: Qt.rgba(1, 1, 1, 0.22)
    }
    Rectangle {
        anchors.fill: parent
        radius: surface.radius
        color: "transparent"
        border.width: 1
        border.color: Qt.rgba(0, 0, 0, 0.12)
    }
}
