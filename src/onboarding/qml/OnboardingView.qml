import QtQuick
import "../../view_kit/qml"

// The whole window: header, progress, the scene beside the demo, and the way on.
Item {
    id: root

    // Given by the window.
    property QtObject onboarding
    property QtObject demo
    property QtObject host

    readonly property Colors colors: Colors {}

    readonly property real side: Math.max(40, (width - 1040) / 2)
    readonly property real columnWidth: Math.min(540, width - 2 * side)
    readonly property real stageRoom: width - 2 * side - 540 - 48
    readonly property real stageScale: Math.min(1, stageRoom / 452, scenes.height / 593)
    readonly property bool hasStage: stageScale > 0.4
    readonly property bool moves: host.live && !theme.reduceMotion

    focus: true

    Keys.onPressed: event => event.accepted = handleKey(event)

    function handleKey(event) {
        switch (event.key) {
        case Qt.Key_Return:
        case Qt.Key_Enter:
            // A key that is held down does not run through everything.
            if (!event.isAutoRepeat)
                onboarding.activatePrimary()
            return true
        case Qt.Key_PageUp:
        case Qt.Key_PageDown:
            sceneRepeater.itemAt(onboarding.scene).item.scrollBy(event.key === Qt.Key_PageUp ? -1 : 1)
            return true
        }
        return false
    }

    Rectangle {
        anchors.fill: parent
        color: colors.base
    }
    OnboardingBackground {
        anchors.fill: parent
        drifting: root.moves
    }
    // The window is moved by whatever is no control.
    MouseArea {
        anchors.fill: parent
        onPressed: host.beginMove()
        onPositionChanged: host.continueMove()
    }

    // Header.
    Symbol {
        id: icon
        x: root.side
        y: (56 - height) / 2
        name: "lumeno"
        size: 26
    }
    Label {
        x: icon.x + icon.width + 10
        height: 56
        text: "Lumeno"
        font.pixelSize: Math.round(theme.metrics.callout * 1.07)
        font.weight: Font.Bold
        font.letterSpacing: -0.15
    }
    ProgressDots {
        x: root.side
        y: 62
        count: onboarding.sceneCount
        current: onboarding.scene
    }

    // Each scene slides in from the side it lies on, and out to the other.
    Item {
        id: scenes
        x: root.side - 6
        y: 69
        width: root.columnWidth + 12
        height: root.height - y - 78

        Repeater {
            id: sceneRepeater
            model: ["Welcome", "Capabilities", "Permission", "Personalize", "Ready"]

            Loader {
                readonly property bool isCurrent: onboarding.scene === index

                width: scenes.width
                height: scenes.height
                x: 24 * Math.max(-1, Math.min(1, index - onboarding.scene))
                opacity: isCurrent ? 1 : 0
                visible: opacity > 0
                enabled: isCurrent
                active: isCurrent || opacity > 0
                source: modelData + "Scene.qml"

                Behavior on x {
                    enabled: root.moves
                    Spring { response: 0.45 }
                }
                Behavior on opacity {
                    enabled: root.moves
                    Spring { response: 0.45 }
                }
            }
        }
    }
    LiveDemoStage {
        visible: root.hasStage
        x: root.width - root.side - root.stageRoom + (root.stageRoom - width * scale) / 2
        y: scenes.y + (scenes.height - height * scale) / 2
        scale: root.stageScale
        transformOrigin: Item.TopLeft
        moves: root.moves
    }

    // Footer.
    Loader {
        active: onboarding.canGoBack
        x: root.side
        y: footerY
        sourceComponent: CapsuleButton {
            symbol: "chevron.left"
            text: "Back"
            onActivated: onboarding.move(-1)
        }
    }
    CapsuleButton {
        x: root.width - root.side - width
        y: footerY
        prominent: true
        symbol: onboarding.primarySymbol
        symbolSize: 16
        symbolTrails: onboarding.primarySymbol === "arrow.right"
        text: onboarding.primaryLabel
        onActivated: onboarding.activatePrimary()
    }
    Loader {
        active: onboarding.canSetUpLater
        x: root.width - root.side + 8 - width
        y: (56 - height) / 2
        sourceComponent: PlainButton {
            text: "Set up later"
            onActivated: onboarding.setUpLater()
        }
    }
    readonly property real footerY: height - 4 - 37 - 19

    // What has the focus may be gone from the new scene.
    Connections {
        target: onboarding
        function onSceneChanged() {
            root.forceActiveFocus()
        }
    }
}
