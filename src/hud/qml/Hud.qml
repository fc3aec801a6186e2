import QtQuick
import "../../view_kit/qml"

// The whole window: the card with its margin, which holds the shadow. Its implicit size is what the window is to be
// given; the card fills what the window is.
Item {
    id: root

    readonly property int margin: 10
    readonly property int cardWidth: 360
    readonly property string phase: hud.content.phase
    readonly property bool collapsed: hud.content.collapsed
    readonly property real cardRadius: Math.min(collapsed ? 22 : 24, card.height / 2)
    readonly property Item readable: collapsed || !expanded.item ? null : expanded.item.readable
    readonly property Item fileBody: collapsed || !expanded.item ? null : expanded.item.fileBody

    implicitWidth: 2 * margin + (collapsed ? pill.implicitWidth : cardWidth)
    implicitHeight: 2 * margin + (collapsed ? pill.implicitHeight : expanded.implicitHeight)
    focus: hud.content.keyboardMode

    Accessible.role: Accessible.Dialog
    Accessible.name: "Lumeno"

    // A file command bar has the keyboard whenever the user has pressed into it.
    Keys.enabled: hud.content.keyboardMode || phase === "files"
    Keys.onPressed: event => event.accepted = handleKey(event)
    Keys.onReleased: event => {
        if (isReturn(event))
            hud.noteReturn()
    }

    function isReturn(event) {
        return event.key === Qt.Key_Return || event.key === Qt.Key_Enter
    }
    function handleKey(event) {
        if (event.key === Qt.Key_Escape) {
            hud.dismiss()
            return true
        }
        return readable && handleReadingKey(event)
            || (phase === "files" ? handleFileKey(event) : handleChipKey(event))
    }
    function handleChipKey(event) {
        switch (event.key) {
        case Qt.Key_Up:
        case Qt.Key_Down:
            forceActiveFocus()
            hud.moveSelection(event.key === Qt.Key_Up ? -1 : 1)
            return true
        case Qt.Key_Return:
        case Qt.Key_Enter:
            // A Return still held down has done its work in the phase before.
            if (!event.isAutoRepeat)
                activate()
            return true
        }
        return phase === "suggestions" && /^[1-9]$/.test(event.text)
            && hud.runChipNumber(Number(event.text))
    }
    // Where something is about to be written, Return on Back means Back.
    function activate() {
        const focused = Window.activeFocusItem
        if (phase === "calendarConfirm" && focused && focused.press)
            focused.press()
        else
            hud.activate()
    }
    // Return presses what has the focus, or else, where the bar was called by a key, what is meant to come next.
    function handleFileKey(event) {
        if (!isReturn(event))
            return false
        if (hud.isReturnMeant(event.isAutoRepeat)) {
            const focused = Window.activeFocusItem
            if (focused && focused.press)
                focused.press()
            else if (hud.content.summoned && fileBody)
                fileBody.pressDefault()
        }
        return true
    }
    // A long text can be read, and a selected part of it copied, without the pointer.
    function handleReadingKey(event) {
        if (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown)
            readable.scrollBy(event.key === Qt.Key_PageUp ? -1 : 1)
        else if (event.matches(StandardKey.Copy) && readable.hasSelection)
            readable.copySelection()
        else
            return false
        return true
    }

    // The view that had the focus is about to go. (A chip that is highlighted takes it by itself, and so does what is
    // in a file command bar.)
    onPhaseChanged: {
        if (phase === "files" && fileBody)
            fileBody.takeFocus()
        else if (phase !== "files" && (phase !== "suggestions" || hud.content.selectedChip < 0))
            forceActiveFocus()
    }

    Connections {
        target: hud
        function onAppearing() {
            root.forceActiveFocus()
            appear.stop()
            const still = theme.reduceMotion || theme.opaque
            card.opacity = still ? 1 : 0
            card.scale = still ? 1 : 0.94
            if (!still)
                appear.start()
        }
    }
    // A bar that was shown before has not been made anew.
    Connections {
        target: hud
        function onAppeared() {
            if (root.fileBody)
                root.fileBody.takeFocus()
        }
    }
    ParallelAnimation {
        id: appear
        Spring { target: card; property: "opacity"; to: 1; response: 0.22 }
        Spring { target: card; property: "scale"; to: 1; response: 0.22 }
    }

    Card {
        id: card
        anchors.fill: parent
        anchors.margins: root.margin
        transformOrigin: Item.Top
        radius: root.cardRadius

        PhaseLoader {
            id: pill
            shown: root.collapsed
            anchors.centerIn: parent
            sourceComponent: HintPill {
                symbol: hud.content.pillSymbol
                title: hud.content.pillTitle
                tint: hud.content.pillCount > 0 ? theme.colors.tints[hud.content.pillTint] : theme.colors.secondary
                count: hud.content.pillCount
                maximumWidth: root.cardWidth
                onExpanded: hud.expandHint()
            }
        }
        PhaseLoader {
            id: expanded
            shown: !root.collapsed
            anchors.horizontalCenter: parent.horizontalCenter
            width: root.cardWidth
            sourceComponent: CardContent {}
        }
    }
}
