import QtQuick

// Cards in two columns, those of one row equally high.
Item {
    id: grid

    readonly property int gap: 12
    readonly property real cardWidth: (width - gap) / 2
    readonly property var shown: Array.from(children).filter(card => card.visible)

    implicitHeight: heights.reduce((sum, height) => sum + height, 0) + Math.max(0, heights.length - 1) * gap

    readonly property var heights: {
        const result = []
        for (let i = 0; i < shown.length; i += 2)
            result.push(Math.max(shown[i].implicitHeight, i + 1 < shown.length ? shown[i + 1].implicitHeight : 0))
        return result
    }

    onShownChanged: place()
    onHeightsChanged: place()
    onCardWidthChanged: place()

    function place() {
        let top = 0
        for (let i = 0; i < shown.length; ++i) {
            const row = Math.floor(i / 2)
            shown[i].x = i % 2 * (cardWidth + gap)
            shown[i].y = top
            shown[i].width = cardWidth
            shown[i].height = heights[row]
            if (i % 2 === 1)
                top += heights[row] + gap
        }
    }
}
