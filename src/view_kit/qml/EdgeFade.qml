import QtQuick

// What lets clipped text fade into the card.
Rectangle {
    id: fade

    property color from
    property color to

    width: parent.width
    height: Math.min(22, parent.height)

    gradient: Gradient {
        GradientStop { position: 0; color: fade.from }
        GradientStop { position: 1; color: fade.to }
    }
}
