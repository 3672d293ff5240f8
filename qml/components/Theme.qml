pragma Singleton
import QtQuick

// Colours and sizes shared by every page.
QtObject {
    readonly property color primary: "#3b2f2a"
    readonly property color accent: "#b3261e"
    readonly property color paper: "#faf7f2"
    readonly property color ink: "#1c1b1f"
    // At least 4.5:1 on paper, white and the row background: placeholders, hints, other months' days.
    readonly property color muted: "#6b6560"
    // Text actions on the primary colour (the notice's Undo).
    readonly property color onPrimaryAccent: "#ffb4a9"
    // The keyboard focus ring and the off switch's track: at least 3:1 on paper.
    readonly property color focusRing: "#1565c0"
    readonly property color control: "#79716b"
    // The list row frame: hue 0.5, saturation 0.06, brightness 0.96.
    readonly property color rowBackground: Qt.hsva(0.5, 0.06, 0.96, 1.0)
    readonly property int rowRadius: 10
    readonly property int rowBorder: 2
    readonly property int margin: 16
    // The smallest thing a finger can hit reliably.
    readonly property int touchTarget: 48
    // Forms and lists stop growing here in a wide window, for lines that stay readable.
    readonly property int readableWidth: 640
}
