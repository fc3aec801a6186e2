import QtQuick

// Glass that answers to the pointer.
Surface {
    property bool hovered
    property bool pressed

    fill: pressed ? theme.colors.glassPressed : hovered ? theme.colors.glassHover : theme.colors.glass
    innerEdge: hovered ? theme.colors.glassEdgeHover : theme.colors.glassEdge

    Behavior on fill {
        enabled: !theme.reduceMotion
        ColorAnimation { duration: 90 }
    }
    Behavior on innerEdge {
        enabled: !theme.reduceMotion
        ColorAnimation { duration: 90 }
    }
}
