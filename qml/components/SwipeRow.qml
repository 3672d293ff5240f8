import QtQuick
import QtQuick.Controls

// A list row with one trailing "delete": revealed by a swipe of the finger, a
// drag of the mouse or a sideways touchpad scroll, and offered in a context
// menu on a right click or a long press.
SwipeDelegate {
    id: row
    // A click or tap on the row itself; with the swipe open it only closes it.
    signal tapped()
    signal deleteRequested()

    function requestDelete() {
        swipe.close()
        row.deleteRequested()
    }
    function showMenu(x, y) {
        menu.popup(row, x, y)
    }

    onClicked: swipe.position === 0 ? row.tapped() : swipe.close()
    onPressAndHold: showMenu(pressX, pressY)

    swipe.right: Rectangle {
        objectName: "deleteAction"
        width: 96
        height: row.height
        anchors.right: parent.right
        radius: Theme.rowRadius
        color: SwipeDelegate.pressed ? Qt.darker(Theme.accent, 1.15) : Theme.accent
        // The delegate keeps the press for itself; this is how its swipe items hear a click.
        SwipeDelegate.onClicked: row.requestDelete()
        Label {
            anchors.centerIn: parent
            text: "delete"
            color: "white"
            font.pixelSize: 16
            font.bold: true
        }
    }

    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.RightButton
        onClicked: mouse => row.showMenu(mouse.x, mouse.y)
        // A sideways two-finger scroll opens and closes the swipe; up and down still scroll the list.
        onWheel: wheel => {
            const dx = wheel.pixelDelta.x !== 0 ? wheel.pixelDelta.x : wheel.angleDelta.x / 8
            if (Math.abs(dx) <= Math.abs(wheel.pixelDelta.y !== 0 ? wheel.pixelDelta.y : wheel.angleDelta.y / 8)) {
                wheel.accepted = false
                return
            }
            if (dx < 0 && row.swipe.position === 0)
                row.swipe.open(SwipeDelegate.Right)
            else if (dx > 0 && row.swipe.position !== 0)
                row.swipe.close()
        }
    }

    Menu {
        id: menu
        objectName: "rowMenu"
        // Drawn flat: the style's shadow layer draws nothing without a GPU, and the menu no background.
        background: Rectangle {
            implicitWidth: 160
            radius: 4
            color: "white"
            border.width: 1
            border.color: Theme.control
        }
        MenuItem {
            objectName: "menuDelete"
            text: "delete"
            onTriggered: row.requestDelete()
        }
    }
}
