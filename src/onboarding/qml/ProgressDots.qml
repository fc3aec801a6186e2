import QtQuick

// One dot for each scene, that of the current one stretched.
Row {
    id: dots

    property int count
    property int current

    spacing: 7
    Accessible.ignored: true

    Repeater {
        model: dots.count

        Rectangle {
            readonly property bool isCurrent: index === dots.current

            width: isCurrent ? 22 : 7
            height: 7
            radius: 3.5
            color: isCurrent ? colors.highlight : Qt.alpha(theme.colors.label, 0.18)

            Behavior on width {
                enabled: !theme.reduceMotion
                // A spring of response 0.4 and damping 0.8, drawn as one curve.
                NumberAnimation {
                    duration: 460
                    easing.type: Easing.BezierSpline
                    easing.bezierCurve: [0.27, 0.27, 0.12, 1.18, 1, 1]
                }
            }
            Behavior on color {
                enabled: !theme.reduceMotion
                ColorAnimation { duration: 200 }
            }
        }
    }
}
