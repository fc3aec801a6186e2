import QtQuick

// Something is at work.
Symbol {
    name: theme.reduceMotion ? "progress.ring.still" : "progress.ring"
    size: 16
    color: theme.colors.secondary

    RotationAnimation on rotation {
        running: !theme.reduceMotion
        from: 0
        to: 360
        duration: 900
        loops: Animation.Infinite
    }
}
