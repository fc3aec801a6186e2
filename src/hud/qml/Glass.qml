import QtQuick

// A glass surface: fill and edge, changing with the pointer.
Rectangle {
    id: glass

    property bool hovered
    property bool pressed
    property color edgeColor: hovered ? theme.colors.glassEdgeHover : theme.colors.glassEdge

    color: pressed ? theme.colors.glassPressed : hovered ? theme.colors.glassHover : theme.colors.glass

    Behavior on color {
        enabled: !theme.reduceMotion
        ColorAnimation { duration: 90 }
    }

    // The edge lies over the fill, so that the fill shows through it.
    Rectangle {
        anchors.fill: parent
        radius: glass.radius
        color: "transparent"
        border.width: 1
        border.color: glass.edgeColor

        Behavior on border.color {
            enabled: !theme.reduceMotion
            ColorAnimation { duration: 90 }
        }
    }
}
