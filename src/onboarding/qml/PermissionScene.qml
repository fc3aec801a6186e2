import QtQuick

SceneColumn {
    OnboardingEyebrow { text: "Permissions" }
    SceneHeading { text: "Permission-light,\nprivacy clear." }
    Space { size: 8 }
    Paragraph {
        width: parent.width
        text: "Accessibility powers the core HUD. Finder Automation and Calendar are optional prompts for file "
            + "actions and event creation."
    }
    Space { size: 18 }
    Column {
        width: parent.width
        spacing: 10

        OnboardingOptionRow {
            width: parent.width
            row: onboarding.permissions.accessibility
            prominent: true
            onActivated: onboarding.permissions.grantAccessibility()
        }
        Loader {
            active: onboarding.permissions.finder.present
            visible: active
            width: parent.width
            sourceComponent: OnboardingOptionRow {
                row: onboarding.permissions.finder
                onActivated: onboarding.permissions.primeFinder()
            }
        }
        Loader {
            active: onboarding.permissions.calendar.present
            visible: active
            width: parent.width
            sourceComponent: OnboardingOptionRow {
                row: onboarding.permissions.calendar
                onActivated: onboarding.permissions.useCalendar()
            }
        }
    }
    Space { size: 22 }
    OnboardingNote {
        symbol: "doc.on.clipboard"
        text: "Clipboard capture is used only when you press the summon hotkey in apps that hide selection "
            + "details. The pasteboard is restored immediately."
    }
}
