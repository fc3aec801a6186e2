import QtQuick
import "../../view_kit/qml"

// The file command bar: from a request in plain words over one command to what came of it.
Item {
    id: files

    readonly property string stage: hud.files.content.stage
    readonly property Item shown: stage === "planning" ? planning
                                : stage === "preview" ? preview
                                : stage === "running" ? running
                                : stage === "result" ? result
                                : stage === "error" ? error : request
    // What can be read in it page by page, while there is something.
    readonly property Item readable: shown === preview || shown === result ? shown.item : null

    implicitHeight: shown.implicitHeight

    // What Return does where no button has the focus.
    function pressDefault() {
        if (shown.item && shown.item.defaultButton)
            shown.item.defaultButton.press()
    }
    // The way back to the request is taken in order to type.
    function typeOn(change) {
        change()
        hud.takeKeyboard()
    }
    function takeFocus() {
        if (stage === "input" && request.item)
            request.item.focusField()
        else
            forceActiveFocus()
    }

    // What had the focus is about to go. (A new field takes it by itself, one that has not quite gone does not.)
    onStageChanged: takeFocus()

    // A bar that is there already goes on for other files as a new one would begin.
    Connections {
        target: hud.files
        function onReplaced() { files.takeFocus() }
    }

    PhaseLoader {
        id: request
        width: parent.width
        shown: files.shown === request
        sourceComponent: RequestBody {}
    }
    PhaseLoader {
        id: planning
        width: parent.width
        shown: files.shown === planning
        sourceComponent: ProgressRow { text: "Generating a command" }
    }
    PhaseLoader {
        id: preview
        width: parent.width
        shown: files.shown === preview
        sourceComponent: PreviewBody {
            onEdited: files.typeOn(() => hud.files.edit())
            onConfirmed: hud.files.confirm()
        }
    }
    PhaseLoader {
        id: running
        width: parent.width
        shown: files.shown === running
        sourceComponent: ProgressRow { text: "Running…" }
    }
    PhaseLoader {
        id: result
        width: parent.width
        shown: files.shown === result
        sourceComponent: OutcomeBody {
            onRestarted: files.typeOn(() => hud.files.reset())
            onCopied: hud.copyFileOutput()
            onFinished: hud.dismiss()
        }
    }
    PhaseLoader {
        id: error
        width: parent.width
        shown: files.shown === error
        sourceComponent: PlanErrorBody { onRetried: files.typeOn(() => hud.files.edit()) }
    }
}
