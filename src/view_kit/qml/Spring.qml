import QtQuick

// A spring of damping 1 drawn as one curve; `response` in seconds.
NumberAnimation {
    property real response: 0.28

    duration: 1060 * response
    easing.type: Easing.BezierSpline
    easing.bezierCurve: [0.21, 0.12, 0.19, 1, 1, 1]
}
