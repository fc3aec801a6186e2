import QtQuick
import "../../view_kit/qml"

// The inside of the expanded card: a header and, below it, what the phase shows.
Item {
    id: content

    readonly property int padding: 18
    readonly property Item body: hud.content.phase === "generating" ? generating
                               : hud.content.phase === "files" ? files
                               : hud.content.phase === "calendarConfirm" ? calendarConfirm
                               : hud.content.phase === "result" ? result
                               : hud.content.phase === "notice" ? notice : suggestions
    readonly property Item fileBody: body === files ? files.item : null
    // What can be read page by page, while there is something.
    readonly property Item readable: fileBody ? fileBody.readable : body === result ? result.item : null

    implicitHeight: padding + header.height + 12 + body.implicitHeight + padding

    // Before the header, so that the Tab key comes to the body's buttons first.
    Item {
        id: place
        x: content.padding
        y: content.padding + header.height + 12
        width: content.width - 2 * content.padding

        PhaseLoader {
            id: suggestions
            width: parent.width
            shown: content.body === suggestions
            sourceComponent: SuggestionsBody {
                chips: hud.chips
                numbered: hud.content.keyboardMode
                selected: hud.content.selectedChip
                onActivated: index => hud.runChip(index)
            }
        }
        PhaseLoader {
            id: generating
            width: parent.width
            shown: content.body === generating
            sourceComponent: GeneratingBody {
                title: hud.content.runningTitle
                partial: hud.partial
                onBack: hud.back()
            }
        }
        PhaseLoader {
            id: result
            width: parent.width
            shown: content.body === result
            sourceComponent: ResultBody {
                body: hud.content.resultBody
                usedAI: hud.content.usedAI
                allowReplace: hud.content.allowReplace
                onCopied: hud.copyResult()
                onReplaced: hud.replaceResult()
                onBack: hud.back()
            }
        }
        PhaseLoader {
            id: calendarConfirm
            width: parent.width
            shown: content.body === calendarConfirm
            sourceComponent: CalendarConfirmBody {
                onConfirmed: hud.confirmCalendar()
                onBack: hud.back()
            }
        }
        PhaseLoader {
            id: files
            width: parent.width
            shown: content.body === files
            sourceComponent: FileActionBody {}
        }
        PhaseLoader {
            id: notice
            width: parent.width
            shown: content.body === notice
            sourceComponent: StatusRow {
                symbol: "text.cursor"
                text: hud.content.notice
            }
        }
    }
    HeaderRow {
        id: header
        x: content.padding
        y: content.padding
        width: content.width - 2 * content.padding
        symbol: hud.content.headerSymbol
        symbolSize: hud.content.phase === "files" ? 16 : 15
        title: hud.content.headerTitle
        onDismissed: hud.dismiss()
    }
}
