import QtQuick

// Plain text that can be selected with the pointer. The selecting is done here and not by the text itself, which would
// also offer every selection to other applications as the one the user made last.
TextEdit {
    id: edit

    // The moving end of a selection that is being made.
    signal revealed(real top, real bottom)

    readOnly: true
    selectByMouse: false
    activeFocusOnPress: false
    textFormat: TextEdit.PlainText
    wrapMode: TextEdit.Wrap
    font.family: theme.metrics.family
    font.pixelSize: theme.metrics.callout
    color: theme.colors.label
    selectionColor: theme.colors.textSelection
    selectedTextColor: theme.colors.label

    Accessible.name: text
    Accessible.readOnly: true
    Accessible.multiLine: true

    readonly property int lineHeight: theme.metrics.textLine
    onTextChanged: theme.applyLineHeight(textDocument, lineHeight)
    onLineHeightChanged: theme.applyLineHeight(textDocument, lineHeight)

    MouseArea {
        anchors.fill: parent
        cursorShape: Qt.IBeamCursor
        preventStealing: true

        property int unit: TextEdit.SelectCharacters

        onPressed: mouse => {
            unit = TextEdit.SelectCharacters
            edit.cursorPosition = edit.positionAt(mouse.x, mouse.y)
        }
        onDoubleClicked: {
            unit = TextEdit.SelectWords
            edit.selectWord()
        }
        onPositionChanged: mouse => {
            edit.moveCursorSelection(edit.positionAt(mouse.x, mouse.y), unit)
            edit.revealed(edit.cursorRectangle.y, edit.cursorRectangle.y + edit.cursorRectangle.height)
        }
    }
}
