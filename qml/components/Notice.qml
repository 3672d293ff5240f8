import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts

// The window's one short notice near the bottom ("Saved “Dune”", "Deleted
// “Dune”" with Undo). It takes no focus and blocks nothing around it, and it
// outlives the navigation that follows a save; a new notice replaces the one
// on screen. Pages raise it through ScreenPage.showNotice / offerUndo.
//
//   show(text)                                    shown for `duration` ms
//   show(text, actionText, handler[, owner])      shown for `actionDuration` ms;
//                                                 handler() runs once if tapped
//   dismiss(owner)                                hides it if `owner` raised it
Rectangle {
    id: notice
    property int duration: 2500
    property int actionDuration: 5000
    property string text
    property string actionText
    property var actionHandler: null
    // The page whose action this is; the action must not outlive that page.
    property var owner: null
    readonly property bool shown: state === "shown"

    function show(message, action, handler, by) {
        text = message
        actionText = action || ""
        actionHandler = handler || null
        owner = by || null
        timer.interval = actionText.length > 0 ? actionDuration : duration
        state = "shown"
        timer.restart()
    }
    function hide() {
        timer.stop()
        state = ""
        actionHandler = null
        owner = null
    }
    function dismiss(by) {
        if (owner !== null && owner === by)
            hide()
    }

    objectName: "notice"
    z: 100
    anchors.horizontalCenter: parent ? parent.horizontalCenter : undefined
    anchors.bottom: parent ? parent.bottom : undefined
    anchors.bottomMargin: 24
    width: Math.min(parent ? parent.width - 32 : 358, 480, row.implicitWidth + 32)
    height: Math.max(48, row.implicitHeight + 16)
    radius: 8
    color: "#323232"
    opacity: 0
    visible: shown || opacity > 0
    Accessible.role: Accessible.AlertMessage
    Accessible.name: text

    states: State {
        name: "shown"
        PropertyChanges { target: notice; opacity: 1 }
    }
    transitions: Transition {
        NumberAnimation { property: "opacity"; duration: 150 }
    }

    Timer {
        id: timer
        onTriggered: notice.hide()
    }

    RowLayout {
        id: row
        anchors.fill: parent
        anchors.leftMargin: 16
        anchors.rightMargin: notice.actionText.length > 0 ? 4 : 16
        spacing: 8
        Label {
            objectName: "noticeText"
            Layout.fillWidth: true
            text: notice.text
            color: "white"
            font.pixelSize: 15
            elide: Text.ElideMiddle
        }
        Button {
            objectName: "noticeAction"
            visible: notice.actionText.length > 0
            text: notice.actionText
            flat: true
            font.bold: true
            focusPolicy: Qt.NoFocus
            Layout.minimumHeight: 48
            Material.foreground: "#ffb4a9"
            onClicked: {
                const handler = notice.actionHandler
                notice.hide()
                if (handler)
                    handler()
            }
        }
    }
}
