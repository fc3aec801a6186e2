import QtQuick

SceneColumn {
    OnboardingEyebrow {
        symbol: "sparkles"
        text: "All set"
    }
    SceneHeading { text: "Lumeno is ready." }
    Space { size: 14 }
    Paragraph {
        width: Math.min(480, parent.width)
        size: theme.metrics.lead
        line: theme.metrics.leadLine
        text: "Select text anywhere for ranked chips, or select files in Finder for reviewed command actions. "
            + "Results stream in without leaving the app you're in."
    }
    Space { size: 26 }
    Flow {
        width: parent.width
        spacing: 10

        CapsuleButton {
            symbol: "text.cursor"
            text: "Open TextEdit to try"
            onActivated: onboarding.openTextEdit()
        }
        CapsuleButton {
            symbol: "folder"
            text: "Open Finder"
            onActivated: onboarding.openFinder()
        }
    }
    Space { size: 20 }
    Column {
        width: parent.width
        spacing: 10

        OnboardingNote {
            symbol: "command"
            symbolSize: 16
            symbolColor: theme.colors.windowSecondary
            gap: 8
            text: onboarding.preferences.summonHotkey + " summons it anytime"
        }
        OnboardingNote {
            visible: text
            symbol: "exclamationmark.triangle"
            symbolSize: 16
            text: onboarding.launchNote
        }
        OnboardingNote {
            visible: text
            symbol: "gearshape"
            symbolSize: 16
            text: onboarding.trayNote
        }
    }
}
