import QtQuick

// A picture in motion of what Lumeno does: a window in which something gets selected, and the HUD that answers. It
// is 452 × 560 and shown larger or smaller as one picture; nothing in it can be used.
Item {
    id: stage

    property bool moves

    readonly property string scenario: demo.scenario
    readonly property string phase: demo.phase
    readonly property bool isFiles: scenario === "fileAction"
    // How much is selected: before, while and after it is done.
    readonly property int selectedCount: phase === "idle" ? 0 : phase === "selecting" ? demo.progress : 1000

    width: 452
    height: 560
    Accessible.ignored: true

    Image {
        anchors.fill: parent
        source: "image://scenery/sky-" + (theme.dark ? "dark" : "light")
        sourceSize: Qt.size(width, height)
        cache: false
    }
    Item {
        anchors.fill: parent
        opacity: demo.pausing ? 0 : 1

        Behavior on opacity {
            enabled: stage.moves
            NumberAnimation { duration: 250 }
        }

        DemoMailWindow {
            id: mail
            visible: !stage.isFiles
            x: 34
            y: stage.height - 38 - height
            text: stage.scenario === "calendar" ? demo.invitation : demo.message
            linesBefore: stage.scenario === "calendar" ? [0.46, 0.90, 0.82, 0.55] : [0.38, 0.88, 0.94, 0.61]
            linesAfter: stage.scenario === "calendar" ? [0.58, 0.82] : [0.92, 0.70]
            selectedWords: stage.selectedCount
        }
        DemoFilesWindow {
            visible: stage.isFiles
            x: 34
            y: 86
            selectedFiles: stage.selectedCount
            isConverted: stage.phase === "result"
        }
        DemoCard {
            id: card
            scenario: stage.scenario
            phase: stage.phase
            moves: stage.moves
            x: (stage.width - width) / 2
            y: stage.isFiles ? 218 : mail.y + mail.textTop - 12 - height
        }
    }
}
