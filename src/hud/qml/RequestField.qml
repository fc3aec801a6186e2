import QtQuick
import "../../view_kit/qml"
import Lumeno.Hud

// A field of several lines for the request. As in every text of ours the selecting is done here: the text itself would
// also offer each selection to other applications as the one the user made last, and take what they offer.
Item {
    id: field

    property alias placeholder: placeholderText.text

    readonly property int maximumLines: 6
    readonly property int lineHeight: theme.metrics.statusLine

    signal submitted

    readonly property real textHeight: Math.max(edit.contentHeight, lineHeight)

    implicitHeight: 8 + Math.min(textHeight, maximumLines * lineHeight) + 8

    function focusText() {
        edit.forceActiveFocus()
        edit.cursorPosition = edit.length
    }
    // Can be undone, as can all that is typed.
    function replaceText(text) {
        Qt.inputMethod.reset()
        edit.remove(0, edit.length)
        edit.insert(0, text)
        edit.cursorPosition = edit.length
    }
    function submit() {
        Qt.inputMethod.commit()
        submitted()
    }

    TextKeys { id: keys }

    Surface {
        anchors.fill: parent
        radius: 12
        fill: theme.colors.field
        innerEdge: edit.activeFocus ? theme.colors.accentLine : theme.colors.fieldEdge
        innerEdgeWidth: edit.activeFocus ? 2 : 1
    }
    Flickable {
        id: flick
        anchors.fill: parent
        anchors.topMargin: scrolls ? 8 : 0
        anchors.bottomMargin: scrolls ? 8 : 0
        contentHeight: edit.height
        boundsBehavior: Flickable.StopAtBounds
        interactive: scrolls
        clip: true

        readonly property bool scrolls: field.textHeight > field.maximumLines * field.lineHeight

        TextEdit {
            id: edit
            width: flick.width
            // All of the field is there to be pressed.
            height: field.textHeight + topPadding + bottomPadding
            topPadding: flick.scrolls ? 0 : 8
            bottomPadding: topPadding
            leftPadding: 12
            rightPadding: 12
            activeFocusOnTab: true
            activeFocusOnPress: false
            selectByMouse: false
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            font.family: theme.metrics.family
            font.pixelSize: theme.metrics.callout
            color: theme.colors.label
            selectionColor: theme.colors.textSelection
            selectedTextColor: theme.colors.label

            Accessible.name: "Request"
            Accessible.description: field.placeholder
            Accessible.multiLine: true

            readonly property int lineHeight: field.lineHeight
            property bool isFilled: false
            onLineHeightChanged: theme.applyLineHeight(textDocument, lineHeight)
            onTextChanged: {
                theme.applyLineHeight(textDocument, lineHeight)
                if (isFilled)
                    hud.files.request = text
            }
            Component.onCompleted: {
                text = hud.files.request
                theme.applyLineHeight(textDocument, lineHeight)
                cursorPosition = length
                isFilled = true
            }
            onCursorRectangleChanged: {
                const top = cursorRectangle.y - topPadding
                const bottom = cursorRectangle.y + cursorRectangle.height + bottomPadding
                if (top < flick.contentY)
                    flick.contentY = Math.max(0, top)
                else if (bottom > flick.contentY + flick.height)
                    flick.contentY = bottom - flick.height
            }

            Connections {
                target: hud.files
                // Only what has been changed elsewhere.
                function onRequestChanged() {
                    if (edit.text === hud.files.request)
                        return
                    edit.text = hud.files.request
                    edit.cursorPosition = edit.length
                }
                // What was typed for other files is not to come back.
                function onReplaced() { keys.forgetChanges(edit.textDocument) }
            }

            Keys.onPressed: event => event.accepted = handleKey(event)

            function handleKey(event) {
                switch (event.key) {
                case Qt.Key_Return:
                case Qt.Key_Enter:
                    if (event.modifiers & Qt.ShiftModifier) {
                        remove(selectionStart, selectionEnd)
                        insert(cursorPosition, "\n")
                    } else {
                        hud.noteReturn()
                        if (!event.isAutoRepeat)
                            field.submit()
                    }
                    return true
                case Qt.Key_Tab:
                case Qt.Key_Backtab: {
                    const isForward = event.key === Qt.Key_Tab
                    nextItemInFocusChain(isForward).forceActiveFocus(isForward ? Qt.TabFocusReason : Qt.BacktabFocusReason)
                    return true
                }
                }
                if (event.matches(StandardKey.SelectAll)) {
                    select(0, length)
                    return true
                }
                const target = keys.selectionTarget(textDocument, cursorPosition, event.key, event.modifiers)
                if (target >= 0) {
                    moveCursorSelection(target)
                    return true
                }
                // It would paste what another application has selected.
                return event.key === Qt.Key_Insert && (event.modifiers & Qt.ControlModifier)
                    && (event.modifiers & Qt.ShiftModifier)
            }

            cursorDelegate: Rectangle {
                id: caret
                readonly property real pixelRatio: Screen.devicePixelRatio
                property bool lit: true

                width: Math.round(1.5 * pixelRatio) / pixelRatio
                visible: edit.activeFocus && lit
                color: theme.colors.accentLine

                Timer {
                    interval: 530
                    repeat: true
                    running: edit.activeFocus && !theme.reduceMotion
                    onRunningChanged: caret.lit = true
                    onTriggered: caret.lit = !caret.lit
                }
                Connections {
                    target: edit
                    function onCursorPositionChanged() { caret.lit = true }
                }
            }

            MouseArea {
                anchors.fill: parent
                cursorShape: Qt.IBeamCursor
                preventStealing: true
                // The middle one would paste what another application has selected.
                acceptedButtons: Qt.LeftButton | Qt.MiddleButton | Qt.RightButton

                property int unit: TextEdit.SelectCharacters

                onPressed: mouse => {
                    hud.takeKeyboard()
                    edit.forceActiveFocus()
                    if (mouse.button !== Qt.LeftButton)
                        return
                    Qt.inputMethod.commit()
                    unit = TextEdit.SelectCharacters
                    const place = edit.positionAt(mouse.x, mouse.y)
                    if (mouse.modifiers & Qt.ShiftModifier)
                        edit.moveCursorSelection(place)
                    else
                        edit.cursorPosition = place
                }
                onDoubleClicked: mouse => {
                    if (mouse.button !== Qt.LeftButton)
                        return
                    unit = TextEdit.SelectWords
                    edit.selectWord()
                }
                onPositionChanged: mouse => {
                    if (mouse.buttons & Qt.LeftButton)
                        edit.moveCursorSelection(edit.positionAt(mouse.x, mouse.y), unit)
                }
            }
        }
        Label {
            id: placeholderText
            x: 12
            y: 8
            width: flick.width - 24
            height: field.lineHeight
            visible: !edit.text && !edit.preeditText
            color: theme.colors.tertiary
            elide: Text.ElideRight
            maximumLineCount: 1
            Accessible.ignored: true
        }
    }
}
