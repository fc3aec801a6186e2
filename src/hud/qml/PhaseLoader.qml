import QtQuick
import "../../view_kit/qml"

// One of several views in one place: there while it is shown, and as long as it takes to fade away. Every showing
// makes a new view.
Loader {
    property bool shown
    // The whole change takes a spring of response 0.28; the contents change places in its last 60 %.
    readonly property int changeDuration: 296

    active: shown || opacity > 0
    visible: opacity > 0
    enabled: shown
    opacity: shown ? 1 : 0

    Behavior on opacity {
        enabled: hud.morphs && !theme.reduceMotion
        SequentialAnimation {
            PauseAnimation { duration: changeDuration * 0.4 }
            NumberAnimation { duration: changeDuration * 0.6 }
        }
    }
}
