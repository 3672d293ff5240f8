import QtQuick
import QtQuick.Controls

// A ring around the control the keyboard has reached (Tab, Shift+Tab), so the
// user sees where typing and Space go; a click or a tap shows none.
Rectangle {
    property Item target: null
    readonly property bool shown: !!target && target.visualFocus === true

    objectName: "focusRing"
    parent: shown ? target : null
    visible: shown
    anchors.fill: parent
    anchors.margins: -3
    z: 1000
    radius: 6
    color: "transparent"
    border.width: 2
    border.color: Theme.focusRing
}
