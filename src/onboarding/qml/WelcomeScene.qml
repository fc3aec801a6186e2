import QtQuick

SceneColumn {
    SceneHeading {
        size: theme.metrics.headingLarge
        line: theme.metrics.headingLargeLine
        text: "Select text.\nAct instantly."
    }
    Space { size: 14 }
    Paragraph {
        width: Math.min(480, parent.width)
        size: theme.metrics.lead
        line: theme.metrics.leadLine
        text: "A floating panel appears right above your selection, with AI actions ranked for that exact moment. "
            + "No manual copy-paste. No app switching."
    }
    Space { size: 22 }
    OnboardingNote {
        symbol: "lock.shield"
        text: "Everything runs on this Mac by default."
    }
}
