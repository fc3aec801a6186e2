import QtQuick
import "../../view_kit/qml"

// The HUD of the demo: nothing, the pill, or a card with the body of the phase.
Item {
    id: card

    property string scenario
    property string phase
    property bool moves

    readonly property string body: {
        switch (scenario + "/" + phase) {
        case "textReply/suggesting": return "chips"
        case "textReply/streaming":
        case "textReply/result": return "text"
        case "fileAction/typing": return "request"
        case "fileAction/planning":
        case "fileAction/running": return "progress"
        case "fileAction/preview": return "preview"
        case "fileAction/result": return "outcome"
        case "calendar/suggesting": return "pill"
        case "calendar/result": return "event"
        }
        return ""
    }
    readonly property bool isPill: body === "pill"
    readonly property var bodies: ({
        chips: chips, text: text, request: request, progress: progress, preview: preview, outcome: outcome,
        event: event, pill: pill
    })

    width: isPill ? content.implicitWidth : 360
    height: body === "" ? 0 : isPill ? 38 : 18 + 26 + 12 + content.implicitHeight + 18
    visible: body !== ""
    opacity: visible ? 1 : 0
    Accessible.ignored: true

    Behavior on opacity {
        enabled: card.moves
        Spring { response: 0.22 }
    }

    Surface {
        anchors.fill: parent
        radius: card.isPill ? 19 : 24
        margin: 10
        fill: theme.colors.cardFade
        innerEdge: theme.colors.cardRim
        topLight: theme.colors.cardRimTop
        outerEdge: theme.colors.cardEdge
        nearShadow: theme.colors.shadowNear
        farShadow: theme.colors.shadowFar
    }
    DemoHeader {
        visible: !card.isPill
        x: 18
        y: 18
        width: parent.width - 36
        symbol: card.scenario === "fileAction" ? "folder.fill.badge.gearshape"
            : card.scenario === "calendar" ? "calendar.badge.plus"
            : card.phase === "result" ? "wand.and.stars" : "sparkles"
        title: card.scenario === "fileAction" ? "3 items" : card.scenario === "calendar" ? "New event"
            : card.phase === "suggesting" ? "Mail" : "Make professional"
    }
    Loader {
        id: content
        x: card.isPill ? 0 : 18
        y: card.isPill ? 0 : 18 + 26 + 12
        width: card.isPill ? implicitWidth : card.width - 36
        sourceComponent: card.body ? card.bodies[card.body] : null
    }

    Component {
        id: chips
        DemoChips { isFirstLit: demo.progress > 0 }
    }
    Component {
        id: text
        DemoAnswer {
            isFinished: card.phase === "result"
            text: isFinished ? demo.answer : demo.answer.slice(0, demo.progress)
        }
    }
    Component {
        id: request
        DemoRequest { text: demo.request.slice(0, demo.progress) }
    }
    Component {
        id: progress
        DemoProgress {
            text: card.phase === "planning" ? "Generating a command" : "Running…"
            turns: card.moves
        }
    }
    Component {
        id: preview
        DemoCommand {
            text: "sips -s format png *.HEIC --out ./png/"
            isDone: false
        }
    }
    Component {
        id: outcome
        DemoCommand {
            text: "Converted 3 images to PNG"
            isDone: true
        }
    }
    Component {
        id: event
        DemoEvent {}
    }
    Component {
        id: pill
        DemoPill {}
    }
}
