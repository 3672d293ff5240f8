import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import Tomewise

// The desktop's store-review prompt: a small card that takes no focus, keeps
// clear of the field being typed in and goes away by itself.
Popup {
    id: card
    property AppDelegate appDelegate
    property int showMs: 10000

    objectName: "reviewCard"
    parent: Overlay.overlay
    modal: false
    focus: false
    closePolicy: Popup.NoAutoClose
    Material.elevation: 0
    padding: 14
    x: Theme.margin
    width: parent ? parent.width - 2 * Theme.margin : 300
    y: clearOfTyping()

    // At the bottom unless the field in focus is down there; then under the navigation bar.
    function clearOfTyping() {
        const window = ApplicationWindow.window
        const bottom = (parent ? parent.height : 0) - height - Theme.margin
        const typing = window ? window.activeFocusItem : null
        if (!typing || !parent || typing.cursorRectangle === undefined)
            return bottom
        const field = typing.mapToItem(parent, 0, 0, typing.width, typing.height)
        if (field.y + field.height <= bottom)
            return bottom
        const bar = window.header && window.header.visible ? window.header.height : 0
        return bar + Theme.margin
    }

    Connections {
        target: card.appDelegate ? card.appDelegate.platform : null
        function onStoreReviewRequested() { card.open() }
    }
    Timer {
        running: card.opened
        interval: card.showMs
        onTriggered: card.close()
    }
    RateShareTableViewController {
        id: rateShare
        appDelegate: card.appDelegate
    }

    background: Rectangle {
        radius: 12
        color: "white"
        border.width: 1
        border.color: Theme.muted
    }
    contentItem: RowLayout {
        spacing: 10
        Icon { name: "star_rate"; color: Theme.accent; size: 30 }
        ColumnLayout {
            spacing: 2
            Layout.fillWidth: true
            Label {
                text: "Enjoying Tomewise?"
                font.pixelSize: 16
                font.bold: true
                color: Theme.ink
            }
            Label {
                Layout.fillWidth: true
                text: "A review in the store helps other readers find it."
                font.pixelSize: 13
                color: Theme.muted
                wrapMode: Text.Wrap
            }
        }
        ColumnLayout {
            spacing: 0
            Button {
                objectName: "reviewRateButton"
                implicitHeight: 36
                topInset: 0
                bottomInset: 0
                font.capitalization: Font.MixedCase
                text: "Rate"
                flat: true
                focusPolicy: Qt.NoFocus
                font.bold: true
                onClicked: {
                    rateShare.viewDidLoad()
                    rateShare.didSelectRow(RateShareTableViewController.Rate)
                    card.close()
                }
            }
            Button {
                objectName: "reviewNotNowButton"
                implicitHeight: 36
                topInset: 0
                bottomInset: 0
                font.capitalization: Font.MixedCase
                text: "Not now"
                flat: true
                focusPolicy: Qt.NoFocus
                onClicked: card.close()
            }
        }
    }
}
