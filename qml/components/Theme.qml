pragma Singleton
import QtQuick

// Colours and sizes shared by every page.
QtObject {
    readonly property color primary: "#3b2f2a"
    readonly property color accent: "#b3261e"
    readonly property color paper: "#faf7f2"
    readonly property color ink: "#1c1b1f"
    readonly property color muted: "#6b6560"
    // The list row frame: hue 0.5, saturation 0.06, brightness 0.96.
    readonly property color rowBackground: Qt.hsva(0.5, 0.06, 0.96, 1.0)
    readonly property int rowRadius: 10
    readonly property int rowBorder: 2
    readonly property int margin: 16
}
