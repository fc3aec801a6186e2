import QtQuick

// Light on the upper edge of a raised shape: one line that runs out into the corners.
Rectangle {
    id: light

    property real radius

    x: radius / 2
    width: parent.width - radius
    height: 1
    color: "transparent"
    visible: width > 0

    gradient: Gradient {
        orientation: Gradient.Horizontal
        GradientStop { position: 0; color: Qt.alpha(light.color, 0) }
        GradientStop { position: Math.min(0.5, light.radius / 2 / Math.max(1, light.width)); color: light.color }
        GradientStop { position: Math.max(0.5, 1 - light.radius / 2 / Math.max(1, light.width)); color: light.color }
        GradientStop { position: 1; color: Qt.alpha(light.color, 0) }
    }
}
