import QtQuick

// The surface of a picker or a button of a window.
Surface {
    property bool hovered
    property bool pressed
    property bool outlined

    radius: 8
    fill: pressed ? theme.colors.glassPressed : theme.colors.control
    innerEdge: outlined ? theme.colors.accentLine : hovered ? theme.colors.controlEdgeHover : theme.colors.controlEdge
    innerEdgeWidth: outlined ? 2 : 1

    Behavior on fill {
        enabled: !theme.reduceMotion
        ColorAnimation { duration: 90 }
    }
}
