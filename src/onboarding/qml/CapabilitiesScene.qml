import QtQuick

SceneColumn {
    OnboardingEyebrow { text: "What it can do" }
    SceneHeading { text: "One HUD for text,\nfiles, and dates." }
    Space { size: 24 }
    Column {
        width: parent.width
        spacing: 18

        OnboardingFeature {
            icon: "selection.pin.in.out"
            tint: theme.colors.tints["indigo"]
            title: "Built-in and custom text actions"
            detail: "Select text to fix grammar, rewrite tone, summarize, explain code, define words, translate, "
                + "draft replies, or run your own prompts."
        }
        OnboardingFeature {
            icon: "cursorarrow.motionlines"
            tint: theme.colors.tints["teal"]
            title: "A calmer hover mode"
            detail: "A small hint pill appears by your selection — hover or click to expand the full HUD, so "
                + "there's zero visual noise until you want it."
        }
        OnboardingFeature {
            icon: "folder.fill.badge.gearshape"
            tint: theme.colors.tints["orange"]
            title: "Finder file actions"
            detail: "Select files in Finder, describe the job, then review the generated shell command before it "
                + "runs."
        }
        OnboardingFeature {
            icon: "calendar.badge.plus"
            tint: theme.colors.tints["pink"]
            title: "Smart quick actions"
            detail: "Links, emails, phone numbers, addresses, and dates become direct actions without waiting for "
                + "AI."
        }
    }
}
