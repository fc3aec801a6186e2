import QtQuick

// Cards in two columns, those of one row equally high; below one another where two are not wide enough.
Item {
    id: grid

    readonly property int gap: 12
    readonly property var shown: Array.from(children).filter(card => card.visible)
    readonly property real halfWidth: (width - gap) / 2
    readonly property int columns: shown.every(card => card.implicitWidth <= halfWidth) ? 2 : 1
    readonly property real cardWidth: columns === 2 ? halfWidth : width

    implicitHeight: heights.reduce((sum, height) => sum + height, 0) + Math.max(0, heights.length - 1) * gap

    readonly property var heights: {
        const result = []
        for (let i = 0; i < shown.length; i += columns)
            result.push(Math.max(...shown.slice(i, i + columns).map(card => card.implicitHeight)))
        return result
    }

    onShownChanged: placeAcross()
    onCardWidthChanged: placeAcross()
    onHeightsChanged: placeDown()

    // First this: how high a card wants to be depends on how wide it is.
    function placeAcross() {
        shown.forEach((card, i) => {
            card.x = i % columns * (cardWidth + gap)
            card.width = cardWidth
        })
    }
    function placeDown() {
        let top = 0
        for (let row = 0; row < heights.length; ++row) {
            for (const card of shown.slice(row * columns, (row + 1) * columns)) {
                card.y = top
                card.height = heights[row]
            }
            top += heights[row] + gap
        }
    }
}
