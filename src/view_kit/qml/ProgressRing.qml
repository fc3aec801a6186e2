import QtQuick

// Something is at work.
Symbol {
    id: ring

    // Nobody looks at a window that has gone: it costs nothing then.
    readonly property bool seen: Window.visibility !== Window.Hidden && Window.visibility !== Window.Minimized

    name: theme.reduceMotion ? "progress.ring.still" : "progress.ring"
    size: 16
    color: theme.colors.secondary

    RotationAnimation on rotation {
        running: ring.seen && !theme.reduceMotion
        from: 0
        to: 360
        duration: 900
        loops: Animation.Infinite
    }
}
