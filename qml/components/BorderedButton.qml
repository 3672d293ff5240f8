import QtQuick
import QtQuick.Controls

// A screen's action button: thin black border, grey title when disabled (still
// readable), a finger high.
Button {
    id: button
    flat: true
    implicitHeight: Theme.touchTarget
    contentItem: Label {
        text: button.text
        font.pixelSize: 16
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        color: button.enabled ? Theme.primary : Theme.muted
    }
    background: Rectangle {
        radius: 6
        border.width: 1
        border.color: "black"
        color: button.down ? Qt.darker(Theme.rowBackground, 1.08) : "white"
    }
}
